#include "phone/springboard/icon_model.h"

#include "phone/springboard/home/home_screen.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

id IconModel::applicationIconForBundleIdentifier(const id& identifier)
{
    if (!icons_)
        reloadIcons();
    return pairsOf(icons_)[identifier];
}

id IconModel::leafIcons()
{
    if (!icons_)
        reloadIcons();
    std::vector<id> icons;
    for (const auto& [identifier, icon] : pairsOf(icons_))
        icons.push_back(icon);
    return array(std::move(icons));
}

void IconModel::reloadIcons()
{
    const auto former = asDictionary(icons_);
    std::vector<std::pair<id, id>> pairs;
    const id controller = send<"sharedInstance">(id(classNamed<"SBApplicationController">()));
    for (const id& application : itemsOf(send<"allApplications">(controller))) {
        const id identifier = send<"bundleIdentifier">(application);
        id icon = former ? (*former)[identifier] : nil;
        if (!icon)
            icon = send<"initWithApplication:">(send<"alloc">(id(classNamed<"SBApplicationIcon">())), application);
        pairs.emplace_back(identifier, std::move(icon));
    }
    icons_ = dictionary(std::move(pairs));
    layout();
}

void IconModel::layout()
{
    layOutHomeScreen();
}

} // namespace phone
