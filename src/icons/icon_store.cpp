#include "icons/icon_store.h"

#include "icons/home_screen_refresh.h"
#include "icons/icon_cache.h"
#include "icons/icon_changes.h"
#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace appledger {

using namespace platform;

namespace {

std::string identifierIn(const id& value)
{
    const auto text = asString(value);
    return text ? text->text() : "";
}

void complete(const id& completion)
{
    if (completion)
        callBlock<void>(completion);
}

void save(const id&, SEL, const id& image, const id& bundleIdentifier, const id& iconView, const id& completion)
{
    const std::string identifier = identifierIn(bundleIdentifier);
    saveCustomIcon(identifier, image, [identifier, iconView, completion] {
        refreshIcon(identifier, iconView);
        complete(completion);
    });
}

void reset(const id&, SEL, const id& bundleIdentifier, const id& iconView)
{
    const std::string identifier = identifierIn(bundleIdentifier);
    resetCustomIcon(identifier, [&] { refreshIcon(identifier, iconView); });
}

void refreshAll(const id&, SEL, const id& bundleIdentifier, const id& completion)
{
    refreshAllIcons(identifierIn(bundleIdentifier), [completion] { complete(completion); });
}

id state(const id&, SEL, const id& bundleIdentifier)
{
    const std::string identifier = identifierIn(bundleIdentifier);
    std::vector<std::pair<id, id>> pairs { { string("token"), string(ALGetCacheToken(identifier)) },
        { string("images"), number(static_cast<std::int64_t>(ALGetImageCache().count())) } };
    if (const auto path = ALCustomIconFilePath(identifier))
        pairs.emplace_back(string("path"), string(*path));
    if (const auto known = knownCustomIconPresence(identifier))
        pairs.emplace_back(string("hasFile"), boolean(*known));
    return dictionary(std::move(pairs));
}

constexpr MethodDefinition methods[] {
    classMethod<"refreshAllForBundleIdentifier:completion:", &refreshAll>(),
    classMethod<"resetForBundleIdentifier:iconView:", &reset>(),
    classMethod<"saveImage:forBundleIdentifier:iconView:completion:", &save>(),
    classMethod<"stateForBundleIdentifier:", &state>(),
};

} // namespace

const ClassDefinition ALIconStore::definition { .name = "ALIconStore", .methods = methods };

} // namespace appledger
