#include "phone/process/journal.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// An icon on the Home Screen.
class SBIconView : public NSObject {
public:
    id icon;
    id iconImageView;
    id location;

    void setIcon(const id& newIcon)
    {
        icon = newIcon;
        iconImageView = send<"new">(id(classNamed<"SBIconImageView">()));
        send<"setIcon:", void>(iconImageView, icon);
    }

    id bundleIdentifier() const { return askObject<"applicationBundleID">(icon); }

    /// The Dock shows no labels.
    NSInteger currentLabelAccessoryType() const
    {
        const auto place = asString(location);
        if (place && place->view().find("Dock") != std::string_view::npos)
            return 0;
        const id application = askObject<"application">(icon);
        return ask<"labelAccessoryTypeForIcon:", NSInteger>(application, icon).value_or(0);
    }

    void handleTap()
    {
        journal(JournalEvent::Ran, "SBIconView _handleTap");
        send<"_launchFromIconView:", void>(send<"sharedInstance">(id(classNamed<"SBIconController">())), id(this));
    }
};

constexpr MethodDefinition methods[] {
    method<"_handleTap", &SBIconView::handleTap>(),
    getter<"_iconImageView", &SBIconView::iconImageView>(),
    method<"applicationBundleID", &SBIconView::bundleIdentifier>().until(12),
    method<"applicationBundleIdentifier", &SBIconView::bundleIdentifier>().since(13),
    method<"currentLabelAccessoryType", &SBIconView::currentLabelAccessoryType>(),
    getter<"icon", &SBIconView::icon>(),
    getter<"location", &SBIconView::location>(),
    method<"setIcon:", &SBIconView::setIcon>(),
    setter<"setLocation:", &SBIconView::location>(),
};

constexpr InstanceVariableDefinition instanceVariables[] {
    instanceVariable<"_iconImageView", &SBIconView::iconImageView>(),
};

} // namespace

extern const ClassDefinition SBIconView_class {
    .name = "SBIconView", .allocate = allocate<SBIconView>, .methods = methods, .instanceVariables = instanceVariables
};

} // namespace phone
