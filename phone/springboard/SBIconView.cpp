#include "phone/process/journal.h"
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

    void handleTap()
    {
        journal(JournalEvent::Ran, "SBIconView _handleTap");
        send<"_launchFromIconView:", void>(send<"sharedInstance">(id(classNamed<"SBIconController">())), id(this));
    }
};

constexpr MethodDefinition methods[] {
    method<"_handleTap", &SBIconView::handleTap>(),
    getter<"_iconImageView", &SBIconView::iconImageView>(),
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
