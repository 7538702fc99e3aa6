#include "panel/section_header_parts.h"
#include "panel/section_header_views.h"
#include "platform/handles/UITapGestureRecognizer.h"
#include "platform/runtime/weak.h"

namespace appledger {

using namespace platform;

namespace {

constexpr CGFloat height = 30;
constexpr CGFloat fontSize = 15;
constexpr CGSize chevronSize { 14, 14 };

struct ExpandableHeaderFields {
    id titleLabel {};
    bool isExpanded = false;
    NSInteger section = 0;
    Weak<NSObject> delegate {};
    id chevronImageView {};
    id chevronUp {};
    id chevronDown {};
};

ExpandableHeaderFields& fieldsIn(const id& self)
{
    return fieldsOf<ExpandableHeaderFields>(self);
}

id reuseIdentifier(const id&, SEL)
{
    return string("ALExpandableSectionHeaderViewIdentifier");
}

CGFloat headerHeight(const id&, SEL)
{
    return height;
}

void initialize(const id& self, SEL)
{
    ExpandableHeaderFields& fields = fieldsIn(self);
    const UITableViewHeaderFooterView view(self);
    const UIView content = view.contentView();
    view.setBackgroundView(UIView::withFrame({}));
    fields.chevronDown = templatePicture("ChevronDown");
    fields.chevronUp = templatePicture("ChevronUp");

    const UIImageView chevron = makeHeaderImageView(content, chevronSize);
    chevron.trailingAnchor().equalTo(content.trailingAnchor(), -headerMargin).setActive(true);
    chevron.centerYAnchor().equalTo(content.centerYAnchor()).setActive(true);
    fields.chevronImageView = chevron;
    const UILabel title = makeHeaderLabel(content, fontSize);
    title.leadingAnchor().equalTo(content.leadingAnchor(), headerMargin).setActive(true);
    title.trailingAnchor().equalTo(chevron.leadingAnchor(), -headerMargin / 2).setActive(true);
    title.centerYAnchor().equalTo(content.centerYAnchor()).setActive(true);
    fields.titleLabel = title;

    view.addGestureRecognizer(UITapGestureRecognizer::withTarget(self, sel_registerName("didTapHeaderView:")));
    view.addGestureRecognizer(UIGestureRecognizer(
        send<"initWithTarget:action:">(send<"alloc">(id(classNamed<"UILongPressGestureRecognizer">())), self,
            sel_registerName("didLongPressHeaderView:"))));
    send<"setIsExpanded:", void>(self, fields.isExpanded);
}

id initWithReuseIdentifier(const id& allocated, SEL, const id& identifier)
{
    id self = sendSuper<"initWithReuseIdentifier:">(classNamed<"UITableViewHeaderFooterView">(), allocated, identifier);
    send<"initialize", void>(self);
    return self;
}

void awakeFromNib(const id& self, SEL)
{
    send<"initialize", void>(self);
}

void setIsExpanded(const id& self, SEL, bool expanded)
{
    ExpandableHeaderFields& fields = fieldsIn(self);
    fields.isExpanded = expanded;
    ask<"setImage:", void>(fields.chevronImageView, expanded ? fields.chevronUp : fields.chevronDown);
}

void didTap(const id& self, SEL, const id&)
{
    send<"setIsExpanded:", void>(self, !fieldsIn(self).isExpanded);
    send<"expandableSectionHeaderViewDidChange:", void>(fieldsIn(self).delegate.get(), self);
}

void didLongPress(const id& self, SEL, const id& recognizer)
{
    if (UIGestureRecognizer(recognizer).state() == UIGestureRecognizerState::Began)
        ask<"expandableSectionHeaderViewDidLongPress:", void>(fieldsIn(self).delegate.get(), self);
}

void layoutSubviews(const id& self, SEL)
{
    sendSuper<"layoutSubviews", void>(classNamed<"UITableViewHeaderFooterView">(), self);
    colorHeader(fieldsIn(self).titleLabel, fieldsIn(self).chevronImageView);
}

using Fields = ExpandableHeaderFields;
constexpr MethodDefinition methods[] {
    method<"awakeFromNib", &awakeFromNib>(),
    getter<"chevronDown", &Fields::chevronDown>(),
    getter<"chevronImageView", &Fields::chevronImageView>(),
    getter<"chevronUp", &Fields::chevronUp>(),
    getter<"delegate", &Fields::delegate>(),
    method<"didLongPressHeaderView:", &didLongPress>(),
    method<"didTapHeaderView:", &didTap>(),
    classMethod<"headerHeight", &headerHeight>(),
    method<"initWithReuseIdentifier:", &initWithReuseIdentifier>(),
    method<"initialize", &initialize>(),
    getter<"isExpanded", &Fields::isExpanded>(),
    method<"layoutSubviews", &layoutSubviews>(),
    classMethod<"reuseIdentifier", &reuseIdentifier>(),
    getter<"section", &Fields::section>(),
    setter<"setDelegate:", &Fields::delegate>(),
    method<"setIsExpanded:", &setIsExpanded>(),
    setter<"setSection:", &Fields::section>(),
    getter<"titleLabel", &Fields::titleLabel>(),
};

} // namespace

const ClassDefinition ALExpandableSectionHeaderView_class {
    .name = "ALExpandableSectionHeaderView", .superclassName = "UITableViewHeaderFooterView", .methods = methods
};

} // namespace appledger
