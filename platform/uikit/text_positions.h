#pragma once

#include "platform/runtime/class_definition.h"

#include <optional>

namespace platform {

/// A place in a text, in bytes; whoever has the text says what it means.
class TextPositionObject final : public NSObject {
public:
    static const ClassDefinition definition;
    std::size_t offset = 0;

    bool isEqualTo(const NSObject& other) const noexcept override;
    std::size_t hashValue() const noexcept override { return offset; }
};

/// From one place to another, or one place.
class TextRangeObject final : public NSObject {
public:
    static const ClassDefinition definition;
    std::size_t first = 0;
    std::size_t last = 0;

    bool isEmpty() const noexcept { return first == last; }
    id start() const;
    id end() const;

    bool isEqualTo(const NSObject& other) const noexcept override;
    std::size_t hashValue() const noexcept override { return first; }
};

id textPosition(std::size_t offset);
/// In whichever order.
id textRange(std::size_t first, std::size_t last);

} // namespace platform
