#include "icons/custom_icon.h"
#include "icons/fallback.h"
#include "icons/icon_hooks_elsewhere.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace appledger {

using namespace platform;

namespace {

CGSize sizeOf(const id& image)
{
    constexpr CGSize usual { 60, 60 };
    return ask<"size", CGSize>(image).value_or(usual);
}

struct ImageForBundleIdentifier : ClassHook<ImageForBundleIdentifier, "UIImage",
                                      "_applicationIconImageForBundleIdentifier:format:scale:", id(id, int, double)> {
    static id replacement(const id& self, SEL cmd, const id& bundleIdentifier, int format, double scale)
    {
        const id systems = systemsAnswer([&] { return original(self, cmd, bundleIdentifier, format, scale); });
        return orElse(systems, [&]() -> std::optional<id> {
            const auto identifier = asString(bundleIdentifier);
            if (!identifier)
                return std::nullopt;
            return customIconElsewhere(
                *identifier, iconKey(*identifier, "uiimg", format), sizeOf(systems), scale, FileTest::EachTime);
        });
    }
};

struct ImageForResourceProxy : ClassHook<ImageForResourceProxy, "UIImage",
                                   "_iconForResourceProxy:variant:options:variantsScale:", id(id, int, int, double)> {
    static id replacement(const id& self, SEL cmd, const id& proxy, int variant, int options, double scale)
    {
        const id systems = systemsAnswer([&] { return original(self, cmd, proxy, variant, options, scale); });
        return orElse(systems, [&]() -> std::optional<id> {
            const auto identifier = asString(askObject<"bundleIdentifier">(proxy));
            if (!identifier)
                return std::nullopt;
            return customIconElsewhere(*identifier, iconKey(*identifier, "proxy", variant), sizeOf(systems), scale);
        });
    }
};

constexpr HookRow rows[] {
    ImageForBundleIdentifier::row(),
    ImageForResourceProxy::row(),
};

} // namespace

const HookGroup GlobalIconHooks { "GlobalIconHooks", rows };

} // namespace appledger
