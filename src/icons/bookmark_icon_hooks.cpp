#include "core/policies.h"
#include "icons/custom_icon.h"
#include "icons/home_icon_hooks.h"
#include "icons/icon_drawing.h"
#include "icons/icon_image_info.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace appledger {

using namespace platform;

namespace {

std::optional<StringValue> webClipOf(const id& icon)
{
    return asString(askObject<"leafIdentifier">(icon));
}

/// Nil without an icon file. Not kept: the file is read at each rendering.
id customIconOf(const id& icon)
{
    const auto identifier = webClipOf(icon);
    return identifier ? loadCustomIcon(*identifier) : nil;
}

/// Read from the domain at each call.
id customNameOf(const id& icon)
{
    const auto identifier = webClipOf(icon);
    if (!identifier)
        return nil;
    const id names = preferences()->objectForKey(preference::customNames);
    const auto name = asString(pairsOf(names)[identifier->view()]);
    return name && !name->empty() ? name->object() : nil;
}

// One algorithm for the class's two names.

template <Name ClassName> struct DisplayName
    : Hook<DisplayName<ClassName>, ClassName, "displayNameForLocation:", id(id)> {
    static id replacement(const id& self, SEL cmd, const id& location)
    {
        id name = customNameOf(self);
        return name ? name : DisplayName::original(self, cmd, location);
    }
};

template <Name ClassName> struct GenerateIconImage
    : Hook<GenerateIconImage<ClassName>, ClassName, "generateIconImageWithInfo:", id(SBIconImageInfo)> {
    static id replacement(const id& self, SEL cmd, SBIconImageInfo info)
    {
        const id custom = customIconOf(self);
        return custom ? drawMaskedIcon(custom, info.size, info.scale, info.continuousCornerRadius)
                      : GenerateIconImage::original(self, cmd, info);
    }
};

template <Name ClassName> struct UnmaskedIconImage
    : Hook<UnmaskedIconImage<ClassName>, ClassName, "unmaskedIconImageWithInfo:", id(SBIconImageInfo)> {
    static id replacement(const id& self, SEL cmd, SBIconImageInfo info)
    {
        const id custom = customIconOf(self);
        return custom ? drawUnmaskedIcon(custom, info.size, info.scale) : UnmaskedIconImage::original(self, cmd, info);
    }
};

/// Never the replaced method: what is generated is the one way to a web clip's picture.
template <Name ClassName> struct IconImage
    : Hook<IconImage<ClassName>, ClassName, "iconImageWithInfo:", id(SBIconImageInfo)> {
    static id replacement(const id& self, SEL, SBIconImageInfo info)
    {
        return send<"generateIconImageWithInfo:">(self, info);
    }
};

constexpr HookRow rows[] {
    DisplayName<"SBBookmarkIcon">::row(),
    GenerateIconImage<"SBBookmarkIcon">::row(),
    UnmaskedIconImage<"SBBookmarkIcon">::row(),
    IconImage<"SBBookmarkIcon">::row(),
    DisplayName<"SBHBookmarkIcon">::row(),
    GenerateIconImage<"SBHBookmarkIcon">::row(),
    UnmaskedIconImage<"SBHBookmarkIcon">::row(),
    IconImage<"SBHBookmarkIcon">::row(),
};

} // namespace

const HookRows bookmarkIconRows { rows };

} // namespace appledger
