#include "platform/dispatch/clock.h"
#include "platform/dispatch/run_loop.h"
#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/screen/framework.h"
#include "support/view_test.h"

#include <gtest/gtest.h>

namespace {

using namespace platform;
using namespace std::chrono_literals;
using support::classObject;

/// A class of another library that builds on a view without knowing its C++ class.
struct CardFields {
    id title {};
    int layouts = 0;
};

id Card_initWithFrame(const id& self, SEL, CGRect frame)
{
    const id card = sendSuper<"initWithFrame:">(classNamed<"UIView">(), self, frame);
    fieldsOf<CardFields>(card).title = string("card");
    return card;
}

void Card_layoutSubviews(const id& self, SEL)
{
    sendSuper<"layoutSubviews", void>(classNamed<"UIView">(), self);
    ++fieldsOf<CardFields>(self).layouts;
}

constexpr MethodDefinition cardMethods[] {
    method<"initWithFrame:", &Card_initWithFrame>(),
    method<"layoutSubviews", &Card_layoutSubviews>(),
    getter<"title", &CardFields::title>(),
};
const ClassDefinition Card_class { .name = "Card", .superclassName = "UIView", .methods = cardMethods };

class Views : public support::ViewTest { };

TEST_F(Views, AClassOfAnotherLibraryIsAView)
{
    ASSERT_TRUE(registerClass(Card_class));
    const id card = send<"new">(classObject<"Card">());
    EXPECT_EQ(asString(send<"title">(card))->view(), "card");
    EXPECT_TRUE(isKindOfClass(card, objc_getClass("UIView")));
    const id window = makeWindow();
    send<"addSubview:", void>(window, card);
    EXPECT_EQ(fieldsOf<CardFields>(card).layouts, 0) << "a layout waits for its pass";
    runUntilIdle();
    EXPECT_EQ(fieldsOf<CardFields>(card).layouts, 1);
    send<"setNeedsLayout", void>(card);
    send<"setNeedsLayout", void>(card);
    send<"layoutIfNeeded", void>(card);
    send<"layoutIfNeeded", void>(card);
    EXPECT_EQ(fieldsOf<CardFields>(card).layouts, 2) << "asked for twice, laid out once";
}

TEST_F(Views, AConstraintOutlivesItsViews)
{
    const auto width = [](const id& from, const id& to) {
        return send<"constraintEqualToAnchor:">(send<"widthAnchor">(from), send<"widthAnchor">(to));
    };
    id outer = makeView(CGRectMake(0, 0, 100, 50));
    id inner = makeView(CGRectMake(0, 0, 10, 10));
    send<"addSubview:", void>(outer, inner);
    const id active = width(inner, outer);
    const id inactive = width(outer, inner);
    send<"setActive:", void>(active, true);
    inner = nil;
    outer = nil;
    EXPECT_FALSE((send<"isActive", bool>(active)));
    for (const id& constraint : { active, inactive }) {
        EXPECT_EQ(send<"firstItem">(constraint), nil);
        EXPECT_EQ(send<"secondItem">(constraint), nil);
        send<"setConstant:", void>(constraint, 5.0);
        send<"setActive:", void>(constraint, true);
        EXPECT_FALSE((send<"isActive", bool>(constraint)));
    }
    const id left = makeView(CGRectMake(0, 0, 10, 10));
    id right = makeView(CGRectMake(0, 0, 20, 10));
    const id half = width(left, right);
    right = nil;
    send<"setActive:", void>(half, true);
    EXPECT_FALSE((send<"isActive", bool>(half))) << "not the constant alone";
}

TEST_F(Views, OnlyWhoMakesRoomIsLaidOutWhenASubviewHides)
{
    ASSERT_TRUE(registerClass(Card_class));
    const id window = makeWindow();
    const id card = send<"new">(classObject<"Card">());
    const id inCard = makeView(CGRectMake(0, 0, 10, 10));
    const id stack = send<"new">(classObject<"UIStackView">());
    send<"setFrame:", void>(stack, CGRectMake(0, 0, 100, 20));
    const id labels[] { send<"new">(classObject<"UILabel">()), send<"new">(classObject<"UILabel">()) };
    for (const id& label : labels) {
        send<"setText:", void>(label, string("text"));
        send<"addArrangedSubview:", void>(stack, label);
    }
    send<"addSubview:", void>(card, inCard);
    send<"addSubview:", void>(window, card);
    send<"addSubview:", void>(card, stack);
    advanceClock(1s);
    const int before = fieldsOf<CardFields>(card).layouts;
    for (const bool hidden : { true, true, false, false }) {
        send<"setHidden:", void>(inCard, hidden);
        send<"setHidden:", void>(window, false);
        send<"setHidden:", void>(labels[1], false);
    }
    send<"setFont:", void>(labels[0], send<"font">(labels[0]));
    EXPECT_FALSE(runUntilIdle());
    advanceClock(1s);
    EXPECT_EQ(fieldsOf<CardFields>(card).layouts, before);
    const auto placeOfSecond = [&] { return send<"frame", CGRect>(labels[1]).origin.x; };
    const double beside = placeOfSecond();
    EXPECT_GT(beside, 0);
    send<"setHidden:", void>(labels[0], true);
    advanceClock(1s);
    EXPECT_EQ(placeOfSecond(), 0);
    EXPECT_EQ(fieldsOf<CardFields>(card).layouts, before) << "the stack has a frame";
    send<"setHidden:", void>(labels[0], false);
    advanceClock(1s);
    EXPECT_EQ(placeOfSecond(), beside);
}

TEST_F(Views, ALabelHasNoMoreLinesThanItMayWhateverItsTextHolds)
{
    const id label = send<"new">(classObject<"UILabel">());
    const auto sizeOf = [&](const std::string& text, NSInteger lines, NSInteger mode, double width) {
        send<"setNumberOfLines:", void>(label, lines);
        send<"setLineBreakMode:", void>(label, mode);
        send<"setText:", void>(label, string(text));
        return send<"sizeThatFits:", CGSize>(label, CGSizeMake(width, 1000));
    };
    constexpr NSInteger wordWrap = 0;
    constexpr NSInteger truncateTail = 4;
    const double one = sizeOf("Ag", 1, truncateTail, 1000).height;
    const double two = sizeOf("Ag\nAg", 0, truncateTail, 1000).height;
    EXPECT_GT(two, one);
    for (const char* const separator : { "\n", "\r\n", "\r", "\u2028", "\u2029" })
        for (const NSInteger mode : { wordWrap, truncateTail })
            for (const double width : { 1000.0, 60.0 }) {
                std::string text = "Ag";
                for (int line = 0; line < 4; ++line)
                    text += std::string(separator) + "a line that is long";
                EXPECT_EQ(sizeOf(text, 1, mode, width).height, one) << text << mode << ' ' << width;
                EXPECT_EQ(sizeOf(text, 2, mode, width).height, two) << text << mode << ' ' << width;
            }
    EXPECT_GT(sizeOf("Ag\nAg", 1, truncateTail, 1000).width, sizeOf("Ag", 1, truncateTail, 1000).width)
        << "a sign says that there is more";
}

/// A view by name that answers for itself what a view may, and counts how often it is laid out.
struct PlateFields {
    CGSize natural { 40, 30 };
    int layouts = 0;
    std::string setters {};
};

CGSize Plate_natural(const id& self, SEL)
{
    return fieldsOf<PlateFields>(self).natural;
}

CGSize Plate_fits(const id& self, SEL, CGSize size)
{
    return { size.width, fieldsOf<PlateFields>(self).natural.height * 2 };
}

void Plate_layout(const id& self, SEL)
{
    ++fieldsOf<PlateFields>(self).layouts;
}

template <Name Setter, class Value> void Plate_set(const id& self, SEL, Value value)
{
    fieldsOf<PlateFields>(self).setters += std::string(Setter.view());
    sendSuper<Setter, void>(classNamed<"UIView">(), self, value);
}

constexpr MethodDefinition plateMethods[] {
    method<"intrinsicContentSize", &Plate_natural>(),
    method<"layoutSubviews", &Plate_layout>(),
    method<"setBounds:", &Plate_set<"setBounds:", CGRect>>(),
    method<"setCenter:", &Plate_set<"setCenter:", CGPoint>>(),
    method<"setFrame:", &Plate_set<"setFrame:", CGRect>>(),
    method<"sizeThatFits:", &Plate_fits>(),
};
const ClassDefinition Plate_class { .name = "Plate", .superclassName = "UIView", .methods = plateMethods };

id makePlate(const CGRect& frame = {})
{
    registerClass(Plate_class);
    return send<"initWithFrame:">(send<"alloc">(classObject<"Plate">()), frame);
}

template <Name Anchor> void fix(const id& view, double constant)
{
    send<"setActive:", void>(send<"constraintEqualToConstant:">(send<Anchor>(view), constant), true);
}

template <Name Anchor> void tie(const id& view, const id& other)
{
    send<"setActive:", void>(send<"constraintEqualToAnchor:">(send<Anchor>(view), send<Anchor>(other)), true);
}

CGRect frameOf(const id& view)
{
    return send<"frame", CGRect>(view);
}

TEST_F(Views, ASubclassByNameSaysItselfHowLargeItIs)
{
    const id window = makeWindow();
    const id plate = makePlate();
    send<"setTranslatesAutoresizingMaskIntoConstraints:", void>(plate, false);
    send<"addSubview:", void>(window, plate);
    tie<"topAnchor">(plate, window);
    send<"layoutIfNeeded", void>(window);
    EXPECT_EQ(frameOf(plate).size, CGSizeMake(40, 30));
    fieldsOf<PlateFields>(plate).natural = { 50, 20 };
    send<"invalidateIntrinsicContentSize", void>(plate);
    send<"layoutIfNeeded", void>(window);
    EXPECT_EQ(frameOf(plate).size, CGSizeMake(50, 20));

    const id column = send<"new">(classObject<"UIStackView">());
    send<"setAxis:", void>(column, NSInteger { 1 });
    send<"setFrame:", void>(column, CGRectMake(0, 0, 30, 100));
    send<"addArrangedSubview:", void>(column, plate);
    send<"addArrangedSubview:", void>(column, makeView({}));
    send<"layoutIfNeeded", void>(column);
    EXPECT_EQ((send<"systemLayoutSizeFittingSize:", CGSize>(plate, CGSizeMake(30, 0))), CGSizeMake(30, 40))
        << "too narrow for what it would like";
}

TEST_F(Views, FramesAreSetByTheMessageThatAClassMayAnswer)
{
    const id window = makeWindow();
    const id outer = makeView(CGRectMake(0, 0, 100, 100));
    send<"addSubview:", void>(window, outer);
    const id flexible = makePlate(CGRectMake(0, 0, 100, 10));
    send<"setAutoresizingMask:", void>(flexible, NSUInteger { 2 });
    const id constrained = makePlate();
    send<"setTranslatesAutoresizingMaskIntoConstraints:", void>(constrained, false);
    send<"addSubview:", void>(outer, flexible);
    send<"addSubview:", void>(outer, constrained);
    tie<"topAnchor">(constrained, outer);
    send<"layoutIfNeeded", void>(window);
    const auto setters = [](const id& view) { return std::exchange(fieldsOf<PlateFields>(view).setters, ""); };
    EXPECT_EQ(setters(constrained), "setBounds:setCenter:");
    setters(flexible);
    send<"setFrame:", void>(outer, CGRectMake(0, 0, 200, 100));
    send<"layoutIfNeeded", void>(window);
    EXPECT_EQ(setters(flexible), "setFrame:");
    EXPECT_EQ(setters(constrained), "") << "it stands where it stood";
    send<"sizeToFit", void>(flexible);
    EXPECT_EQ(setters(flexible), "setFrame:");
    const id row = send<"new">(classObject<"UIStackView">());
    send<"addArrangedSubview:", void>(row, flexible);
    send<"setFrame:", void>(row, CGRectMake(0, 0, 80, 20));
    send<"layoutIfNeeded", void>(row);
    EXPECT_EQ(setters(flexible), "setFrame:");
}

TEST_F(Views, AChangeOfSizeAsksOnlyThoseWhoseLayoutItCanAlter)
{
    const id window = makeWindow();
    const id outer = makePlate(CGRectMake(0, 0, 200, 200));
    const id inner = makePlate(CGRectMake(0, 0, 200, 100));
    const id label = send<"new">(classObject<"UILabel">());
    send<"addSubview:", void>(window, outer);
    send<"addSubview:", void>(outer, inner);
    send<"addSubview:", void>(inner, label);
    int text = 0;
    /// Which of inner and outer are laid out when the label's text changes.
    const auto laidOut = [&] {
        send<"layoutIfNeeded", void>(window);
        for (const id& view : { inner, outer })
            fieldsOf<PlateFields>(view).layouts = 0;
        send<"setText:", void>(label, string(std::to_string(++text)));
        send<"layoutIfNeeded", void>(window);
        return std::to_string(fieldsOf<PlateFields>(inner).layouts)
            + std::to_string(fieldsOf<PlateFields>(outer).layouts);
    };
    EXPECT_EQ(laidOut(), "00") << "the label has a frame";
    send<"setTranslatesAutoresizingMaskIntoConstraints:", void>(label, false);
    EXPECT_EQ(laidOut(), "10") << "it is placed by its content, in a view with a frame";
    send<"setTranslatesAutoresizingMaskIntoConstraints:", void>(inner, false);
    EXPECT_EQ(laidOut(), "11") << "and that view may follow it";
    fix<"widthAnchor">(inner, 200);
    EXPECT_EQ(laidOut(), "11");
    fix<"heightAnchor">(inner, 100);
    EXPECT_EQ(laidOut(), "10") << "until its size is fixed";
    const id beside = makeView({});
    send<"addSubview:", void>(outer, beside);
    send<"setTranslatesAutoresizingMaskIntoConstraints:", void>(beside, false);
    tie<"widthAnchor">(beside, label);
    EXPECT_EQ(laidOut(), "11") << "somebody further out has its width";
}

TEST_F(Views, ATextThatChangesLeavesTheAnimationAroundItAlone)
{
    const id window = makeWindow();
    const id container = makePlate(CGRectMake(0, 0, 300, 200));
    const id sheet = makeView(CGRectMake(0, 200, 300, 100));
    const id label = send<"new">(classObject<"UILabel">());
    send<"setTranslatesAutoresizingMaskIntoConstraints:", void>(label, false);
    send<"addSubview:", void>(window, container);
    send<"addSubview:", void>(container, sheet);
    send<"addSubview:", void>(sheet, label);
    advanceClock(1s);
    const int before = fieldsOf<PlateFields>(container).layouts;
    std::string outcome;
    send<"animateWithDuration:animations:completion:", void>(classObject<"UIView">(), 0.3,
        block([&] { send<"setFrame:", void>(sheet, CGRectMake(0, 100, 300, 100)); }),
        block([&](bool finished) { outcome = finished ? "finished" : "interrupted"; }));
    advanceClock(100ms);
    send<"setText:", void>(label, string("loaded"));
    advanceClock(300ms);
    EXPECT_EQ(outcome, "finished");
    EXPECT_EQ(fieldsOf<PlateFields>(container).layouts, before);
    EXPECT_EQ(frameOf(sheet).origin.y, 100);
}

TEST_F(Views, AnotherOriginOfTheBoundsIsALayout)
{
    const id plate = makePlate(CGRectMake(0, 0, 100, 100));
    send<"layoutIfNeeded", void>(plate);
    send<"setBounds:", void>(plate, CGRectMake(0, 50, 100, 100));
    send<"layoutIfNeeded", void>(plate);
    EXPECT_EQ(fieldsOf<PlateFields>(plate).layouts, 2);
    send<"setBounds:", void>(plate, CGRectMake(0, 50, 100, 100));
    send<"setCenter:", void>(plate, CGPointMake(70, 70));
    send<"layoutIfNeeded", void>(plate);
    EXPECT_EQ(fieldsOf<PlateFields>(plate).layouts, 2) << "neither the same bounds nor another place";
}

void Plate_safeAreaChanged(const id& self, SEL)
{
    fieldsOf<PlateFields>(self).setters += "safe ";
}

TEST_F(Views, TheSafeAreaReachesAsFarIntoAViewAsItStandsInIt)
{
    setScreen({ 390, 844 }, 2);
    const id window = makeWindow();
    const id outer = makeView(CGRectMake(0, 0, 390, 844));
    const id inner = makePlate(CGRectMake(10, 20, 100, 100));
    class_addMethod(classNamed<"Plate">(), sel_registerName("safeAreaInsetsDidChange"),
        reinterpret_cast<IMP>(&Plate_safeAreaChanged), "v@:");
    const auto insets = [](const id& view) { return send<"safeAreaInsets", UIEdgeInsets>(view); };
    send<"addSubview:", void>(outer, inner);
    EXPECT_EQ(insets(inner), UIEdgeInsetsZero) << "in no window";
    send<"addSubview:", void>(window, outer);
    EXPECT_EQ(insets(window), UIEdgeInsetsMake(47, 0, 34, 0));
    EXPECT_EQ(insets(outer), UIEdgeInsetsMake(47, 0, 34, 0));
    EXPECT_EQ(insets(inner), UIEdgeInsetsMake(27, 0, 0, 0));
    const auto heard = [&] {
        advanceClock(1s);
        const std::string all = std::exchange(fieldsOf<PlateFields>(inner).setters, "");
        return all.find("safe") == std::string::npos ? 0 : 1;
    };
    EXPECT_EQ(heard(), 1);
    send<"setNeedsLayout", void>(inner);
    EXPECT_EQ(heard(), 0) << "it is what it was";
    send<"setFrame:", void>(outer, CGRectMake(0, 100, 390, 744));
    EXPECT_EQ(heard(), 1);
    EXPECT_EQ(insets(inner), UIEdgeInsetsZero);
    send<"setCenter:", void>(inner, CGPointMake(60, 694));
    EXPECT_EQ(heard(), 1);
    EXPECT_EQ(insets(inner), UIEdgeInsetsMake(0, 0, 34, 0));
}

/// Sets values of its subviews at each layout, as a class does that follows an appearance.
void Settler_layout(const id& self, SEL)
{
    ++fieldsOf<PlateFields>(self).layouts;
    const id fonts = classObject<"UIFont">();
    const id colors = classObject<"UIColor">();
    for (const id& view : itemsOf(send<"subviews">(self))) {
        send<"setTintColor:", void>(view, send<"colorWithRed:green:blue:alpha:">(colors, 0.1, 0.2, 0.3, 1.0));
        send<"setHidden:", void>(view, false);
        ask<"setFont:", void>(view, send<"systemFontOfSize:">(fonts, 13.0));
        ask<"setText:", void>(view, string("text"));
        ask<"setNumberOfLines:", void>(view, NSInteger { 2 });
        ask<"setTextColor:", void>(view, send<"colorWithRed:green:blue:alpha:">(colors, 1.0, 0.2, 0.3, 1.0));
        ask<"setImage:", void>(view, nil);
        ask<"setSpacing:", void>(view, 3.0);
        ask<"setAxis:", void>(view, NSInteger { 1 });
    }
}

constexpr MethodDefinition settlerMethods[] { method<"layoutSubviews", &Settler_layout>() };
const ClassDefinition Settler_class { .name = "Settler", .superclassName = "UIView", .methods = settlerMethods };

TEST_F(Views, ALayoutThatSetsWhatStandsComesToRest)
{
    registerClass(Settler_class);
    const id settler = send<"new">(classObject<"Settler">());
    for (const char* const kind : { "UILabel", "UIImageView", "UIStackView" }) {
        const id view = send<"new">(id(objc_getClass(kind)));
        send<"setTranslatesAutoresizingMaskIntoConstraints:", void>(view, false);
        send<"addSubview:", void>(settler, view);
    }
    const id window = makeWindow();
    send<"addSubview:", void>(window, settler);
    advanceClock(1s);
    EXPECT_LE(fieldsOf<PlateFields>(settler).layouts, 2) << "the second one changes nothing any more";
    EXPECT_FALSE(runUntilIdle());
}

} // namespace
