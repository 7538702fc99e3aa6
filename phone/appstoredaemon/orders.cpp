#include "phone/appstoredaemon/orders.h"

#include "phone/system/journal.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

std::optional<std::string> identifierOf(const id& item)
{
    for (const auto& answer : { ask<"bundleID">(item), ask<"bundleIdentifier">(item),
             ask<"valueForProperty:">(item, string("softwareInfo/bundleId")) })
        if (const auto identifier = asString(answer))
            return identifier->text();
    return std::nullopt;
}

std::function<std::string(const std::string&)>& storeDelivery()
{
    static auto* const delivery = new std::function<std::string(const std::string&)>;
    return *delivery;
}

} // namespace

void setStoreDelivery(std::function<std::string(const std::string& bundleIdentifier)> delivery)
{
    storeDelivery() = std::move(delivery);
}

void installOrderedItem(const id& item)
{
    const auto identifier = identifierOf(item);
    journal(JournalEvent::Installed, identifier.value_or("something without an identifier"));
    if (!identifier || !storeDelivery())
        return;
    if (const std::string problem = storeDelivery()(*identifier); !problem.empty())
        journal(JournalEvent::Note, *identifier + " isn't installed: " + problem, *identifier);
}

void installOrdered(const id& items)
{
    for (const id& item : itemsOf(items))
        installOrderedItem(item);
}

} // namespace phone
