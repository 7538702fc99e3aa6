#include "core/resources.h"
#include "panel/section_header_parts.h"
#include "panel/section_header_views.h"
#include "platform/handles/UITapGestureRecognizer.h"
#include "platform/runtime/weak.h"

namespace appledger {

using namespace platform;

namespace {

constexpr CGFloat fontSize = 13;
constexpr CGSize backSize { 10, 18 };

/// How the header stands, as a section's title or as a list's.
struct Look {
    bool showsBack;
    NSTextAlignment alignment;
    CGFloat top;
    CGFloat height;
};

constexpr Look plain { false, NSTextAlignment::Natural, 1.33, 18 };
constexpr Look withBack { true, NSTextAlignment::Center, 0, 35 };

struct TitleHeaderFields {
    Weak<NSObject> delegate {};
    id titleLabel {};
    id backImageView {};
    id titleLabelHeightConstraint {};
    id titleLabelTopConstraint {};
};

TitleHeaderFields& fieldsIn(const id& self)
{
    return fieldsOf<TitleHeaderFields>(self);
}

id reuseIdentifier(const id&, SEL)
{
    return string("ALTitleSectionHeaderViewIdentifier");
}

id thumbnail(const id&, SEL, CGSize size, const id& image)
{
    return makeThumbnail(size, image);
}

void initialize(const id& self, SEL)
{
    TitleHeaderFields& fields = fieldsIn(self);
    const UITableViewHeaderFooterView view(self);
    const UIView content = view.contentView();
    view.setBackgroundView(UIView::withFrame({}));

    const UILabel title = makeHeaderLabel(content, fontSize);
    title.leadingAnchor().equalTo(content.leadingAnchor(), headerMargin).setActive(true);
    title.trailingAnchor().equalTo(content.trailingAnchor(), -headerMargin).setActive(true);
    const NSLayoutConstraint top = title.topAnchor().equalTo(content.topAnchor(), plain.top);
    const NSLayoutConstraint height = title.heightAnchor().equalTo(plain.height);
    top.setActive(true);
    height.setActive(true);
    fields.titleLabel = title;
    fields.titleLabelTopConstraint = top;
    fields.titleLabelHeightConstraint = height;

    const UIImageView back = makeHeaderImageView(content, backSize);
    back.leadingAnchor().equalTo(content.leadingAnchor(), headerMargin).setActive(true);
    back.centerYAnchor().equalTo(title.centerYAnchor()).setActive(true);
    back.setImage(
        UIImage(send<"makeThumbnailOfSize:ofImage:">(self, backSize, ALHelper::imageNamed(string("ChevronDown")))));
    back.setHidden(true);
    fields.backImageView = back;
    view.addGestureRecognizer(UITapGestureRecognizer::withTarget(self, sel_registerName("didTapHeaderView:")));
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

template <const Look& Wanted> void configure(const id& self, SEL, const id& title)
{
    const TitleHeaderFields& fields = fieldsIn(self);
    const UILabel label(fields.titleLabel);
    label.setText(title);
    label.setTextAlignment(Wanted.alignment);
    UIView(fields.backImageView).setHidden(!Wanted.showsBack);
    NSLayoutConstraint(fields.titleLabelTopConstraint).setConstant(Wanted.top);
    NSLayoutConstraint(fields.titleLabelHeightConstraint).setConstant(Wanted.height);
}

void didTap(const id& self, SEL, const id&)
{
    send<"titleSectionHeaderViewDidTapBackButton", void>(fieldsIn(self).delegate.get());
}

void layoutSubviews(const id& self, SEL)
{
    sendSuper<"layoutSubviews", void>(classNamed<"UITableViewHeaderFooterView">(), self);
    colorHeader(fieldsIn(self).titleLabel, fieldsIn(self).backImageView);
}

using Fields = TitleHeaderFields;
constexpr MethodDefinition methods[] {
    method<"awakeFromNib", &awakeFromNib>(),
    getter<"backImageView", &Fields::backImageView>(),
    method<"configureBackHeaderWithTitle:", &configure<withBack>>(),
    method<"configureHeaderWithTitle:", &configure<plain>>(),
    getter<"delegate", &Fields::delegate>(),
    method<"didTapHeaderView:", &didTap>(),
    method<"initWithReuseIdentifier:", &initWithReuseIdentifier>(),
    method<"initialize", &initialize>(),
    method<"layoutSubviews", &layoutSubviews>(),
    method<"makeThumbnailOfSize:ofImage:", &thumbnail>(),
    classMethod<"reuseIdentifier", &reuseIdentifier>(),
    setter<"setDelegate:", &Fields::delegate>(),
    getter<"titleLabel", &Fields::titleLabel>(),
    getter<"titleLabelHeightConstraint", &Fields::titleLabelHeightConstraint>(),
    getter<"titleLabelTopConstraint", &Fields::titleLabelTopConstraint>(),
};

} // namespace

const ClassDefinition ALTitleSectionHeaderView_class {
    .name = "ALTitleSectionHeaderView", .superclassName = "UITableViewHeaderFooterView", .methods = methods
};

} // namespace appledger
