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

} // namespace

void installOrderedItem(const id& item)
{
    journal(JournalEvent::Installed, nameOf(item));
}

void installOrdered(const id& items)
{
    for (const id& item : itemsOf(items))
        installOrderedItem(item);
}

} // namespace phone
