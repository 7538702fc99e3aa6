#include "platform/uikit/table_cell.h"

#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/graphics/objects.h"
#include "platform/runtime/message.h"
#include "platform/uikit/shades.h"

#include <cmath>

namespace platform {

namespace {

constexpr double textSize = 17;
constexpr double subtitleSize = 12;
constexpr double value2Size = 15;
constexpr double value2Width = 91; ///< of the text before the value
constexpr double imageGap = 16;
constexpr double lineGap = 2;
constexpr double cornerRadius = 10;
constexpr double fadeDuration = 0.3;

double hairline()
{
    return 1 / screenFacts().scale;
}

id shown(const Ref<ViewObject>& label)
{
    return label ? send<"text">(id(label)) : nil;
}

CGSize fitting(const Ref<ViewObject>& view, double width)
{
    return view ? send<"sizeThatFits:", CGSize>(id(view), CGSize { width, 0 }) : CGSize {};
}

/// What the system draws at the right of a row.
class AccessoryObject final : public ViewObject {
public:
    CellAccessory type = CellAccessory::None;

    AccessoryObject() { userInteractionEnabled = false; }

    static CGSize sizeOf(CellAccessory type)
    {
        switch (type) {
        case CellAccessory::None:
            return {};
        case CellAccessory::Disclosure:
            return { 8, 14 };
        case CellAccessory::DetailDisclosure:
            return { 22 + 12 + 8, 22 };
        case CellAccessory::Checkmark:
            return { 15, 14 };
        case CellAccessory::Detail:
            return { 22, 22 };
        }
        return {};
    }

    void drawContent(Canvas& canvas, const CGRect& seen) const override
    {
        const double middle = CGRectGetMidY(seen);
        if (type == CellAccessory::Disclosure || type == CellAccessory::DetailDisclosure)
            drawLines(canvas,
                { { CGRectGetMaxX(seen) - 7, middle - 5.5 }, { CGRectGetMaxX(seen) - 1.5, middle },
                    { CGRectGetMaxX(seen) - 7, middle + 5.5 } },
                shade::tertiaryLabel.color());
        if (type == CellAccessory::Checkmark)
            drawLines(canvas,
                { { seen.origin.x + 1, middle + 0.5 }, { seen.origin.x + 5.5, middle + 5.5 },
                    { CGRectGetMaxX(seen) - 1, middle - 6 } },
                effectiveTint());
        if (type == CellAccessory::Detail || type == CellAccessory::DetailDisclosure) {
            const CGRect ring = CGRectInset(CGRectMake(seen.origin.x, seen.origin.y, 22, 22), 1, 1);
            Path circle;
            circle.addEllipse(ring);
            canvas.stroke(circle, effectiveTint(), 1.5);
            Path dot;
            dot.addEllipse(CGRectMake(CGRectGetMidX(ring) - 1.1, ring.origin.y + 4.2, 2.2, 2.2));
            canvas.fill(dot, effectiveTint());
            canvas.fill(Path::roundedRect(CGRectMake(CGRectGetMidX(ring) - 0.75, ring.origin.y + 8.2, 1.5, 7.4), 0.75),
                effectiveTint());
        }
    }

private:
    static void drawLines(Canvas& canvas, std::initializer_list<CGPoint> points, const Color& color)
    {
        Path path;
        for (const CGPoint& point : points)
            path.elements().empty() ? path.moveTo(point) : path.lineTo(point);
        canvas.stroke(path, color, 2);
    }
};

/// Lies over the row's own colour and under what stands in it.
class PressedObject final : public ViewObject {
public:
    PressedObject() { userInteractionEnabled = false; }
    void drawContent(Canvas& canvas, const CGRect& seen) const override
    {
        canvas.fill(Path::roundedRect(seen, 0), shade::pressedCell.color());
    }
};

/// Holds what stands in a row, and has the row place its own labels anew when their texts change.
class CellContentObject final : public ViewObject {
public:
    static const ClassDefinition definition;

    void layoutSubviews()
    {
        if (auto* const cell = dynamic_cast<TableCellObject*>(superview))
            cell->placeLabels();
    }
    bool constrainsSubview(const ViewObject& view) const noexcept override
    {
        const auto* const cell = dynamic_cast<const TableCellObject*>(superview);
        return !cell || !cell->isOwnPart(view);
    }
};

constexpr MethodDefinition contentMethods[] { method<"layoutSubviews", &CellContentObject::layoutSubviews>() };
const ClassDefinition CellContentObject::definition { .name = "UITableViewCellContentView",
    .superclass = &ViewObject::definition,
    .allocate = allocate<CellContentObject>,
    .methods = contentMethods };

} // namespace

id TableCellObject::initWithStyle(NSInteger style, const id& identifier)
{
    style_ = static_cast<CellStyle>(style);
    reuseIdentifier = identifier;
    constexpr double standardWidth = 320;
    constexpr double standardHeight = 44;
    return send<"initWithFrame:">(id(this), CGRectMake(0, 0, standardWidth, standardHeight));
}

id TableCellObject::contentView()
{
    if (!contentView_) {
        contentView_ = make<CellContentObject>();
        contentView_->setFrame({ {}, bounds.size });
        insertSubview(contentView_, subviews.size());
    }
    return id(contentView_);
}

Ref<ViewObject> TableCellObject::makeLabel(double fontSize)
{
    const id label = send<"new">(id(classNamed<"UILabel">()));
    send<"setFont:", void>(label, fontObject({ .size = fontSize }));
    send<"setTextColor:", void>(label, send<"labelColor">(id(classNamed<"UIColor">())));
    send<"addSubview:", void>(contentView(), label);
    return Ref<ViewObject>(asViewObject(label));
}

id TableCellObject::textLabel()
{
    if (!text_) {
        text_ = makeLabel(style_ == CellStyle::Value2 ? value2Size : textSize);
        if (style_ == CellStyle::Value2) {
            constexpr NSInteger right = 2;
            send<"setTextAlignment:", void>(id(text_), right);
            send<"setTextColor:", void>(id(text_), colorObject(effectiveTint()));
        }
    }
    return id(text_);
}

/// Nil in the style that has none.
id TableCellObject::detailTextLabel()
{
    if (!detail_ && style_ != CellStyle::Default) {
        detail_ = makeLabel(style_ == CellStyle::Subtitle ? subtitleSize
                : style_ == CellStyle::Value2             ? value2Size
                                                          : textSize);
        if (style_ == CellStyle::Value1)
            send<"setTextColor:", void>(id(detail_), send<"secondaryLabelColor">(id(classNamed<"UIColor">())));
    }
    return id(detail_);
}

/// Nil in the style that has none.
id TableCellObject::imageView()
{
    if (!image_ && style_ != CellStyle::Value2) {
        image_ = Ref<ViewObject>(asViewObject(send<"new">(id(classNamed<"UIImageView">()))));
        send<"addSubview:", void>(contentView(), id(image_));
    }
    return id(image_);
}

void TableCellObject::setAccessoryType(NSInteger type)
{
    if (std::exchange(accessoryType_, static_cast<CellAccessory>(type)) == static_cast<CellAccessory>(type))
        return;
    if (accessory_)
        accessory_->removeFromSuperview();
    accessory_ = nullptr;
    if (accessoryType_ != CellAccessory::None) {
        const Ref<AccessoryObject> accessory = make<AccessoryObject>();
        accessory->type = accessoryType_;
        accessory_ = accessory;
        insertSubview(accessory_, subviews.size());
    }
    setNeedsLayout();
}

void TableCellObject::setAccessoryView(const id& view)
{
    if (accessoryView_)
        accessoryView_->removeFromSuperview();
    accessoryView_ = Ref<ViewObject>(asViewObject(view));
    insertSubview(accessoryView_, subviews.size());
    setNeedsLayout();
}

void TableCellObject::setBackgroundView(const id& view)
{
    if (backgroundView_)
        backgroundView_->removeFromSuperview();
    backgroundView_ = Ref<ViewObject>(asViewObject(view));
    insertSubview(backgroundView_, 0);
    setNeedsLayout();
}

void TableCellObject::setSelectedBackgroundView(const id& view)
{
    if (selectedBackgroundView_)
        selectedBackgroundView_->removeFromSuperview();
    selectedBackgroundView_ = Ref<ViewObject>(asViewObject(view));
    showPressed(false);
}

UIEdgeInsets TableCellObject::separatorInset() const
{
    if (hasSeparatorInset_)
        return separatorInset_;
    const bool hasImage = image_ && as<ImageObject>(send<"image">(id(image_)));
    return { 0, tableMargin + (hasImage ? image_->bounds.size.width + imageGap : 0), 0, 0 };
}

void TableCellObject::setSeparatorInset(UIEdgeInsets inset)
{
    hasSeparatorInset_ = true;
    separatorInset_ = inset;
    changed(*this, Asks::Drawing);
}

void TableCellObject::setSelected(bool selected, bool animated)
{
    if (std::exchange(selected_, selected) != selected)
        showPressed(animated);
}

void TableCellObject::setHighlighted(bool highlighted, bool animated)
{
    if (std::exchange(highlighted_, highlighted) != highlighted)
        showPressed(animated);
}

/// A colour that comes at once under the finger and may go slowly.
void TableCellObject::showPressed(bool animated)
{
    const bool pressed = (selected_ || highlighted_) && selectionStyle != CellSelectionStyle::None;
    if (pressed && !pressed_) {
        pressed_ = selectedBackgroundView_ ? selectedBackgroundView_ : Ref<ViewObject>(make<PressedObject>());
        place(*pressed_, { {}, bounds.size });
        insertSubview(pressed_, backgroundView_ ? 1 : 0);
    }
    if (!pressed_)
        return;
    if (pressed) {
        pressed_->setAlpha(1);
        return;
    }
    const Ref<ViewObject> gone = std::exchange(pressed_, nullptr);
    if (!animated || !window()) {
        gone->removeFromSuperview();
        return;
    }
    send<"animateWithDuration:animations:completion:", void>(id(classNamed<"UIView">()), fadeDuration,
        block([gone] { gone->setAlpha(0); }), block([gone, self = Ref<TableCellObject>(this)](bool) {
            if (self->pressed_ != gone)
                gone->removeFromSuperview();
        }));
}

void TableCellObject::prepareForReuse()
{
    const id self(this);
    send<"setHighlighted:animated:", void>(self, false, false);
    send<"setSelected:animated:", void>(self, false, false);
}

void TableCellObject::setPlace(const CellPlace& place)
{
    if (std::exchange(place_, place) == place)
        return;
    if (place_.style == TableStyle::InsetGrouped) {
        layer().maskedCorners = (place_.isFirst ? NSUInteger { TopLeft } | TopRight : 0U)
            | (place_.isLast ? NSUInteger { BottomLeft } | BottomRight : 0U);
        layer().cornerCurve = string("continuous");
        layer().setCornerRadius(cornerRadius);
        layer().masksToBounds = true;
    }
    changed(*this, Asks::Layout);
}

bool TableCellObject::constrainsSubview(const ViewObject& view) const noexcept
{
    return &view != accessoryView_.get();
}

CGSize TableCellObject::sizeThatFits(CGSize size) const
{
    constexpr double least = 44;
    constexpr double padding = 11;
    const double text = fitting(text_, unlimitedWidth).height;
    const double detail = style_ == CellStyle::Subtitle ? fitting(detail_, unlimitedWidth).height : 0;
    return { size.width, std::max(least, std::ceil(text + detail + 2 * padding)) };
}

double TableCellObject::accessoryWidth() const
{
    if (accessoryView_)
        return accessoryView_->frame().size.width;
    return accessory_ ? AccessoryObject::sizeOf(accessoryType_).width : 0;
}

void TableCellObject::layoutSubviews()
{
    const double line = place_.hasSeparator ? hairline() : 0;
    const double accessory = accessoryWidth();
    const double right = accessory > 0 ? accessory + tableMargin + 8 : 0;
    CGRect content { {}, { std::max(bounds.size.width - right, 0.0), std::max(bounds.size.height - line, 0.0) } };
    place(*asViewObject(contentView()), content);
    for (const Ref<ViewObject>& view : { backgroundView_, pressed_ })
        if (view)
            place(*view, { {}, bounds.size });
    const auto toRight = [&](ViewObject& view, CGSize size) {
        place(view,
            CGRectMake(bounds.size.width - tableMargin - size.width,
                std::floor((content.size.height - size.height) / 2), size.width, size.height));
    };
    if (accessoryView_) {
        toRight(*accessoryView_, accessoryView_->frame().size);
        if (accessory_)
            accessory_->removeFromSuperview();
    } else if (accessory_) {
        insertSubview(accessory_, subviews.size());
        toRight(*accessory_, AccessoryObject::sizeOf(accessoryType_));
    }
    contentView_->setNeedsLayout();
}

bool TableCellObject::isOwnPart(const ViewObject& view) const noexcept
{
    return &view == text_.get() || &view == detail_.get() || &view == image_.get();
}

void TableCellObject::placeLabels()
{
    CGRect content { {}, contentView_->bounds.size };
    content.size.width -= accessoryWidth() > 0 ? 0 : tableMargin;
    double left = tableMargin + static_cast<double>(indentationLevel) * indentationWidth;
    if (const auto* const image = image_ ? as<ImageObject>(send<"image">(id(image_))) : nullptr) {
        const double height = std::min(image->size.height, content.size.height);
        const double width = image->size.height > 0 ? image->size.width * height / image->size.height : 0;
        place(*image_, CGRectMake(left, std::floor((content.size.height - height) / 2), width, height));
        left += width + imageGap;
    }
    const double room = std::max(CGRectGetMaxX(content) - left, 0.0);
    const auto line = [&](const Ref<ViewObject>& label, double x, double y, double width, double height) {
        if (label)
            place(*label, CGRectMake(x, y, std::max(width, 0.0), height));
    };
    const double textHeight = shown(text_) ? fitting(text_, room).height : 0;
    const double detailHeight = shown(detail_) ? fitting(detail_, room).height : 0;
    switch (style_) {
    case CellStyle::Default:
        return line(text_, left, 0, room, content.size.height);
    case CellStyle::Subtitle: {
        const double gap = textHeight > 0 && detailHeight > 0 ? lineGap : 0;
        const double top = std::floor((content.size.height - textHeight - gap - detailHeight) / 2);
        line(text_, left, top, room, textHeight);
        return line(detail_, left, top + textHeight + gap, room, detailHeight);
    }
    case CellStyle::Value1: {
        constexpr double gap = 6;
        const double detail = shown(detail_) ? std::min(fitting(detail_, unlimitedWidth).width, room) : 0;
        const double text = shown(text_) ? std::min(fitting(text_, unlimitedWidth).width, room) : 0;
        const double forDetail = std::min(detail, std::max(room - text - gap, room / 3));
        line(text_, left, 0, room - forDetail - (forDetail > 0 ? gap : 0), content.size.height);
        return line(detail_, left + room - forDetail, 0, forDetail, content.size.height);
    }
    case CellStyle::Value2: {
        constexpr double gap = 6;
        line(text_, left, 0, value2Width, content.size.height);
        return line(detail_, left + value2Width + gap, 0, room - value2Width - gap, content.size.height);
    }
    }
}

void TableCellObject::drawContent(Canvas& canvas, const CGRect& seen) const
{
    if (!backgroundColor && !backgroundView_) {
        const Shade& shade = place_.style == TableStyle::Plain ? shade::background : shade::groupedCell;
        canvas.fill(Path::roundedRect(seen, 0), shade.color());
    }
    if (!place_.hasSeparator)
        return;
    const UIEdgeInsets inset = separatorInset();
    canvas.fill(Path::roundedRect(CGRectMake(seen.origin.x + inset.left, CGRectGetMaxY(seen) - hairline(),
                                      seen.size.width - inset.left - inset.right, hairline()),
                    0),
        asColor(place_.separatorColor).value_or(shade::separator.color()));
}

namespace {

id initWithFrame(const id& self, SEL, CGRect frame)
{
    id cell = sendSuper<"initWithFrame:">(classNamed<"UIView">(), self, frame);
    static_cast<TableCellObject&>(*cell).contentView();
    return cell;
}

void setSelected(const id& self, SEL, bool selected)
{
    send<"setSelected:animated:", void>(self, selected, false);
}

void setHighlighted(const id& self, SEL, bool highlighted)
{
    send<"setHighlighted:animated:", void>(self, highlighted, false);
}

using Cell = TableCellObject;
constexpr MethodDefinition methods[] {
    method<"accessoryType", &Cell::accessoryType>(),
    method<"accessoryView", &Cell::accessoryView>(),
    method<"backgroundView", &Cell::backgroundView>(),
    method<"contentView", &Cell::contentView>(),
    method<"detailTextLabel", &Cell::detailTextLabel>(),
    method<"imageView", &Cell::imageView>(),
    getter<"indentationLevel", &Cell::indentationLevel>(),
    getter<"indentationWidth", &Cell::indentationWidth>(),
    method<"initWithFrame:", &initWithFrame>(),
    method<"initWithStyle:reuseIdentifier:", &Cell::initWithStyle>(),
    method<"isHighlighted", &Cell::isHighlighted>(),
    method<"isSelected", &Cell::isSelected>(),
    method<"layoutSubviews", &Cell::layoutSubviews>(),
    method<"prepareForReuse", &Cell::prepareForReuse>(),
    getter<"reuseIdentifier", &Cell::reuseIdentifier>(),
    method<"selectedBackgroundView", &Cell::selectedBackgroundView>(),
    getter<"selectionStyle", &Cell::selectionStyle>(),
    method<"separatorInset", &Cell::separatorInset>(),
    method<"setAccessoryType:", &Cell::setAccessoryType>(),
    method<"setAccessoryView:", &Cell::setAccessoryView>(),
    method<"setBackgroundView:", &Cell::setBackgroundView>(),
    method<"setHighlighted:", &setHighlighted>(),
    method<"setHighlighted:animated:", &Cell::setHighlighted>(),
    setterThatAsks<"setIndentationLevel:", &Cell::indentationLevel, Asks::Layout>(),
    setterThatAsks<"setIndentationWidth:", &Cell::indentationWidth, Asks::Layout>(),
    method<"setSelected:", &setSelected>(),
    method<"setSelected:animated:", &Cell::setSelected>(),
    method<"setSelectedBackgroundView:", &Cell::setSelectedBackgroundView>(),
    setter<"setSelectionStyle:", &Cell::selectionStyle>(),
    method<"setSeparatorInset:", &Cell::setSeparatorInset>(),
    method<"textLabel", &Cell::textLabel>(),
};

} // namespace

const ClassDefinition TableCellObject::definition { .name = "UITableViewCell",
    .superclass = &ViewObject::definition,
    .allocate = allocate<TableCellObject>,
    .methods = methods };

} // namespace platform
