#include "core/bundle_identifier.h"
#include "icons/custom_icon.h"
#include "icons/fallback.h"
#include "icons/icon_hooks_elsewhere.h"
#include "icons/icon_view_refresh.h"
#include "icons/screen_scale.h"
#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace appledger {

using namespace platform;

namespace {

std::optional<CGSize> sizeOf(const id& image)
{
    return isKindOfClass(image, classNamed<"UIImage">()) ? ask<"size", CGSize>(image) : std::nullopt;
}

/// What a search result's icon says of its own size.
CGSize sizeByItself(const id& searchIcon)
{
    constexpr CGSize usual { 40, 40 };
    const CGSize size = ask<"CGSizeValue", CGSize>(askObject<"size">(searchIcon)).value_or(CGSizeZero);
    return size == CGSizeZero ? usual : size;
}

struct LoadImage : Hook<LoadImage, "SearchUIAppIconImage", "loadImageWithScale:isDarkStyle:", id(double, bool)> {
    static id replacement(const id& self, SEL cmd, double scale, bool isDark)
    {
        const id systems = systemsAnswer([&] { return original(self, cmd, scale, isDark); });
        return orElse(systems, [&]() -> std::optional<id> {
            const auto identifier = asString(ask<"bundleIdentifier">(self));
            if (!identifier)
                return std::nullopt;
            const auto shown = sizeOf(systems);
            const CGSize size = shown ? *shown : sizeByItself(self);
            return customIconElsewhere(*identifier, iconKey(*identifier, "search", scale, size.width), size, scale);
        });
    }
};

/// The system's method would deliver its own image, so it is asked only when there is none of the owner's.
struct LoadImageLater : Hook<LoadImageLater, "SearchUIAppIconImage",
                            "loadImageWithScale:isDarkStyle:completionHandler:", void(double, bool, id)> {
    static void replacement(const id& self, SEL cmd, double scale, bool isDark, const id& handler)
    {
        const auto identifier = asString(ask<"bundleIdentifier">(self));
        if (identifier && handler) {
            const CGSize size = sizeByItself(self);
            const auto custom
                = customIconElsewhere(*identifier, iconKey(*identifier, "searchblock", scale, size.width), size, scale);
            if (custom && *custom) {
                callBlock(handler, *custom);
                return;
            }
        }
        original(self, cmd, scale, isDark, handler);
    }
};

CGSize sizeOfIconView(const id& view, const id& systems)
{
    constexpr CGSize usual { 60, 60 };
    if (const auto shown = sizeOf(systems); shown && shown->width > 0)
        return *shown;
    const CGSize size = ask<"bounds", CGRect>(view).value_or(CGRectZero).size;
    return size.width > 0 ? size : usual;
}

/// What an icon's view shows, in the place of what the system answered.
id shownInIconView(const id& view, std::string_view surface, const id& systems)
{
    return orElse(systems, [&]() -> std::optional<id> {
        const auto identifier = applicationOfIcon(askObject<"icon">(view));
        if (!identifier || isLiveIcon(*identifier))
            return std::nullopt;
        const CGSize size = sizeOfIconView(view, systems);
        return customIconElsewhere(*identifier, iconKey(*identifier, surface, size.width), size, mainScreenScale());
    });
}

struct ContentsImage : Hook<ContentsImage, "SBIconImageView", "contentsImage", id()> {
    static id replacement(const id& self, SEL cmd)
    {
        return shownInIconView(self, "sbi_contents", systemsAnswer([&] { return original(self, cmd); }));
    }
};

struct DisplayedImage : Hook<DisplayedImage, "SBIconImageView", "displayedImage", id()> {
    static id replacement(const id& self, SEL cmd)
    {
        return shownInIconView(self, "sbi_displayed", systemsAnswer([&] { return original(self, cmd); }));
    }
};

// Views that follow a change while they are seen.

template <Name ClassName> struct InitWithFrame
    : Hook<InitWithFrame<ClassName>, ClassName, "initWithFrame:", id(CGRect)> {
    static id replacement(const id& self, SEL cmd, CGRect frame)
    {
        return followingRefreshes(InitWithFrame::original(self, cmd, frame));
    }
};

struct Init : Hook<Init, "SearchUIImageView", "init", id()> {
    static id replacement(const id& self, SEL cmd) { return followingRefreshes(original(self, cmd)); }
};

template <Name ClassName> struct Dealloc : Hook<Dealloc<ClassName>, ClassName, "dealloc", void()> {
    static void replacement(const id& self, SEL cmd)
    {
        stopFollowingRefreshes(self);
        Dealloc::original(self, cmd);
    }
};

struct RefreshIconImageView : AddedMethod<RefreshIconImageView, "SBIconImageView", "al_forceRefreshUI", void()> {
    static void implementation(const id& self, SEL) { refreshIconImageView(self); }
};

struct RefreshSearchImageView : AddedMethod<RefreshSearchImageView, "SearchUIImageView", "al_forceRefreshUI", void()> {
    static void implementation(const id& self, SEL) { refreshSearchImageView(self); }
};

constexpr HookRow rows[] {
    LoadImage::row(),
    LoadImageLater::row(),
    InitWithFrame<"SBIconImageView">::row(),
    Dealloc<"SBIconImageView">::row(),
    RefreshIconImageView::row(),
    ContentsImage::row(),
    DisplayedImage::row(),
    Init::row(),
    InitWithFrame<"SearchUIImageView">::row(),
    Dealloc<"SearchUIImageView">::row(),
    RefreshSearchImageView::row(),
};

} // namespace

const HookGroup SearchUIHooks { "SearchUIHooks", rows };

} // namespace appledger
