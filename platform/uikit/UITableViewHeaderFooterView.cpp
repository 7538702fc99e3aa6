#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/uikit/shades.h"
#include "platform/uikit/table_cell.h"

#include <cmath>

namespace platform {

namespace {

constexpr double groupedTextSize = 13;
constexpr double plainTextSize = 17;
constexpr int semibold = 600;
id upperCase(const id& title)
{
    const auto text = asString(title);
    return text ? string(upperCaseText(*text)) : nil;
}

constexpr double groupedGap = 7; ///< between a title and the rows of its section

} // namespace

id TableSectionViewObject::initWithReuseIdentifier(const id& identifier)
{
    reuseIdentifier = identifier;
    return send<"initWithFrame:">(id(this), CGRectZero);
}

id TableSectionViewObject::contentView()
{
    if (!contentView_) {
        contentView_ = make<ViewObject>();
        contentView_->setFrame({ {}, bounds.size });
        insertSubview(contentView_, subviews.size());
    }
    return id(contentView_);
}

id TableSectionViewObject::textLabel()
{
    if (!text_) {
        text_ = Ref<ViewObject>(asViewObject(send<"new">(id(classNamed<"UILabel">()))));
        send<"addSubview:", void>(contentView(), id(text_));
    }
    return id(text_);
}

id TableSectionViewObject::detailTextLabel()
{
    if (!detail_) {
        detail_ = Ref<ViewObject>(asViewObject(send<"new">(id(classNamed<"UILabel">()))));
        send<"addSubview:", void>(contentView(), id(detail_));
    }
    return id(detail_);
}

void TableSectionViewObject::setBackgroundView(const id& view)
{
    if (backgroundView_)
        backgroundView_->removeFromSuperview();
    backgroundView_ = Ref<ViewObject>(asViewObject(view));
    insertSubview(backgroundView_, 0);
    setNeedsLayout();
}

void TableSectionViewObject::setPlace(TableStyle style, bool isFooter)
{
    style_ = style;
    isFooter_ = isFooter;
}

void TableSectionViewObject::setTitle(const id& title)
{
    if (!title && !text_)
        return;
    const id label = textLabel();
    const bool isPlain = style_ == TableStyle::Plain;
    send<"setText:", void>(label, isPlain || isFooter_ ? title : upperCase(title));
    send<"setFont:", void>(label,
        fontObject(
            { .size = isPlain ? plainTextSize : groupedTextSize, .weight = isPlain && !isFooter_ ? semibold : 400 }));
    send<"setNumberOfLines:", void>(label, isPlain ? NSInteger { 1 } : NSInteger { 0 });
    send<"setTextColor:", void>(label, colorObject((isPlain ? shade::label : shade::secondaryLabel).color()));
    setNeedsLayout();
}

CGSize TableSectionViewObject::sizeThatFits(CGSize size) const
{
    if (!text_)
        return { size.width, 0 };
    const double room = size.width - 2 * tableMargin;
    const double text = send<"sizeThatFits:", CGSize>(id(text_), CGSize { room, 0 }).height;
    return { size.width, text > 0 ? std::ceil(text) + 2 * groupedGap : 0 };
}

void TableSectionViewObject::layoutSubviews()
{
    place(*asViewObject(contentView()), { {}, bounds.size });
    if (backgroundView_)
        place(*backgroundView_, { {}, bounds.size });
    if (!text_)
        return;
    const double room = std::max(bounds.size.width - 2 * tableMargin, 0.0);
    const double height
        = std::min(std::ceil(send<"sizeThatFits:", CGSize>(id(text_), CGSize { room, 0 }).height), bounds.size.height);
    // A title of a group stands near its rows.
    double top = std::floor((bounds.size.height - height) / 2);
    if (style_ != TableStyle::Plain)
        top = isFooter_ ? std::min(groupedGap, bounds.size.height - height)
                        : std::max(bounds.size.height - height - groupedGap, 0.0);
    place(*text_, CGRectMake(tableMargin, top, room, height));
}

void TableSectionViewObject::drawContent(Canvas& canvas, const CGRect& seen) const
{
    if (style_ == TableStyle::Plain && !backgroundColor && !backgroundView_)
        canvas.fill(Path::roundedRect(seen, 0), shade::stickyHeader.color());
}

namespace {

using View = TableSectionViewObject;
constexpr MethodDefinition methods[] {
    method<"backgroundView", &View::backgroundView>(),
    method<"contentView", &View::contentView>(),
    method<"detailTextLabel", &View::detailTextLabel>(),
    method<"initWithReuseIdentifier:", &View::initWithReuseIdentifier>(),
    method<"layoutSubviews", &View::layoutSubviews>(),
    method<"prepareForReuse", &View::prepareForReuse>(),
    getter<"reuseIdentifier", &View::reuseIdentifier>(),
    method<"setBackgroundView:", &View::setBackgroundView>(),
    method<"textLabel", &View::textLabel>(),
};

} // namespace

const ClassDefinition TableSectionViewObject::definition { .name = "UITableViewHeaderFooterView",
    .superclass = &ViewObject::definition,
    .allocate = allocate<TableSectionViewObject>,
    .methods = methods };

} // namespace platform
