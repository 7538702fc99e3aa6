#include "surfaces/hidden_apps.h"

#include "core/policies.h"
#include "platform/dispatch/queue.h"
#include "platform/runtime/message.h"

namespace appledger {

using namespace platform;

void HiddenAppsChangedCallback()
{
    reload(policy::hidden);
    dispatch_async(dispatch_get_main_queue(), [] {
        const id controller = askObject<"sharedInstance">(id(NSClassFromString("SBIconController")));
        const id model = askObject<"model">(controller);
        if (!ask<"reloadIcons", void>(model))
            ask<"layout", void>(model);
    });
}

} // namespace appledger
