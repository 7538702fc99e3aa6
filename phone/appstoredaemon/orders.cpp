#include "phone/appstoredaemon/orders.h"

#include "phone/system/journal.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

std::string nameOf(const id& item)
{
    for (const auto& answer : { ask<"bundleID">(item), ask<"bundleIdentifier">(item),
             ask<"valueForProperty:">(item, string("softwareInfo/bundleId")) })
        if (const auto identifier = asString(answer))
            return identifier->text();
    return "something without an identifier";
}

std::function<Delivery(const std::string&)>& storeDelivery()
{
    static auto* const delivery = new std::function<Delivery(const std::string&)>;
    return *delivery;
}

} // namespace

void setStoreDelivery(std::function<Delivery(const std::string& bundleIdentifier)> delivery)
{
    storeDelivery() = std::move(delivery);
}

void installOrderedItem(const id& item)
{
    const std::string name = nameOf(item);
    const Delivery delivered = storeDelivery() ? storeDelivery()(name) : Delivery {};
    journal(JournalEvent::Installed, name, delivered.version);
    if (!delivered.problem.empty())
        journal(JournalEvent::Note, name + " isn't installed: " + delivered.problem);
}

void installOrdered(const id& items)
{
    for (const id& item : itemsOf(items))
        installOrderedItem(item);
}

} // namespace phone
