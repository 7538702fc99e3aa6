#include "platform/handles/UIButton.h"
#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/uikit/control.h"
#include "platform/uikit/shades.h"

#include <cmath>
#include <map>

namespace platform {

namespace {

using ButtonType = UIButtonType;

enum class ButtonPart { Title, TitleColor, TitleShadowColor, Image, BackgroundImage };

/// How contents stand in their room, by the system's numbers.
enum class Vertically : long { Center = 0, Top = 1, Bottom = 2, Fill = 3 };
enum class Horizontally : long { Center = 0, Left = 1, Right = 2, Fill = 3, Leading = 4, Trailing = 5 };

constexpr double fontSize = 15;
constexpr double systemInset = 6; ///< above and below the contents of a system button
constexpr double leastSide = 30;
constexpr double symbolSide = 22; ///< of the buttons that are a sign in a ring

/// The sign of a button that has a type for it: a ring, and in it an i or a plus.
id signImage(ButtonType type)
{
    const auto recording = Canvas::makeRecording({ symbolSide, symbolSide });
    Canvas canvas(recording);
    constexpr double middle = symbolSide / 2;
    constexpr double line = 1.5;
    Path ring;
    ring.addEllipse(CGRectMake(1, 1, symbolSide - 2, symbolSide - 2));
    canvas.stroke(ring, Color {}, line);
    if (type == ButtonType::ContactAdd) {
        canvas.fill(Path::roundedRect(CGRectMake(middle - 5, middle - line / 2, 10, line), line / 2), Color {});
        canvas.fill(Path::roundedRect(CGRectMake(middle - line / 2, middle - 5, line, 10), line / 2), Color {});
    } else {
        Path dot;
        dot.addEllipse(CGRectMake(middle - 1.1, 5.2, 2.2, 2.2));
        canvas.fill(dot, Color {});
        canvas.fill(Path::roundedRect(CGRectMake(middle - line / 2, 9.2, line, 7.4), line / 2), Color {});
    }
    const id image = imageObject(recording, { symbolSide, symbolSide }, 1);
    as<ImageObject>(image)->renderingMode = RenderingMode::Template;
    return image;
}

/// A title and an image beside each other, with a value of each for each state.
class ButtonObject : public ControlObject {
public:
    UIEdgeInsets contentEdgeInsets {};
    UIEdgeInsets titleEdgeInsets {};
    UIEdgeInsets imageEdgeInsets {};
    bool adjustsImageWhenHighlighted = true;
    bool adjustsImageWhenDisabled = true;
    Vertically contentVerticalAlignment = Vertically::Center;
    Horizontally contentHorizontalAlignment = Horizontally::Center;

    NSInteger buttonType() const { return static_cast<NSInteger>(type_); }
    void setButtonType(ButtonType type)
    {
        type_ = type;
        if (type_ > ButtonType::System)
            set<ButtonPart::Image>(signImage(type_), Normal);
    }

    template <ButtonPart Part> void set(const id& value, NSUInteger state)
    {
        id& present = values_[{ Part, state }];
        if (isEqual(present, value))
            return;
        present = value;
        show();
        send<"invalidateIntrinsicContentSize", void>(id(this));
    }
    template <ButtonPart Part> id forState(NSUInteger state) const { return exactly(Part, state); }
    template <ButtonPart Part> id current() const { return of(Part); }

    id titleLabel()
    {
        if (!label_) {
            const id label = send<"new">(id(classNamed<"UILabel">()));
            send<"setFont:", void>(label, fontObject({ .size = fontSize }));
            constexpr NSInteger truncatingMiddle = 5;
            send<"setLineBreakMode:", void>(label, truncatingMiddle);
            label_ = Ref<ViewObject>(asViewObject(label));
            send<"addSubview:", void>(id(this), label);
        }
        return label_;
    }

    id imageView()
    {
        if (!image_) {
            image_ = Ref<ViewObject>(asViewObject(send<"new">(id(classNamed<"UIImageView">()))));
            constexpr long center = 4;
            image_->contentMode = center;
            insertSubview(image_, backdrop_ ? 1 : 0);
        }
        return image_;
    }

    CGSize sizeThatFits(CGSize) const override
    {
        const CGSize image = imageSize();
        const CGSize title = titleSize();
        const UIEdgeInsets insets = contentEdgeInsets;
        double width = image.width + title.width;
        double height = std::max(image.height, title.height);
        if (type_ == ButtonType::System && insets == UIEdgeInsetsZero) {
            width = std::max(width, leastSide);
            height += title.height > 0 ? 2 * systemInset : 0;
        }
        return { width + insets.left + insets.right, height + insets.top + insets.bottom };
    }
    CGSize intrinsicContentSize() const override { return sizeThatFits({}); }
    bool constrainsSubview(const ViewObject& view) const noexcept override
    {
        return &view != label_.get() && &view != image_.get() && &view != backdrop_.get();
    }

    CGRect contentRect() const { return UIEdgeInsetsInsetRect(bounds, contentEdgeInsets); }

    CGRect imageRect(CGRect content) const
    {
        const CGSize image = imageSize();
        const CGSize fitting { std::min(image.width, content.size.width), std::min(image.height, content.size.height) };
        const double title = std::min(titleSize().width, content.size.width - fitting.width);
        return moved(placed(content, fitting, fitting.width + title, 0), imageEdgeInsets);
    }

    CGRect titleRect(CGRect content) const
    {
        const double image = std::min(imageSize().width, content.size.width);
        CGSize title = titleSize();
        title.width = std::max(0.0, std::min(title.width, content.size.width - image));
        title.height = std::min(title.height, content.size.height);
        return moved(placed(content, title, image + title.width, image), titleEdgeInsets);
    }

    void layoutSubviews()
    {
        const id self(this);
        const auto content = send<"contentRectForBounds:", CGRect>(self, bounds);
        if (backdrop_)
            place(*backdrop_, bounds);
        if (image_)
            place(*image_, send<"imageRectForContentRect:", CGRect>(self, content));
        if (label_)
            place(*label_, send<"titleRectForContentRect:", CGRect>(self, content));
    }

    void tintChanged() { show(); }

protected:
    NSUInteger eventsOfTap() const override { return PrimaryActionTriggered; }

    void stateChanged() override
    {
        const double former = std::exchange(formerDimming_, dimming());
        show();
        if (type_ == ButtonType::Custom)
            return;
        // A system button is dim at once under the finger, and brightens slowly when it is let go.
        const bool dims = dimming() < former;
        const auto fade = [this] { dim(); };
        if (dims || !window())
            fade();
        else
            send<"animateWithDuration:animations:", void>(id(classNamed<"UIView">()), 0.47, block(fade));
    }

private:
    id exactly(ButtonPart part, NSUInteger state) const
    {
        const auto found = values_.find({ part, state });
        return found == values_.end() ? nil : found->second;
    }
    /// Where the state has no value of its own, that of the normal one.
    id of(ButtonPart part) const
    {
        const id own = exactly(part, state());
        return own ? own : exactly(part, Normal);
    }

    CGSize imageSize() const
    {
        const auto* const image = as<ImageObject>(of(ButtonPart::Image));
        return image ? image->size : CGSize {};
    }
    CGSize titleSize() const
    {
        return label_ ? send<"sizeThatFits:", CGSize>(id(label_), CGSize { unlimitedWidth, 0 }) : CGSize {};
    }

    /// A part of that size in the contents, which are that wide together and have the part that far from their left.
    CGRect placed(const CGRect& content, CGSize size, double together, double before) const
    {
        double x = content.origin.x + (content.size.width - together) / 2;
        if (contentHorizontalAlignment == Horizontally::Left || contentHorizontalAlignment == Horizontally::Leading
            || contentHorizontalAlignment == Horizontally::Fill)
            x = content.origin.x;
        else if (contentHorizontalAlignment == Horizontally::Right
            || contentHorizontalAlignment == Horizontally::Trailing)
            x = CGRectGetMaxX(content) - together;
        double y = content.origin.y + (content.size.height - size.height) / 2;
        if (contentVerticalAlignment == Vertically::Top || contentVerticalAlignment == Vertically::Fill)
            y = content.origin.y;
        else if (contentVerticalAlignment == Vertically::Bottom)
            y = CGRectGetMaxY(content) - size.height;
        return CGRectMake(toPixel(x + before), toPixel(y), size.width, size.height);
    }

    static double toPixel(double value)
    {
        const double scale = screenFacts().scale;
        return std::round(value * scale) / scale;
    }

    /// Insets that push from one side move by half, as they take room on that side alone.
    static CGRect moved(const CGRect& rect, const UIEdgeInsets& insets)
    {
        return CGRectOffset(rect, (insets.left - insets.right) / 2, (insets.top - insets.bottom) / 2);
    }

    Color titleColor() const
    {
        if (const auto color = asColor(of(ButtonPart::TitleColor)))
            return *color;
        if (type_ == ButtonType::Custom)
            return { 1, 1, 1, 1 };
        return isEnabled() ? effectiveTint() : shade::tertiaryLabel.color();
    }

    /// How much of the contents is seen in this state.
    double dimming() const
    {
        if (isHighlighted() && isEnabled())
            return type_ == ButtonType::Custom ? 1 : 0.2;
        return 1;
    }

    void dim()
    {
        for (const Ref<ViewObject>& part : { label_, image_ }) {
            double alpha = dimming();
            if (part && part == image_ && type_ == ButtonType::Custom) {
                if (isHighlighted() && adjustsImageWhenHighlighted && !exactly(ButtonPart::Image, state()))
                    alpha = 0.5;
                if (!isEnabled() && adjustsImageWhenDisabled && !exactly(ButtonPart::Image, state()))
                    alpha = 0.5;
            }
            if (part)
                send<"setAlpha:", void>(id(part), alpha);
        }
    }

    /// What the state asks for, onto the views.
    void show()
    {
        if (const id title = of(ButtonPart::Title); title || label_) {
            const id label = titleLabel();
            send<"setText:", void>(label, title);
            send<"setTextColor:", void>(label, colorObject(titleColor()));
            send<"setShadowColor:", void>(label, of(ButtonPart::TitleShadowColor));
        }
        if (const id image = of(ButtonPart::Image); image || image_)
            send<"setImage:", void>(imageView(), image);
        if (const id image = of(ButtonPart::BackgroundImage); image || backdrop_) {
            if (!backdrop_) {
                backdrop_ = Ref<ViewObject>(asViewObject(send<"new">(id(classNamed<"UIImageView">()))));
                insertSubview(backdrop_, 0);
            }
            send<"setImage:", void>(id(backdrop_), image);
        }
        if (type_ == ButtonType::Custom)
            dim();
        setNeedsLayout();
    }

    ButtonType type_ = ButtonType::Custom;
    double formerDimming_ = 1; ///< in the state before
    std::map<std::pair<ButtonPart, NSUInteger>, id> values_ {};
    Ref<ViewObject> label_ {};
    Ref<ViewObject> image_ {};
    Ref<ViewObject> backdrop_ {};
};

id buttonWithType(const id& self, SEL, NSInteger type)
{
    id button = send<"new">(self);
    static_cast<ButtonObject&>(*button).setButtonType(static_cast<ButtonType>(type));
    return button;
}

CGRect contentRectForBounds(const id& self, SEL, CGRect)
{
    return static_cast<const ButtonObject&>(*self).contentRect();
}

void setTintColor(const id& self, SEL, const id& color)
{
    sendSuper<"setTintColor:", void>(classNamed<"UIControl">(), self, color);
    static_cast<ButtonObject&>(*self).tintChanged();
}

void didMoveToWindow(const id& self, SEL)
{
    static_cast<ButtonObject&>(*self).tintChanged();
}

using enum ButtonPart;
constexpr MethodDefinition methods[] {
    getter<"adjustsImageWhenDisabled", &ButtonObject::adjustsImageWhenDisabled>(),
    getter<"adjustsImageWhenHighlighted", &ButtonObject::adjustsImageWhenHighlighted>(),
    method<"backgroundImageForState:", &ButtonObject::forState<BackgroundImage>>(),
    method<"buttonType", &ButtonObject::buttonType>(),
    classMethod<"buttonWithType:", &buttonWithType>(),
    getter<"contentEdgeInsets", &ButtonObject::contentEdgeInsets>(),
    getter<"contentHorizontalAlignment", &ButtonObject::contentHorizontalAlignment>(),
    method<"contentRectForBounds:", &contentRectForBounds>(),
    getter<"contentVerticalAlignment", &ButtonObject::contentVerticalAlignment>(),
    method<"currentBackgroundImage", &ButtonObject::current<BackgroundImage>>(),
    method<"currentImage", &ButtonObject::current<Image>>(),
    method<"currentTitle", &ButtonObject::current<Title>>(),
    method<"currentTitleColor", &ButtonObject::current<TitleColor>>(),
    method<"didMoveToWindow", &didMoveToWindow>(),
    getter<"imageEdgeInsets", &ButtonObject::imageEdgeInsets>(),
    method<"imageForState:", &ButtonObject::forState<Image>>(),
    method<"imageRectForContentRect:", &ButtonObject::imageRect>(),
    method<"imageView", &ButtonObject::imageView>(),
    method<"layoutSubviews", &ButtonObject::layoutSubviews>(),
    setter<"setAdjustsImageWhenDisabled:", &ButtonObject::adjustsImageWhenDisabled>(),
    setter<"setAdjustsImageWhenHighlighted:", &ButtonObject::adjustsImageWhenHighlighted>(),
    method<"setBackgroundImage:forState:", &ButtonObject::set<BackgroundImage>>(),
    setterThatAsks<"setContentEdgeInsets:", &ButtonObject::contentEdgeInsets, Asks::Size>(),
    setterThatAsks<"setContentHorizontalAlignment:", &ButtonObject::contentHorizontalAlignment, Asks::Layout>(),
    setterThatAsks<"setContentVerticalAlignment:", &ButtonObject::contentVerticalAlignment, Asks::Layout>(),
    method<"setImage:forState:", &ButtonObject::set<Image>>(),
    setterThatAsks<"setImageEdgeInsets:", &ButtonObject::imageEdgeInsets, Asks::Layout>(),
    method<"setTintColor:", &setTintColor>(),
    method<"setTitle:forState:", &ButtonObject::set<Title>>(),
    method<"setTitleColor:forState:", &ButtonObject::set<TitleColor>>(),
    setterThatAsks<"setTitleEdgeInsets:", &ButtonObject::titleEdgeInsets, Asks::Layout>(),
    method<"setTitleShadowColor:forState:", &ButtonObject::set<TitleShadowColor>>(),
    method<"titleColorForState:", &ButtonObject::forState<TitleColor>>(),
    getter<"titleEdgeInsets", &ButtonObject::titleEdgeInsets>(),
    method<"titleForState:", &ButtonObject::forState<Title>>(),
    method<"titleLabel", &ButtonObject::titleLabel>(),
    method<"titleRectForContentRect:", &ButtonObject::titleRect>(),
    method<"titleShadowColorForState:", &ButtonObject::forState<TitleShadowColor>>(),
};

} // namespace

const ClassDefinition UIButton_class {
    .name = "UIButton", .superclass = &ControlObject::definition, .allocate = allocate<ButtonObject>, .methods = methods
};

} // namespace platform
