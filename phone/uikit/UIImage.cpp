#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// A picture, known by the size of its pixels.
class UIImage : public NSObject {
public:
    double scale = 1;
};

constexpr MethodDefinition methods[] {
    getter<"scale", &UIImage::scale>(),
};

} // namespace

extern const ClassDefinition UIImage_class { .name = "UIImage", .allocate = allocate<UIImage>, .methods = methods };

} // namespace phone
