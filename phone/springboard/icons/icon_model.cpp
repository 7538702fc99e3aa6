#include "phone/springboard/icons/icon_model.h"

#include "phone/device/home_widgets.h"
#include "phone/springboard/applications/applications.h"
#include "phone/springboard/home/home_screen.h"
#include "phone/springboard/icons/bookmark_icon.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// The icon that has stood there, or the new one.
void addLeaf(std::vector<std::pair<id, id>>& pairs, const std::optional<DictionaryValue>& former, const id& icon)
{
    const id identifier = send<"leafIdentifier">(icon);
    id known = former ? (*former)[identifier] : nil;
    pairs.emplace_back(identifier, known ? std::move(known) : icon);
}

} // namespace

id IconModel::applicationIconForBundleIdentifier(const id& identifier)
{
    if (!icons_)
        reloadIcons();
    id icon = pairsOf(icons_)[identifier];
    return askObject<"application">(icon) ? icon : nil;
}

id IconModel::leafIconForIdentifier(const id& identifier)
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
    for (const id& application : itemsOf(send<"allApplications">(applicationController()))) {
        const id identifier = send<"bundleIdentifier">(application);
        id icon = former ? (*former)[identifier] : nil;
        if (!icon)
            icon = send<"initWithApplication:">(send<"alloc">(id(classNamed<"SBApplicationIcon">())), application);
        pairs.emplace_back(identifier, std::move(icon));
    }
    for (const id& icon : makeBookmarkIcons())
        addLeaf(pairs, former, icon);
    for (const std::string& widget : homeWidgets()) {
        const id icon = askObject<"new">(id(NSClassFromString("SBWidgetIcon")));
        ask<"setLeafIdentifier:", void>(icon, string(widget));
        if (icon)
            addLeaf(pairs, former, icon);
    }
    icons_ = dictionary(std::move(pairs));
    send<"layout", void>(id(this));
}

bool IconModel::isIconVisible(const id& icon)
{
    return send<"isVisible", bool>(icon);
}

id IconModel::visibleIconIdentifiers()
{
    std::vector<id> identifiers;
    for (const id& icon : itemsOf(leafIcons()))
        if (send<"isIconVisible:", bool>(id(this), icon))
            identifiers.push_back(send<"leafIdentifier">(icon));
    return set(std::move(identifiers));
}

id IconModel::laidOutIcons()
{
    if (!icons_)
        reloadIcons();
    return laidOut_;
}

void IconModel::layout()
{
    std::vector<id> icons;
    const id visible = send<"visibleIconIdentifiers">(id(this));
    const auto identifiers = asSet(visible);
    for (const id& icon : itemsOf(leafIcons()))
        if (identifiers && identifiers->contains(send<"leafIdentifier">(icon))
            && send<"isIconVisible:", bool>(id(this), icon))
            icons.push_back(icon);
    laidOut_ = array(std::move(icons));
    layOutHomeScreen();
}

} // namespace phone
