#include "platform/uikit/device.h"

#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace platform {

namespace {

/// What has been copied last; it lives as long as the process.
class PasteboardObject : public NSObject {
public:
    NSInteger changeCount = 0;

    id text() const { return text_; }
    void setText(const id& text) { set(asString(text) ? text : nil, nil); }
    id strings() const { return text_ ? array(std::vector<id> { text_ }) : id(); }
    bool hasStrings() const { return static_cast<bool>(text_); }
    id image() const { return image_; }
    void setImage(const id& image) { set(nil, image); }
    bool hasImages() const { return static_cast<bool>(image_); }

private:
    void set(const id& text, const id& image)
    {
        text_ = text;
        image_ = image;
        ++changeCount;
    }

    id text_ {};
    id image_ {};
};

id generalPasteboard(const id& self, SEL)
{
    static NSObject* const general = send<"new">(self).leak();
    return general;
}

constexpr MethodDefinition methods[] {
    getter<"changeCount", &PasteboardObject::changeCount>(),
    classMethod<"generalPasteboard", &generalPasteboard>(),
    method<"hasImages", &PasteboardObject::hasImages>(),
    method<"hasStrings", &PasteboardObject::hasStrings>(),
    method<"image", &PasteboardObject::image>(),
    method<"setImage:", &PasteboardObject::setImage>(),
    method<"setString:", &PasteboardObject::setText>(),
    method<"string", &PasteboardObject::text>(),
    method<"strings", &PasteboardObject::strings>(),
};

} // namespace

const ClassDefinition UIPasteboard_class {
    .name = "UIPasteboard", .allocate = allocate<PasteboardObject>, .methods = methods
};

} // namespace platform
