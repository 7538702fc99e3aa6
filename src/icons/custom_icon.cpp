#include "icons/custom_icon.h"

#include "icons/icon_drawing.h"
#include "platform/foundation/files.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <array>
#include <cstdio>

namespace appledger {

using namespace platform;

namespace detail {

std::string formatted(double number)
{
    std::array<char, 336> text {}; // the largest double has 309 digits before the point
    std::snprintf(text.data(), text.size(), "%f", number);
    return text.data();
}

std::string formatted(int number)
{
    return std::to_string(number);
}

} // namespace detail

id loadCustomIcon(std::string_view identifier, FileTest test)
{
    auto path = test == FileTest::Remembered ? ALCustomIconPathIfExists(identifier) : ALCustomIconFilePath(identifier);
    if (!path || (test == FileTest::EachTime && !fileExists(*path)))
        return nil;
    return askObject<"imageWithContentsOfFile:">(id(classNamed<"UIImage">()), string(*path));
}

std::optional<id> customIconElsewhere(
    std::string_view identifier, const std::string& key, const CGSize& size, double scale, FileTest test)
{
    return customIcon(
        identifier, key,
        [&](const id& image) -> std::optional<id> {
            if (!(size.width > 0 && size.height > 0))
                return std::nullopt;
            return drawMaskedIcon(image, size, scale, size.width * cornerFactorElsewhere);
        },
        test);
}

bool isLiveIcon(std::string_view identifier)
{
    return identifier == "com.apple.mobiletimer" || identifier == "com.apple.mobilecal";
}

} // namespace appledger
