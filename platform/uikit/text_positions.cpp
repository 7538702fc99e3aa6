#include "platform/uikit/text_positions.h"

#include <algorithm>

namespace platform {

bool TextPositionObject::isEqualTo(const NSObject& other) const noexcept
{
    const auto* const position = dynamic_cast<const TextPositionObject*>(&other);
    return position && position->offset == offset;
}

bool TextRangeObject::isEqualTo(const NSObject& other) const noexcept
{
    const auto* const range = dynamic_cast<const TextRangeObject*>(&other);
    return range && range->first == first && range->last == last;
}

id TextRangeObject::start() const
{
    return textPosition(first);
}

id TextRangeObject::end() const
{
    return textPosition(last);
}

namespace {

constexpr MethodDefinition rangeMethods[] {
    method<"end", &TextRangeObject::end>(),
    method<"isEmpty", &TextRangeObject::isEmpty>(),
    method<"start", &TextRangeObject::start>(),
};

} // namespace

const ClassDefinition TextPositionObject::definition { .name = "UITextPosition",
    .allocate = allocate<TextPositionObject> };
const ClassDefinition TextRangeObject::definition {
    .name = "UITextRange", .allocate = allocate<TextRangeObject>, .methods = rangeMethods
};

id textPosition(std::size_t offset)
{
    const auto position = make<TextPositionObject>();
    position->offset = offset;
    return position;
}

id textRange(std::size_t first, std::size_t last)
{
    const auto range = make<TextRangeObject>();
    range->first = std::min(first, last);
    range->last = std::max(first, last);
    return range;
}

} // namespace platform
