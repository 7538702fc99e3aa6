#include "core/bundle_identifier.h"
#include "icons/custom_icon.h"
#include "icons/home_icon_hooks.h"
#include "icons/icon_drawing.h"
#include "icons/icon_image_info.h"

namespace appledger {

using namespace platform;

namespace {

/// Drawn by `draw` (id(const id& image)); of that surface, at that width.
template <class Draw>
std::optional<id> customIconOf(const id& icon, std::string_view surface, const SBIconImageInfo& info, const Draw& draw)
{
    const auto identifier = applicationOfIcon(icon);
    if (!identifier || isLiveIcon(*identifier))
        return std::nullopt;
    return customIcon(*identifier, iconKey(*identifier, surface, info.size.width), draw);
}

std::optional<id> maskedIconOf(const id& icon, std::string_view surface, const SBIconImageInfo& info)
{
    return customIconOf(icon, surface, info,
        [&info](const id& image) { return drawMaskedIcon(image, info.size, info.scale, info.continuousCornerRadius); });
}

struct GenerateIconImage : Hook<GenerateIconImage, "SBLeafIcon", "generateIconImageWithInfo:", id(SBIconImageInfo)> {
    static id replacement(const id& self, SEL cmd, SBIconImageInfo info)
    {
        auto custom = maskedIconOf(self, "gen", info);
        return custom ? *custom : original(self, cmd, info);
    }
};

struct UnmaskedIconImage : Hook<UnmaskedIconImage, "SBLeafIcon", "unmaskedIconImageWithInfo:", id(SBIconImageInfo)> {
    static id replacement(const id& self, SEL cmd, SBIconImageInfo info)
    {
        auto custom = customIconOf(
            self, "unmask", info, [&info](const id& image) { return drawUnmaskedIcon(image, info.size, info.scale); });
        return custom ? *custom : original(self, cmd, info);
    }
};

struct IconImage : Hook<IconImage, "SBLeafIcon", "iconImageWithInfo:", id(SBIconImageInfo)> {
    static id replacement(const id& self, SEL cmd, SBIconImageInfo info)
    {
        auto custom = maskedIconOf(self, "info", info);
        return custom ? *custom : original(self, cmd, info);
    }
};

struct IconImageDidUpdate : Hook<IconImageDidUpdate, "SBIcon", "iconImageDidUpdate:", void(id)> {
    static void replacement(const id& self, SEL cmd, const id& image)
    {
        // The library says nil. A live icon has the system's picture, and the system says itself when it has changed.
        if (!image)
            if (const auto identifier = applicationOfIcon(self); identifier && isLiveIcon(*identifier))
                return;
        original(self, cmd, image);
    }
};

constexpr HookRow updateRows[] { IconImageDidUpdate::row() };

constexpr HookRow imageRows[] {
    GenerateIconImage::row(),
    UnmaskedIconImage::row(),
    IconImage::row(),
};

} // namespace

const HookRows iconUpdateRows { updateRows };
const HookRows leafIconRows { imageRows };

} // namespace appledger
