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

} // namespace
