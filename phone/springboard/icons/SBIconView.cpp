#include "phone/springboard/icons/SBIconView.h"

#include "phone/iconservices/drawing.h"
#include "phone/iconservices/icon_pictures.h"
#include "phone/springboard/home/arrangement.h"
#include "phone/springboard/home/home_screen.h"
#include "phone/system/journal.h"
#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// An icon on the Home Screen: its picture, its label, and on the picture's corner its badge.
struct IconViewFields {
    id icon;
    id iconImageView;
    id labelView;
    id accessoryView;
    id badgeView;
    id location;
    NSInteger accessoryType = 0; ///< as it was answered last
};

IconViewFields& fieldsIn(const id& self)
{
    return fieldsOf<IconViewFields>(self);
}

constexpr double labelGap = 4;
constexpr double labelTop = iconSide + labelGap; ///< of an icon of the usual size
constexpr double labelHeight = 16;
constexpr double labelFontSize = 12;
constexpr double accessorySide = 7;

bool isInDock(const id& self)
{
    const auto location = asString(fieldsIn(self).location);
    return location && location->view().find("Dock") != std::string_view::npos;
}

bool isWidget(const id& self)
{
    return isKindOfClass(fieldsIn(self).icon, classNamed<"SBWidgetIcon">());
}

CGRect pictureFrame(const id& self)
{
    const CGSize size = isWidget(self) ? widgetSize : CGSize { iconSide, iconSide };
    const CGSize whole = isWidget(self) ? widgetViewSize : iconViewSize;
    return { { (whole.width - size.width) / 2, 0 }, size };
}

id makeLabel()
{
    id label = send<"new">(id(classNamed<"UILabel">()));
    send<"setFrame:", void>(label, CGRectMake(0, labelTop, iconViewSize.width, labelHeight));
    send<"setFont:", void>(label, systemFont(labelFontSize, false));
    send<"setTextAlignment:", void>(label, 1L);
    send<"setTextColor:", void>(label, color(0xFFFFFF));
    const id layer = send<"layer">(label);
    send<"setShadowOpacity:", void>(layer, 0.35F);
    send<"setShadowRadius:", void>(layer, 1.5);
    send<"setShadowOffset:", void>(layer, CGSizeMake(0, 0.5));
    return label;
}

id makeBadge()
{
    id badge = send<"new">(id(classNamed<"UILabel">()));
    send<"setFont:", void>(badge, systemFont(14, false));
    send<"setTextAlignment:", void>(badge, 1L);
    send<"setTextColor:", void>(badge, color(0xFFFFFF));
    send<"setBackgroundColor:", void>(badge, color(0xFF3B30));
    send<"setCornerRadius:", void>(send<"layer">(badge), 12.0);
    return badge;
}

/// Below everything else; one that is of that class stays.
void useImageViewOf(const id& self, Class imageViewClass)
{
    IconViewFields& fields = fieldsIn(self);
    if (fields.iconImageView && fields.iconImageView->isa() == imageViewClass)
        return;
    send<"removeFromSuperview", void>(fields.iconImageView);
    fields.iconImageView = send<"initWithFrame:">(send<"alloc">(id(imageViewClass)), pictureFrame(self));
    send<"insertSubview:atIndex:", void>(self, fields.iconImageView, NSInteger { 0 });
}

id initWithFrame(const id& self, SEL, CGRect frame)
{
    id view = sendSuper<"initWithFrame:">(classNamed<"UIView">(), self, frame);
    IconViewFields& fields = fieldsIn(view);
    fields.labelView = makeLabel();
    useImageViewOf(view, classNamed<"SBIconImageView">());
    send<"addSubview:", void>(view, fields.labelView);
    const id tap = send<"initWithTarget:action:">(
        send<"alloc">(id(classNamed<"UITapGestureRecognizer">())), view, sel_registerName("tapGestureDidChange:"));
    send<"addGestureRecognizer:", void>(view, tap);
    return view;
}

/// A layout doesn't ask again: the accessory stays until something is said to have happened to the icon.
void updateAccessory(const id& self, SEL)
{
    fieldsIn(self).accessoryType = send<"currentLabelAccessoryType", NSInteger>(self);
    send<"setNeedsLayout", void>(self);
}

void updateLabel(const id& self, SEL)
{
    send<"setNeedsLayout", void>(self);
}

void updateImageView(const id& self, SEL)
{
    send<"iconImageDidUpdate:", void>(fieldsIn(self).iconImageView, nil);
    send<"setNeedsLayout", void>(self);
}

void setIcon(const id& self, SEL, const id& icon)
{
    IconViewFields& fields = fieldsIn(self);
    fields.icon = icon;
    if (icon)
        useImageViewOf(self,
            ask<"iconImageViewClassForLocation:", Class>(icon, fields.location)
                .value_or(classNamed<"SBIconImageView">()));
    const CGRect picture = pictureFrame(self);
    send<"setFrame:", void>(fields.iconImageView, picture);
    if (isWidget(self))
        send<"setFrame:", void>(
            fields.labelView, CGRectMake(0, picture.size.height + labelGap, widgetViewSize.width, labelHeight));
    send<"setIcon:", void>(fields.iconImageView, icon);
    send<"_updateLabelAccessoryView", void>(self);
}

void setLocation(const id& self, SEL, const id& location)
{
    fieldsIn(self).location = location;
    send<"_updateLabelAccessoryView", void>(self);
}

id applicationIdentifier(const id& self, SEL)
{
    return askObject<"applicationBundleID">(fieldsIn(self).icon);
}

/// 0: none. Other kinds are marks before the name.
NSInteger currentLabelAccessoryType(const id& self, SEL)
{
    if (isInDock(self))
        return 0;
    const id icon = fieldsIn(self).icon;
    return ask<"labelAccessoryTypeForIcon:", NSInteger>(askObject<"application">(icon), icon).value_or(0);
}

/// Before the name; in the dock, where there is none, under the picture and beside its middle, which is left to others.
CGPoint accessoryCenter(const id& self)
{
    if (isInDock(self))
        return { iconViewSize.width / 2 - 8.5, iconSide + 9 };
    const double width = send<"sizeThatFits:", CGSize>(fieldsIn(self).labelView, iconViewSize).width;
    constexpr double gap = 3;
    return { (iconViewSize.width - width) / 2 - gap - accessorySide / 2, labelTop + labelHeight / 2 };
}

void layoutAccessory(const id& self)
{
    IconViewFields& fields = fieldsIn(self);
    const bool isShown = isInDock(self) || !send<"isHidden", bool>(fields.labelView);
    if (fields.accessoryType == 0 || !isShown) {
        send<"removeFromSuperview", void>(fields.accessoryView);
        fields.accessoryView = nil;
        return;
    }
    if (!fields.accessoryView) {
        fields.accessoryView = send<"initWithFrame:">(
            send<"alloc">(id(classNamed<"UIView">())), CGRectMake(0, 0, accessorySide, accessorySide));
        send<"setCornerRadius:", void>(send<"layer">(fields.accessoryView), accessorySide / 2);
        send<"addSubview:", void>(self, fields.accessoryView);
    }
    constexpr NSInteger runningType = 4;
    send<"setBackgroundColor:", void>(
        fields.accessoryView, color(fields.accessoryType == runningType ? 0x34C759 : 0x5AC8FA));
    send<"setCenter:", void>(fields.accessoryView, accessoryCenter(self));
}

void layoutBadge(const id& self)
{
    IconViewFields& fields = fieldsIn(self);
    const id application = askObject<"application">(fields.icon);
    const auto value = ask<"badgeValue">(application);
    const id badge = value ? *value : askObject<"badgeNumberOrString">(application);
    std::string text;
    if (const auto written = asString(badge))
        text = written->text();
    else if (const auto count = asInteger(badge); count && *count > 0)
        text = std::to_string(*count);
    if (text.empty()) {
        send<"removeFromSuperview", void>(fields.badgeView);
        fields.badgeView = nil;
        return;
    }
    if (!fields.badgeView) {
        fields.badgeView = makeBadge();
        send<"addSubview:", void>(self, fields.badgeView);
    }
    send<"setText:", void>(fields.badgeView, string(text));
    constexpr double height = 24;
    constexpr double padding = 14;
    const double width = std::max(height, sizeOfText(text, send<"font">(fields.badgeView)).width + padding);
    constexpr double overhang = 10;
    const double right = (iconViewSize.width + iconSide) / 2 + overhang;
    send<"setFrame:", void>(fields.badgeView, CGRectMake(right - width, -overhang, width, height));
}

void layoutSubviews(const id& self, SEL)
{
    IconViewFields& fields = fieldsIn(self);
    send<"setText:", void>(fields.labelView, askObject<"displayName">(fields.icon));
    send<"setHidden:", void>(fields.labelView, isInDock(self));
    layoutAccessory(self);
    layoutBadge(self);
}

void tapGestureDidChange(const id& self, SEL, const id&)
{
    journal(JournalEvent::Sent, "SBIconView _handleTap");
    send<"_handleTap", void>(self);
}

void handleTap(const id& self, SEL)
{
    journal(JournalEvent::Ran, "SBIconView _handleTap");
    const id icon = fieldsIn(self).icon;
    if (isKindOfClass(icon, classNamed<"SBFolderIcon">())) {
        openFolder(send<"folder">(icon));
        return;
    }
    send<"_launchFromIconView:", void>(send<"sharedInstance">(id(classNamed<"SBIconController">())), self);
}

id accessibilityIdentifier(const id& self, SEL)
{
    return askObject<"leafIdentifier">(fieldsIn(self).icon);
}

id accessibilityLabel(const id& self, SEL)
{
    return askObject<"displayName">(fieldsIn(self).icon);
}

/// What stands on the badge.
id accessibilityValue(const id& self, SEL)
{
    return askObject<"text">(fieldsIn(self).badgeView);
}

constexpr MethodDefinition methods[] {
    method<"_handleTap", &handleTap>(),
    getter<"_iconImageView", &IconViewFields::iconImageView>(),
    getter<"_labelView", &IconViewFields::labelView>(),
    method<"_updateIconImageView", &updateImageView>(),
    method<"_updateLabel", &updateLabel>(),
    method<"_updateLabelAccessoryView", &updateAccessory>(),
    method<"accessibilityIdentifier", &accessibilityIdentifier>(),
    method<"accessibilityLabel", &accessibilityLabel>(),
    method<"accessibilityValue", &accessibilityValue>(),
    method<"applicationBundleID", &applicationIdentifier>().until(12),
    method<"applicationBundleIdentifier", &applicationIdentifier>().since(13),
    method<"currentLabelAccessoryType", &currentLabelAccessoryType>(),
    getter<"icon", &IconViewFields::icon>(),
    getter<"iconImageView", &IconViewFields::iconImageView>(),
    method<"initWithFrame:", &initWithFrame>(),
    getter<"labelView", &IconViewFields::labelView>(),
    method<"layoutSubviews", &layoutSubviews>(),
    getter<"location", &IconViewFields::location>(),
    method<"setIcon:", &setIcon>(),
    method<"setLocation:", &setLocation>(),
    method<"tapGestureDidChange:", &tapGestureDidChange>(),
};

constexpr InstanceVariableDefinition instanceVariables[] {
    instanceVariable<"_iconImageView", &IconViewFields::iconImageView>(),
    instanceVariable<"_labelView", &IconViewFields::labelView>(),
};

} // namespace

extern const ClassDefinition SBIconView_class {
    .name = "SBIconView", .superclassName = "UIView", .methods = methods, .instanceVariables = instanceVariables
};

id makeIconView(const id& icon, std::string_view location, const CGRect& frame)
{
    id view = send<"initWithFrame:">(send<"alloc">(id(classNamed<"SBIconView">())), frame);
    send<"setLocation:", void>(view, string(location));
    send<"setIcon:", void>(view, icon);
    return view;
}

} // namespace phone
