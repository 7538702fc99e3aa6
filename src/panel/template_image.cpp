#include "panel/template_image.h"

#include "platform/runtime/message.h"

namespace appledger {

using namespace platform;

id templateImage(const id& image)
{
    constexpr NSInteger alwaysTemplate = 2;
    return ask<"imageWithRenderingMode:">(image, alwaysTemplate).value_or(image);
}

} // namespace appledger
