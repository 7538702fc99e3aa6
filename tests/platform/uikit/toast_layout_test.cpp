#include "platform/dispatch/run_loop.h"
#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "support/golden.h"
#include "support/view_test.h"

/// A pill as a library would put it together: constraints, a row with a picture, a column of two lines.

namespace {

using namespace platform;
using namespace std::chrono_literals;
using support::classObject;

id make(const char* name)
{
    return send<"new">(id(objc_getClass(name)));
}

id anchored(const char* name)
{
    const id view = make(name);
    send<"setTranslatesAutoresizingMaskIntoConstraints:", void>(view, false);
    return view;
}

template <Name Anchor> void pin(const id& view, const id& other, double constant)
{
    const id constraint = send<"constraintEqualToAnchor:constant:">(send<Anchor>(view), send<Anchor>(other), constant);
    send<"setActive:", void>(constraint, true);
}

template <Name Anchor> void fix(const id& view, double constant)
{
    send<"setActive:", void>(send<"constraintEqualToConstant:">(send<Anchor>(view), constant), true);
}

void pinEdges(const id& view, const id& other, double inset)
{
    pin<"leadingAnchor">(view, other, inset);
    pin<"topAnchor">(view, other, inset);
    pin<"trailingAnchor">(view, other, -inset);
    pin<"bottomAnchor">(view, other, -inset);
}

class Pill : public support::ViewTest {
protected:
    id window = makeWindow();
    id pill = anchored("UIView");
    id container = anchored("UIView");
    id row = anchored("UIStackView");
    id column = anchored("UIStackView");

    /// Views of fixed sizes stand for the texts, whose widths would be the type's.
    static id block(double width, double height)
    {
        const id view = anchored("UIView");
        fix<"widthAnchor">(view, width);
        fix<"heightAnchor">(view, height);
        return view;
    }

    void build(bool withPicture)
    {
        send<"addSubview:", void>(pill, container);
        pinEdges(container, pill, 10);
        send<"addSubview:", void>(container, row);
        pinEdges(row, container, 0);
        send<"setSpacing:", void>(row, 2.0);
        send<"setAlignment:", void>(row, 3L);
        if (withPicture) {
            send<"addArrangedSubview:", void>(row, block(24, 24));
            send<"setLayoutMargins:", void>(row, UIEdgeInsets { 0, 20, 0, 20 });
            send<"setLayoutMarginsRelativeArrangement:", void>(row, true);
        }
        send<"setAxis:", void>(column, 1L);
        send<"setAlignment:", void>(column, 3L);
        send<"setSpacing:", void>(column, 2.0);
        send<"setLayoutMargins:", void>(column, UIEdgeInsets { 4, 0, 4, 0 });
        send<"setLayoutMarginsRelativeArrangement:", void>(column, true);
        send<"addArrangedSubview:", void>(column, block(60, 15));
        send<"addArrangedSubview:", void>(column, block(40, 15));
        send<"addArrangedSubview:", void>(row, column);

        send<"addSubview:", void>(window, pill);
        const CGRect bounds = send<"bounds", CGRect>(window);
        pin<"centerXAnchor">(pill, window, 0);
        pin<"topAnchor">(pill, window, 40);
        fix<"widthAnchor">(pill, bounds.size.width - 100);
        fix<"heightAnchor">(pill, 70);
        send<"layoutIfNeeded", void>(pill);
    }
};

TEST_F(Pill, StandsWhereItsConstraintsSay)
{
    build(false);
    EXPECT_GOLDEN(descriptionOfScreen(), "pill.txt");
}

TEST_F(Pill, MakesRoomForAPicture)
{
    build(true);
    EXPECT_GOLDEN(descriptionOfScreen(), "pill-with-picture.txt");
}

TEST_F(Pill, SlidesInAndOutAndLeavesOnlyWhenItHasSlidOut)
{
    build(false);
    const auto top = [&] { return send<"frame", CGRect>(pill).origin.y; };
    const auto slide = [&](double to, const id& completion) {
        send<"animateWithDuration:delay:options:animations:completion:", void>(classObject<"UIView">(), 0.2, 0.0,
            NSUInteger { 3 << 16 },
            platform::block([this, to] { send<"setTransform:", void>(pill, CGAffineTransformMakeTranslation(0, to)); }),
            completion);
    };
    const auto seenTop = [] {
        const std::string text = descriptionOfScreen();
        const std::size_t line = text.find("UIView (");
        return text.substr(line, text.find(',', line + 12) - line);
    };
    std::string outcome;
    const id leave = platform::block([&](bool finished) {
        outcome += finished ? "left " : "stayed ";
        if (finished)
            send<"removeFromSuperview", void>(pill);
    });

    slide(-100, leave);
    EXPECT_EQ(top(), -60) << "the value is set at once";
    EXPECT_EQ(seenTop(), "UIView (50, 40") << "and what is seen follows";
    advanceClock(100ms);
    EXPECT_EQ(seenTop(), "UIView (50, -10");
    slide(0, nil);
    runUntilIdle();
    EXPECT_EQ(outcome, "stayed ");
    EXPECT_EQ(seenTop(), "UIView (50, -10") << "goes on from where it is seen";
    advanceClock(200ms);
    EXPECT_EQ(seenTop(), "UIView (50, 40");

    slide(-100, leave);
    advanceClock(199ms);
    EXPECT_EQ(outcome, "stayed ");
    advanceClock(1ms);
    runUntilIdle();
    EXPECT_EQ(outcome, "stayed left ");
    EXPECT_EQ(send<"superview">(pill), nil);
}

TEST_F(Pill, AnAnimationEndsUnfinishedWhenItsViewGoes)
{
    build(false);
    std::string outcome;
    send<"animateWithDuration:delay:options:animations:completion:", void>(classObject<"UIView">(), 0.3, 0.0,
        NSUInteger { 0 }, platform::block([this] { send<"setAlpha:", void>(container, 0.0); }),
        platform::block([&](bool finished) { outcome += finished ? "finished" : "unfinished"; }));
    advanceClock(100ms);
    send<"removeFromSuperview", void>(pill);
    runUntilIdle();
    EXPECT_EQ(outcome, "unfinished");
}

} // namespace
