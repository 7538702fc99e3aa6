#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// A picture, known by the size of its pixels.
class UIImage : public NSObject {
public:
    double scale = 1;
    id systemName; ///< nil for a picture that isn't one of the system's symbols
};

id systemImageNamed(const id& self, SEL, const id& name)
{
    id image = send<"new">(self);
    as<UIImage>(image)->systemName = name;
    return image;
}

constexpr MethodDefinition methods[] {
    getter<"_systemName", &UIImage::systemName>(),
    getter<"scale", &UIImage::scale>(),
    classMethod<"systemImageNamed:", &systemImageNamed>().since(13),
};

} // namespace

extern const ClassDefinition UIImage_class { .name = "UIImage", .allocate = allocate<UIImage>, .methods = methods };

} // namespace phone
