#include "phone/springboard/url_opening.h"

#include "phone/frontboard/open_request.h"
#include "phone/launchservices/installed_applications.h"
#include "phone/system/journal.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

bool takes(const InstalledApplication& application, std::string_view scheme)
{
    for (const id& type : itemsOf(pairsOf(application.information)["CFBundleURLTypes"]))
        if (itemsOf(pairsOf(type)["CFBundleURLSchemes"]).contains(scheme))
            return true;
    return false;
}

/// The first by name, as the system takes one; "" for none.
std::string takerOf(const id& url)
{
    const auto scheme = asString(askObject<"scheme">(url));
    if (!scheme)
        return {};
    for (const InstalledApplication& application : installedApplications())
        if (takes(application, *scheme))
            return application.bundleIdentifier;
    return {};
}

} // namespace

bool canOpenUrl(const id& url)
{
    return !takerOf(url).empty();
}

void openUrl(const id& url, const id& completion)
{
    const std::string taker = takerOf(url);
    const auto text = asString(askObject<"absoluteString">(url));
    journal(JournalEvent::Note, (taker.empty() ? "nobody takes " : taker + " is given ") + (text ? text->text() : ""));
    const bool isOpen = !taker.empty() && openApplication({ taker });
    dispatch_async(dispatch_get_main_queue(), [completion, isOpen] { callBlock(completion, isOpen); });
}

} // namespace phone
