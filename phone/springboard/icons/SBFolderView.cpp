#include "phone/iconservices/drawing.h"
#include "phone/springboard/home/arrangement.h"
#include "phone/springboard/home/home_screen.h"
#include "phone/springboard/icons/SBIconView.h"
#include "platform/runtime/class_definition.h"

#include <algorithm>

namespace phone {

using namespace platform;

namespace {

/// A folder that is open, over the page that it stands on.
struct FolderViewFields {
    id folder;
    id panel;
    id iconViews; ///< array
};

id initWithFolder(const id& self, SEL, const id& folder)
{
    const CGRect screen = send<"bounds", CGRect>(send<"mainScreen">(id(classNamed<"UIScreen">())));
    id view = send<"initWithFrame:">(self, screen);
    FolderViewFields& fields = fieldsOf<FolderViewFields>(view);
    fields.folder = folder;
    send<"setBackgroundColor:", void>(view, color(0x0B1026, 0.45));

    constexpr double side = 320;
    const double left = (screen.size.width - side) / 2;
    constexpr double top = 262;
    fields.panel
        = send<"initWithFrame:">(send<"alloc">(id(classNamed<"UIView">())), CGRectMake(left, top, side, side + 16));
    send<"setBackgroundColor:", void>(fields.panel, color(0xE6E8F0, 0.5));
    send<"setCornerRadius:", void>(send<"layer">(fields.panel), 38.0);
    send<"addSubview:", void>(view, fields.panel);

    const id title = send<"initWithFrame:">(
        send<"alloc">(id(classNamed<"UILabel">())), CGRectMake(20, top - 76, screen.size.width - 40, 44));
    send<"setText:", void>(title, send<"displayName">(folder));
    send<"setFont:", void>(title, systemFont(34, true));
    send<"setTextColor:", void>(title, color(0xFFFFFF));
    send<"setTextAlignment:", void>(title, 1L);
    send<"addSubview:", void>(view, title);

    send<"layOutIcons", void>(view);
    const id tap = send<"initWithTarget:action:">(
        send<"alloc">(id(classNamed<"UITapGestureRecognizer">())), view, sel_registerName("_handleOutsideTap:"));
    send<"addGestureRecognizer:", void>(view, tap);
    return view;
}

/// Puts up what the folder holds now; icons that stay keep their views.
void layOutIcons(const id& self, SEL)
{
    FolderViewFields& fields = fieldsOf<FolderViewFields>(self);
    const id formerViews = fields.iconViews;
    std::vector<id> left;
    for (const id& view : itemsOf(formerViews))
        left.push_back(view);
    std::vector<id> views;
    for (const id& icon : itemsOf(send<"icons">(fields.folder))) {
        const CGRect frame = frameInFolder(views.size());
        const auto former = std::ranges::find(left, icon, [](const id& view) { return send<"icon">(view); });
        if (former == left.end()) {
            views.push_back(makeIconView(icon, "SBIconLocationFolder", frame));
            send<"addSubview:", void>(fields.panel, views.back());
        } else {
            views.push_back(*former);
            left.erase(former);
            send<"setFrame:", void>(views.back(), frame);
        }
    }
    for (const id& view : left)
        send<"removeFromSuperview", void>(view);
    fields.iconViews = array(std::move(views));
}

void handleOutsideTap(const id& self, SEL, const id& tap)
{
    const id& panel = fieldsOf<FolderViewFields>(self).panel;
    const CGRect frame = send<"frame", CGRect>(panel);
    if (!CGRectContainsPoint(frame, send<"locationInView:", CGPoint>(tap, self)))
        closeFolder();
}

void transition(const id&, SEL, bool, const id&) { }

void transitioned(const id&, SEL, bool) { }

constexpr MethodDefinition methods[] {
    method<"_handleOutsideTap:", &handleOutsideTap>(),
    method<"didTransitionAnimated:", &transitioned>(),
    getter<"folder", &FolderViewFields::folder>(),
    getter<"iconViews", &FolderViewFields::iconViews>(),
    method<"initWithFolder:", &initWithFolder>(),
    method<"layOutIcons", &layOutIcons>(),
    getter<"panel", &FolderViewFields::panel>(),
    method<"willTransitionAnimated:withSettings:", &transition>(),
};

} // namespace

extern const ClassDefinition SBFolderView_class {
    .name = "SBFolderView", .superclassName = "UIView", .methods = methods
};

} // namespace phone
