#include "core/appearance.h"
#include "core/resources.h"
#include "core/settings.h"
#include "panel/actions_bar_view.h"
#include "panel/section_header_views.h"
#include "platform/dispatch/run_loop.h"
#include "platform/foundation/classes.h"
#include "platform/foundation/files.h"
#include "platform/handles/NSLayoutConstraint.h"
#include "platform/handles/UIGraphicsImageRenderer.h"
#include "platform/handles/UILabel.h"
#include "platform/handles/UIStackView.h"
#include "platform/handles/UITableView.h"
#include "platform/handles/UIWindow.h"
#include "platform/screen/feedback.h"
#include "support/temporary_device.h"
#include "support/view_test.h"

#include <fstream>

namespace appledger {

using namespace platform;
using namespace std::chrono_literals;

namespace {

std::string journal;

std::string told()
{
    return std::exchange(journal, {});
}

/// A device with the library's pictures, and a screen.
class PanelTest : public support::ViewTest {
protected:
    PanelTest()
    {
        for (const ClassDefinition* definition : foundationClasses())
            registerClass(*definition);
        for (const ClassDefinition* definition :
            { &ALAppearance::definition, &ALHelper::definition, &ALSettings::definition, &ALActionButton_class,
                &ALActionsBarView_class, &ALExpandableSectionHeaderView_class, &ALTitleSectionHeaderView_class })
            registerClass(*definition);
        setScreen({ 390, 844 }, 2);
        setFeedbackHandler([](std::string_view kind) { journal += "haptic " + std::string(kind) + " | "; });
        const std::string bundle = "/Library/Application Support/AppLedger/Resources.bundle/";
        device_.write(bundle + "Info.plist", dictionary({ { "CFBundleIdentifier", string("pictures") } }));
        for (const char* const name : { "ChevronDown", "ChevronUp" }) {
            const UIImage image = UIGraphicsImageRenderer::withSize({ 24, 24 }).image([] {});
            const auto bytes = asData(UIImagePNGRepresentation(image));
            std::ofstream(device_.at(bundle + name + ".png"), std::ios::binary) << bytes->view();
        }
        window.setFrame(CGRectMake(0, 0, 390, 844));
        window.setHidden(false);
        journal.clear();
    }

    static void touch(const std::vector<CGPoint>& way, TouchKind end = TouchKind::Ended)
    {
        advanceClock(1s);
        touchScreenAt(way.front(), TouchKind::Began);
        for (const CGPoint& point : way) {
            advanceClock(20ms);
            touchScreenAt(point, TouchKind::Moved);
        }
        touchScreenAt(way.back(), end);
        runUntilIdle();
    }

    static std::string hex(const id& color)
    {
        return describe(send<"hexStringFromColor:">(support::classObject<"ALSettings">(), color));
    }
    static double alphaOf(const id& view) { return UIView(view).alpha(); }

    const support::TemporaryDevice device_;
    const UIWindow window = UIWindow::create();
};

class ActionsBar : public PanelTest {
protected:
    ActionsBar()
    {
        bar.setFrame(CGRectMake(0, 100, 390, 80));
        window.addSubview(bar);
        add("Badge", "3", block([] { journal += "badge | "; }));
        add("Caches", "1 MB", nil);
        add("Data", "2 MB", block([] { journal += "data | "; }));
        runUntilIdle();
    }

    void add(const char* title, const char* detail, const id& handler) const
    {
        send<"addItemWithTitle:detail:image:handler:", void>(bar, string(title), string(detail),
            UIGraphicsImageRenderer::withSize({ 31, 31 }).image([] {}).object(), handler);
    }

    id button(std::size_t index) const { return itemsOf(send<"arrangedSubviews">(bar))[index]; }
    template <Name Part> id part(std::size_t index) const { return send<Part>(button(index)); }

    /// "0.5" where all parts have it; else all of them.
    std::string alphas(std::size_t index) const
    {
        const double image = alphaOf(part<"actionImageView">(index));
        const double name = alphaOf(part<"nameLabel">(index));
        const double detail = alphaOf(part<"detailLabel">(index));
        const auto text = [](double value) { return value == 1 ? "1" : value == 0.5 ? "0.5" : "?"; };
        if (image == name && name == detail)
            return text(image);
        return std::string(text(image)) + text(name) + text(detail);
    }

    const UIStackView bar { send<"new">(support::classObject<"ALActionsBarView">()) };
};

TEST_F(ActionsBar, AFingerDimsAButtonAndTheLiftInsideCallsItsBlock)
{
    const CGPoint inside { 60, 140 };
    const CGPoint outside { 60, 400 };
    const struct {
        std::vector<CGPoint> way;
        TouchKind end;
        const char* dimming; ///< before the end
        const char* told;
    } cases[] {
        { { inside }, TouchKind::Ended, "0.5", "haptic selection | badge | " },
        { { inside, outside }, TouchKind::Ended, "1", "" },
        { { inside, outside, inside }, TouchKind::Ended, "0.5", "haptic selection | badge | " },
        { { { 195, 140 } }, TouchKind::Ended, "1", "" }, // another button, which has no block
    };
    for (const auto& [way, end, dimming, wanted] : cases) {
        advanceClock(1s);
        touchScreenAt(way.front(), TouchKind::Began);
        for (const CGPoint& point : way)
            touchScreenAt(point, TouchKind::Moved);
        EXPECT_EQ(alphas(0), dimming);
        touchScreenAt(way.back(), end);
        EXPECT_EQ(alphas(0), "1");
        EXPECT_EQ(told(), wanted);
    }
}

TEST_F(ActionsBar, ItemsAreChangedByTheirIndex)
{
    send<"setTitle:forItemAtIndex:", void>(bar, string("Other"), NSInteger { 1 });
    send<"setDetail:forItemAtIndex:", void>(bar, string("5 MB"), NSInteger { 1 });
    EXPECT_EQ(describe(send<"text">(part<"nameLabel">(1))), "\"Other\"");
    EXPECT_EQ(describe(send<"text">(part<"detailLabel">(1))), "\"5 MB\"");
    EXPECT_EQ(describe(send<"text">(part<"nameLabel">(0))), "\"Badge\"");

    send<"setItemEnabled:atIndex:", void>(bar, false, NSInteger { 2 });
    EXPECT_EQ(alphas(2) + alphas(1), "0.51");
    touch({ { 330, 140 } });
    EXPECT_EQ(told(), "") << "it is disabled";
    send<"showLoadingIndicatorForItemAtIndex:", void>(bar, NSInteger { 2 });
    EXPECT_TRUE(UIView(part<"actionImageView">(2)).isHidden());
    EXPECT_TRUE((send<"isAnimating", bool>(part<"activityIndicatorView">(2))));
    EXPECT_EQ(alphas(2), "0.5");
    send<"hideLoadingIndicatorForItemAtIndex:", void>(bar, NSInteger { 2 });
    EXPECT_FALSE(UIView(part<"actionImageView">(2)).isHidden());
    EXPECT_FALSE((send<"isAnimating", bool>(part<"activityIndicatorView">(2))));
    send<"setItemEnabled:atIndex:", void>(bar, true, NSInteger { 2 });
    touch({ { 330, 140 } });
    EXPECT_EQ(told(), "haptic selection | data | ");
    EXPECT_EQ(alphas(2), "1");
    for (const NSInteger nowhere : { NSInteger { -1 }, NSInteger { 3 } }) {
        send<"setTitle:forItemAtIndex:", void>(bar, string("X"), nowhere);
        send<"setItemEnabled:atIndex:", void>(bar, false, nowhere);
        send<"showLoadingIndicatorForItemAtIndex:", void>(bar, nowhere);
    }
    EXPECT_EQ(send<"stackView">(bar), nil);
}

TEST_F(ActionsBar, PicturesStandOverTheirLabelsAndColoursFollowTheAppearance)
{
    const CGRect picture = UIView(part<"actionImageView">(0)).frame();
    const CGRect name = UIView(part<"nameLabel">(0)).frame();
    const CGRect detail = UIView(part<"detailLabel">(0)).frame();
    EXPECT_EQ(picture.size, (CGSize { 31, 31 }));
    EXPECT_LE(CGRectGetMaxY(picture), name.origin.y);
    EXPECT_LE(CGRectGetMaxY(name), detail.origin.y);
    EXPECT_LE(CGRectGetMaxY(detail), 80);
    for (const NSInteger style : { 0, 1 }) {
        ALAppearance& appearance = ALAppearance::sharedInstance();
        appearance.currentStyle = style;
        for (const UIView& view : { UIView(button(0)) }) {
            view.setNeedsLayout();
            view.layoutIfNeeded();
        }
        EXPECT_EQ(hex(send<"textColor">(part<"nameLabel">(0))), hex(appearance.primaryTextColor()));
        EXPECT_EQ(hex(send<"textColor">(part<"detailLabel">(0))), hex(appearance.secondaryTextColor()));
        EXPECT_EQ(hex(send<"tintColor">(part<"actionImageView">(0))), hex(appearance.actionsBarIconTintColor()));
    }
}

/// Writes down what a header tells it.
struct HeaderDelegate : NSObject {
    static const ClassDefinition definition;
    void changed(const id& header)
    {
        journal += send<"isExpanded", bool>(header) ? "opened " : "closed ";
        journal += std::to_string(send<"section", NSInteger>(header)) + " | ";
    }
    void pressed(const id&) { journal += "pressed | "; }
    void back() { journal += "back | "; }
};
constexpr MethodDefinition delegateMethods[] {
    method<"expandableSectionHeaderViewDidChange:", &HeaderDelegate::changed>(),
    method<"expandableSectionHeaderViewDidLongPress:", &HeaderDelegate::pressed>(),
    method<"titleSectionHeaderViewDidTapBackButton", &HeaderDelegate::back>(),
};
const ClassDefinition HeaderDelegate::definition {
    .name = "HeaderDelegate", .allocate = allocate<HeaderDelegate>, .methods = delegateMethods
};

/// Hears of nothing but changes.
void nothing(const id&, SEL, const id&)
{
    journal += "changed | ";
}
constexpr MethodDefinition deafMethods[] { method<"expandableSectionHeaderViewDidChange:", &nothing>() };
const ClassDefinition DeafDelegate_class { .name = "DeafDelegate", .methods = deafMethods };

class Headers : public PanelTest {
protected:
    template <Name Class> id make()
    {
        const id header = send<"initWithReuseIdentifier:">(
            send<"alloc">(support::classObject<Class>()), send<"reuseIdentifier">(support::classObject<Class>()));
        UIView(header).setFrame(CGRectMake(0, 100, 390, 35));
        window.addSubview(UIView(header));
        runUntilIdle();
        return header;
    }
    const Ref<HeaderDelegate> delegate = platform::make<HeaderDelegate>();
};

TEST_F(Headers, AnExpandableOneOpensAndClosesAtATap)
{
    const id header = make<"ALExpandableSectionHeaderView">();
    send<"setSection:", void>(header, NSInteger { 3 });
    send<"setDelegate:", void>(header, id(delegate));
    const auto image = [&] { return send<"image">(send<"chevronImageView">(header)); };
    ASSERT_TRUE(send<"chevronUp">(header));
    ASSERT_NE(send<"chevronUp">(header), send<"chevronDown">(header));
    EXPECT_EQ(image(), send<"chevronDown">(header));
    touch({ { 100, 115 } });
    EXPECT_EQ(told(), "opened 3 | ");
    EXPECT_EQ(image(), send<"chevronUp">(header));
    touch({ { 100, 115 } });
    EXPECT_EQ(told(), "closed 3 | ");
    EXPECT_EQ(image(), send<"chevronDown">(header));
    send<"setDelegate:", void>(header, nil);
    touch({ { 100, 115 } });
    EXPECT_EQ(told(), "");
    EXPECT_EQ((send<"headerHeight", CGFloat>(support::classObject<"ALExpandableSectionHeaderView">())), 30);
}

TEST_F(Headers, ALongPressIsToldOnceAndOnlyToWhoAsksForIt)
{
    const id header = make<"ALExpandableSectionHeaderView">();
    const auto press = [&](const id& listener) {
        send<"setDelegate:", void>(header, listener);
        touchScreenAt({ 100, 115 }, TouchKind::Began);
        advanceClock(600ms);
        const std::string early = told();
        touchScreenAt({ 100, 115 }, TouchKind::Ended);
        advanceClock(1s);
        return early + "then " + told();
    };
    EXPECT_EQ(press(delegate), "pressed | then ");
    EXPECT_EQ(press(send<"new">(id(registerClass(DeafDelegate_class)))), "then ");
    EXPECT_FALSE((send<"isExpanded", bool>(header)));
}

TEST_F(Headers, ATitleStandsByItselfOrWithAWayBack)
{
    const id header = make<"ALTitleSectionHeaderView">();
    const UILabel label(send<"titleLabel">(header));
    const UIView back(send<"backImageView">(header));
    const struct {
        void (*configure)(const id& header, const id& title);
        bool hidesBack;
        NSTextAlignment alignment;
        double top;
        double height;
    } cases[] {
        { [](const id& view, const id& title) { send<"configureBackHeaderWithTitle:", void>(view, title); }, false,
            NSTextAlignment::Center, 0, 35 },
        { [](const id& view, const id& title) { send<"configureHeaderWithTitle:", void>(view, title); }, true,
            NSTextAlignment::Natural, 1.33, 18 },
    };
    for (const auto& [configure, hidesBack, alignment, top, height] : cases) {
        configure(header, string("Advanced"));
        advanceClock(100ms);
        EXPECT_EQ(describe(label.text()), "\"Advanced\"");
        EXPECT_EQ(back.isHidden(), hidesBack);
        EXPECT_EQ((send<"textAlignment", NSTextAlignment>(label)), alignment);
        EXPECT_EQ((send<"constant", CGFloat>(send<"titleLabelTopConstraint">(header))), top);
        EXPECT_EQ((send<"constant", CGFloat>(send<"titleLabelHeightConstraint">(header))), height);
        EXPECT_EQ(label.frame().origin.y, top);
        EXPECT_EQ(label.frame().size.height, height);
    }
    EXPECT_EQ(back.frame().size, (CGSize { 10, 18 }));
    EXPECT_EQ((send<"size", CGSize>(send<"image">(back))), (CGSize { 10, 18 }));
}

TEST_F(Headers, ATapOnATitleGoesBackIfSomebodyListens)
{
    const id header = make<"ALTitleSectionHeaderView">();
    touch({ { 100, 115 } });
    EXPECT_EQ(told(), "");
    send<"setDelegate:", void>(header, id(delegate));
    touch({ { 100, 115 } });
    EXPECT_EQ(told(), "back | ");
}

TEST_F(Headers, TheirColoursAreThoseOfTheAppearanceAtEachLayout)
{
    const std::pair<id, id> headers[] { { make<"ALExpandableSectionHeaderView">(), nil },
        { make<"ALTitleSectionHeaderView">(), nil } };
    for (const NSInteger style : { 0, 1 })
        for (const auto& [header, none] : headers) {
            ALAppearance::sharedInstance().currentStyle = style;
            UIView(header).setNeedsLayout();
            UIView(header).layoutIfNeeded();
            const std::string wanted = hex(ALAppearance::sharedInstance().tableHeaderTextColor());
            const id picture = ask<"chevronImageView">(header).value_or(askObject<"backImageView">(header));
            EXPECT_EQ(hex(send<"textColor">(send<"titleLabel">(header))), wanted);
            EXPECT_EQ(hex(send<"tintColor">(picture)), wanted);
        }
}

} // namespace

} // namespace appledger
