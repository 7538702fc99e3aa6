#include "platform/dispatch/run_loop.h"
#include "platform/foundation/values.h"
#include "platform/handles/CAGradientLayer.h"
#include "platform/handles/UIBezierPath.h"
#include "platform/handles/UIGraphicsImageRenderer.h"
#include "platform/handles/UIImageView.h"
#include "platform/handles/UILabel.h"
#include "platform/handles/UIScreen.h"
#include "platform/handles/UIStackView.h"
#include "platform/handles/UITapGestureRecognizer.h"
#include "platform/handles/UIWindow.h"
#include "platform/runtime/class_definition.h"
#include "support/view_test.h"

/// A handle's method that isn't the class's own, to the letter of its encoding, ends the test that calls it: each is
/// called once here, and what it sets is read back where it can be.

namespace {

using namespace platform;
using support::classObject;

class Handles : public support::ViewTest { };

static_assert(sizeof(UILabel) == sizeof(id));
static_assert(std::is_convertible_v<UILabel, id> && std::is_convertible_v<UILabel, UIView>);
static_assert(!std::is_convertible_v<id, UILabel> && !std::is_convertible_v<UIView, UILabel>);

TEST_F(Handles, AnIdBecomesAHandleOfItsOwnClassAlone)
{
    const UILabel label = UILabel::create();
    EXPECT_EQ(to<UILabel>(label.object()), label);
    EXPECT_EQ(asView(label.object()), label);
    for (const id& other : { id(), string("text"), UIView::create().object() })
        EXPECT_FALSE(to<UILabel>(other));
    EXPECT_FALSE(asView(string("text")));
}

TEST_F(Handles, ANilHandleAnswersNothing)
{
    const UILabel label;
    EXPECT_FALSE(label);
    EXPECT_EQ(label.bounds(), CGRect {});
    EXPECT_EQ(label.text(), nil);
    EXPECT_FALSE(label.superview());
    EXPECT_TRUE(label.subviews().empty());
    label.setText(string("text"));
    label.layer().setCornerRadius(3);
    UIView::create().addSubview(label);
}

void Shouting_setText(const id& self, SEL, const id&)
{
    sendSuper<"setText:", void>(classNamed<"UILabel">(), self, string("HOOKED"));
}
constexpr MethodDefinition shoutingMethods[] { method<"setText:", &Shouting_setText>() };
const ClassDefinition Shouting_class {
    .name = "ShoutingLabel", .superclassName = "UILabel", .methods = shoutingMethods
};

TEST_F(Handles, TheRuntimeIsAskedAtEachCall)
{
    const UILabel label(send<"new">(id(registerClass(Shouting_class))));
    label.setText(string("text"));
    EXPECT_EQ(asString(label.text())->view(), "HOOKED");
}

TEST_F(Handles, AViewsMethodsAreTheClasss)
{
    const UIWindow window = UIWindow::withFrame({ {}, UIScreen::mainScreen().bounds().size });
    EXPECT_EQ(UIScreen::mainScreen().scale(), 2);
    window.setWindowLevel(3);
    EXPECT_EQ(window.windowLevel(), 3);
    window.makeKeyAndVisible();
    const UIView view = UIView::withFrame(CGRectMake(1, 2, 30, 40));
    window.addSubview(view);
    EXPECT_EQ(view.frame(), CGRectMake(1, 2, 30, 40));
    view.setFrame(CGRectMake(0, 0, 20, 10));
    view.setBounds(CGRectMake(0, 0, 10, 10));
    view.setCenter({ 50, 60 });
    EXPECT_EQ(view.bounds(), CGRectMake(0, 0, 10, 10));
    EXPECT_EQ(view.center(), CGPointMake(50, 60));
    view.setTransform(CGAffineTransformMakeScale(2, 2));
    EXPECT_EQ(view.transform(), CGAffineTransformMakeScale(2, 2));
    view.setAlpha(0.5);
    view.setHidden(true);
    EXPECT_TRUE(view.alpha() == 0.5 && view.isHidden());
    view.setBackgroundColor(UIColor::withHue(0.5, 1, 1, 1));
    view.setTintColor(UIColor::clear());
    view.setClipsToBounds(true);
    view.setContentMode(UIViewContentMode::Center);
    view.setAutoresizingMask(UIViewAutoresizing::FlexibleWidth | UIViewAutoresizing::FlexibleHeight);
    EXPECT_EQ((send<"autoresizingMask", NSUInteger>(view)), 18U);
    view.setUserInteractionEnabled(false);
    view.setAccessibilityIdentifier(string("view"));
    EXPECT_EQ(view.safeAreaInsets(), UIEdgeInsets {});
    EXPECT_EQ(view.superview(), window);
    EXPECT_EQ(view.window(), window);
    const UIView behind = UIView::create();
    window.insertSubviewAt(behind, 0);
    EXPECT_EQ(window.subviews(), (std::vector { behind, view }));
    window.bringSubviewToFront(behind);
    EXPECT_EQ(window.subviews().back(), behind);
    behind.removeFromSuperview();
    const auto tap = UITapGestureRecognizer::withTarget(view, sel_registerName("setNeedsLayout"));
    tap.setNumberOfTapsRequired(2);
    tap.setEnabled(true);
    tap.setDelegate(nil);
    tap.requireGestureRecognizerToFail(UITapGestureRecognizer::withTarget(nil, nullptr));
    view.addGestureRecognizer(tap);
    EXPECT_EQ(tap.view(), view);
    EXPECT_EQ(tap.state(), UIGestureRecognizerState::Possible);
    tap.locationInView(view);
    view.setNeedsLayout();
    view.layoutIfNeeded();
    view.setNeedsDisplay();
    EXPECT_EQ(view.sizeThatFits({ 1, 1 }), CGSizeMake(10, 10));
    view.sizeToFit();
    bool finished = false;
    UIView::animate(0, [&] { view.setAlpha(1); });
    UIView::animate(0, 0, UIViewAnimationOptions::CurveLinear, [&] { view.setAlpha(0.2); });
    UIView::animate(
        0, 0, UIViewAnimationOptions::CurveEaseIn, [] {}, [](bool) {});
    UIView::animate(
        0, [] {}, [&](bool end) { finished = end; });
    UIView::performWithoutAnimation([&] { view.setAlpha(0.3); });
    runUntilIdle();
    EXPECT_TRUE(finished && view.alpha() == 0.3);
}

TEST_F(Handles, ConstraintsAreMadeFromAnchors)
{
    const UIView outer = UIView::withFrame(CGRectMake(0, 0, 100, 100));
    const UIView inner = UIView::create();
    inner.setTranslatesAutoresizingMaskIntoConstraints(false);
    outer.addSubview(inner);
    const NSLayoutConstraint left = inner.leadingAnchor().equalTo(outer.leadingAnchor(), 5);
    for (const NSLayoutConstraint& constraint :
        { left, inner.topAnchor().atLeast(outer.topAnchor(), 7), inner.trailingAnchor().atMost(outer.trailingAnchor()),
            inner.widthAnchor().equalTo(20), inner.heightAnchor().equalTo(outer.heightAnchor(), -78),
            inner.bottomAnchor().atMost(outer.bottomAnchor(), -1) })
        constraint.setActive(true);
    inner.centerXAnchor().equalTo(outer.centerXAnchor());
    inner.centerYAnchor().equalTo(outer.centerYAnchor());
    outer.layoutIfNeeded();
    EXPECT_EQ(inner.frame(), CGRectMake(5, 7, 20, 22));
    left.setConstant(9);
    left.setPriority(900);
    outer.layoutIfNeeded();
    EXPECT_EQ(inner.frame().origin.x, 9);
    EXPECT_TRUE(left.isActive() && left.constant() == 9);
}

TEST_F(Handles, LabelsPicturesStacksAndLayersHaveTheirOwn)
{
    const UILabel label = UILabel::withFrame(CGRectMake(0, 0, 10, 10));
    label.setFont(UIFont::boldSystemFont(12));
    EXPECT_EQ(label.font(), label.font());
    EXPECT_FALSE(isEqual(label.font(), UIFont::systemFont(12)));
    label.setTextColor(UIColor::black());
    label.setTextAlignment(NSTextAlignment::Right);
    EXPECT_EQ((send<"textAlignment", NSInteger>(label)), 2);
    label.setNumberOfLines(2);
    label.setLineBreakMode(NSLineBreakMode::TruncatingMiddle);
    label.setAdjustsFontSizeToFitWidth(true);

    const UIImage image = UIGraphicsImageRenderer::withSize({ 8, 6 }).image([] {
        UIColor::white().setFill();
        UIColor::lightGray().setStroke();
        const auto path = UIBezierPath::path();
        path.moveToPoint({ 0, 0 });
        path.addLineToPoint({ 8, 0 });
        path.addCurveToPoint({ 8, 6 }, { 7, 2 }, { 7, 4 });
        path.addArc({ 4, 3 }, 2, 0, 1, true);
        path.closePath();
        path.setLineWidth(2);
        path.addClip();
        path.stroke();
        UIBezierPath::withOvalInRect(CGRectMake(0, 0, 4, 4)).fill();
        UIBezierPath::withRoundedRect(CGRectMake(0, 0, 4, 4), 1).fill();
    });
    EXPECT_EQ(image.size(), CGSizeMake(8, 6));
    EXPECT_GE(image.scale(), 1);
    EXPECT_FALSE(UIImage::withContentsOfFile(string("/nowhere.png")));
    UIGraphicsImageRenderer::withSize({ 8, 6 }).image([&] { image.drawInRect(CGRectMake(0, 0, 8, 6)); });
    const UIImageView picture = UIImageView::withImage(image);
    EXPECT_EQ(picture.image(), image);
    EXPECT_FALSE(UIImageView::create().image());
    UIImageView::withFrame(CGRectMake(0, 0, 1, 1)).setImage(image);

    const UIStackView stack = UIStackView::create();
    stack.setAxis(UILayoutConstraintAxis::Vertical);
    stack.setAlignment(UIStackViewAlignment::Trailing);
    stack.setDistribution(UIStackViewDistribution::EqualSpacing);
    stack.setSpacing(3);
    stack.setLayoutMargins({ 1, 2, 3, 4 });
    stack.setLayoutMarginsRelativeArrangement(true);
    stack.addArrangedSubview(picture);
    EXPECT_EQ((send<"axis", NSInteger>(stack)), 1);
    EXPECT_EQ(picture.superview(), stack);

    const CALayer layer = CALayer::create();
    layer.setFrame(CGRectMake(1, 1, 5, 5));
    EXPECT_EQ(layer.frame(), CGRectMake(1, 1, 5, 5));
    layer.setCornerRadius(2);
    EXPECT_EQ(layer.cornerRadius(), 2);
    layer.setMaskedCorners(CACornerMask::MinXMinY | CACornerMask::MaxXMaxY);
    EXPECT_EQ((send<"maskedCorners", NSUInteger>(layer)), 9U);
    layer.setCornerCurve(string("continuous"));
    layer.setMasksToBounds(true);
    layer.setBackgroundColor(UIColor::withRed(1, 0, 0, 1));
    layer.setBorderColor(UIColor::black());
    layer.setBorderWidth(1);
    layer.setShadowColor(UIColor::black());
    layer.setShadowOpacity(0.5F);
    layer.setShadowOffset({ 1, 1 });
    layer.setShadowRadius(2);
    const CAGradientLayer gradient = CAGradientLayer::create();
    gradient.setColors({ UIColor::black(), UIColor::white() });
    gradient.setStartPoint({ 0, 0 });
    gradient.setEndPoint({ 1, 1 });
    layer.addSublayer(gradient);
    EXPECT_EQ(itemsOf(send<"colors">(gradient)).size(), 2U);
}

} // namespace
