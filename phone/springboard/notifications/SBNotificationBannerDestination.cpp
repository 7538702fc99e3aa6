#include "phone/iconservices/drawing.h"
#include "phone/system/text.h"
#include "platform/dispatch/queue.h"
#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

constexpr double margin = 8;
constexpr double top = 51;
constexpr double height = 68;
constexpr double iconSide = 38;
constexpr double padding = 14;
constexpr std::chrono::seconds timeOnScreen { 5 };

id newView(Class cls, const CGRect& frame)
{
    return send<"initWithFrame:">(send<"alloc">(id(cls)), frame);
}

void addLine(const id& parent, double y, const id& text, const id& font, const id& textColor)
{
    const double left = padding + iconSide + 12;
    const id label = newView(
        classNamed<"UILabel">(), CGRectMake(left, y, send<"bounds", CGRect>(parent).size.width - left - padding, 20));
    send<"setText:", void>(label, text);
    send<"setFont:", void>(label, font);
    send<"setTextColor:", void>(label, textColor);
    send<"addSubview:", void>(parent, label);
}

id applicationName(const id& section)
{
    const id controller = send<"sharedInstance">(id(classNamed<"SBApplicationController">()));
    const id application = askObject<"applicationWithBundleIdentifier:">(controller, section);
    return application ? send<"displayName">(application) : section;
}

id contentProviderOf(const id& request)
{
    id provider = send<"new">(id(classNamed<"NCNotificationRequestContentProvider">()));
    send<"setNotificationRequest:", void>(provider, request);
    return provider;
}

/// Shows each notification in a banner, the latest for five seconds.
class SBNotificationBannerDestination : public NSObject {
public:
    void postNotificationRequest(const id& request)
    {
        if (!classNamed<"SBBannerWindow">())
            return;
        if (const id former = std::exchange(window_, makeWindow(request)))
            send<"setHidden:", void>(former, true);
        // A number, as holding the window would keep one in the tree that another has followed.
        dispatch_after(timeOnScreen, dispatch_get_main_queue(), [self = Ref(this), shown = ++bannersShown_] {
            if (self->bannersShown_ == shown)
                self->window_ = nil;
        });
    }

private:
    static id makeWindow(const id& request)
    {
        id window = send<"new">(id(classNamed<"SBBannerWindow">()));
        const double width = send<"bounds", CGRect>(window).size.width - 2 * margin;
        send<"setFrame:", void>(window, CGRectMake(margin, top, width, height));
        send<"setWindowLevel:", void>(window, 1050.0);
        const id pane = newView(classNamed<"UIView">(), CGRectMake(0, 0, width, height));
        send<"setBackgroundColor:", void>(pane, color(0xF4F5FA, 0.94));
        const id layer = send<"layer">(pane);
        send<"setCornerRadius:", void>(layer, 20.0);
        send<"setShadowOpacity:", void>(layer, 0.18F);
        send<"setShadowRadius:", void>(layer, 12.0);
        send<"setShadowOffset:", void>(layer, CGSizeMake(0, 4));
        send<"addSubview:", void>(window, pane);

        const id icons = send<"icons">(contentProviderOf(request));
        const id picture
            = newView(classNamed<"UIImageView">(), CGRectMake(padding, (height - iconSide) / 2, iconSide, iconSide));
        send<"setImage:", void>(picture, itemsOf(icons).empty() ? nil : itemsOf(icons)[0]);
        send<"addSubview:", void>(pane, picture);

        const id bulletin = send<"bulletin">(request);
        const id title = askObject<"title">(bulletin);
        const bool hasTitle = !textOf(title).empty();
        addLine(pane, 13, hasTitle ? title : applicationName(send<"sectionIdentifier">(request)), systemFont(15, true),
            color(0x1C1C1E));
        addLine(pane, 34, askObject<"message">(bulletin), systemFont(15, false), color(0x1C1C1E, 0.85));
        send<"setHidden:", void>(window, false);
        return window;
    }

    id window_;
    unsigned bannersShown_ = 0;
};

id sharedInstance(const id& self, SEL)
{
    static NSObject* const destination = send<"new">(self).leak();
    return destination;
}

constexpr MethodDefinition methods[] {
    method<"postNotificationRequest:", &SBNotificationBannerDestination::postNotificationRequest>(),
    classMethod<"sharedInstance", &sharedInstance>(),
};

} // namespace

extern const ClassDefinition SBNotificationBannerDestination_class {
    .name = "SBNotificationBannerDestination", .allocate = allocate<SBNotificationBannerDestination>, .methods = methods
};

/// The window of a banner.
extern const ClassDefinition SBBannerWindow_class { .name = "SBBannerWindow", .superclassName = "UIWindow" };

} // namespace phone
