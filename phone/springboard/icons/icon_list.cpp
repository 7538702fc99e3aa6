#include "phone/springboard/icons/icon_list.h"

#include "phone/system/text.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

id iconController()
{
    return send<"sharedInstance">(id(classNamed<"SBIconController">()));
}

} // namespace

id iconModel()
{
    return send<"model">(iconController());
}

id iconManager()
{
    return askObject<"iconManager">(iconController());
}

std::vector<HomeScreenIcon> homeScreenIcons()
{
    const id model = iconModel();
    const auto shown = asArray(send<"laidOutIcons">(model));
    std::vector<HomeScreenIcon> icons;
    for (const id& icon : itemsOf(send<"leafIcons">(model)))
        icons.push_back({ textOf(send<"leafIdentifier">(icon)), textOf(send<"displayName">(icon)),
            shown && shown->contains(icon), send<"isUninstallSupported", bool>(icon) });
    return icons;
}

} // namespace phone
