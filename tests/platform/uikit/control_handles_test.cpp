#include "platform/dispatch/run_loop.h"
#include "platform/foundation/classes.h"
#include "platform/foundation/index_path.h"
#include "platform/foundation/index_set.h"
#include "platform/foundation/values.h"
#include "platform/handles/UIActivityIndicatorView.h"
#include "platform/handles/UIButton.h"
#include "platform/handles/UIGraphicsImageRenderer.h"
#include "platform/handles/UISwitch.h"
#include "platform/handles/UITableView.h"
#include "support/view_test.h"

/// As with the other handles: a method that isn't the class's own, to the letter of its encoding, ends the test.

namespace {

using namespace platform;

class ControlHandles : public support::ViewTest { };

TEST_F(ControlHandles, AControlsMethodsAreTheClasss)
{
    const UIControl control = UIControl::withFrame(CGRectMake(0, 0, 10, 10));
    const SEL action = sel_registerName("setNeedsLayout");
    control.addTarget(control, action, UIControlEvents::TouchDown | UIControlEvents::TouchCancel);
    EXPECT_EQ((send<"allControlEvents", NSUInteger>(control)), 257U);
    control.removeTarget(control, action, UIControlEvents::TouchCancel);
    EXPECT_EQ((send<"allControlEvents", NSUInteger>(control)), 1U);
    control.setEnabled(false);
    control.setSelected(true);
    control.setHighlighted(true);
    EXPECT_TRUE(!control.isEnabled() && control.isSelected() && control.isHighlighted());
    EXPECT_EQ(static_cast<NSUInteger>(control.state()), 7U);
    control.sendActions(UIControlEvents::AllEvents);
    EXPECT_FALSE(control.nextResponder() || control.canBecomeFirstResponder() || control.isFirstResponder());
    EXPECT_TRUE(control.resignFirstResponder());

    const UIButton button = UIButton::withType(UIButtonType::System);
    const UIImage image = UIGraphicsImageRenderer::withSize({ 8, 6 }).image([] {});
    button.setTitle(string("A"), UIControlState::Normal);
    button.setTitleColor(UIColor::black(), UIControlState::Highlighted);
    button.setImage(image, UIControlState::Normal);
    button.setBackgroundImage(image, UIControlState::Disabled);
    button.setContentEdgeInsets({ 1, 2, 3, 4 });
    button.setTitleEdgeInsets({ 0, 1, 0, 0 });
    button.setImageEdgeInsets({ 0, 0, 0, 1 });
    EXPECT_EQ(button.imageView().image(), image);
    EXPECT_TRUE(button.titleLabel());
    const double text = button.titleLabel().sizeThatFits({}).width;
    EXPECT_EQ(button.sizeThatFits({}).width, text + 8 + 6);
    button.setFrame({ {}, button.sizeThatFits({}) });
    button.layoutIfNeeded();
    EXPECT_EQ(button.imageView().frame().origin.x, 1.5) << "two of the insets, less half of the image's one";
    EXPECT_EQ(button.titleLabel().frame().origin.x, 2 + 8 + 0.5);

    const UISwitch toggle = UISwitch::create();
    toggle.setOn(true, true);
    toggle.setOnTintColor(UIColor::black());
    toggle.setThumbTintColor(UIColor::black());
    EXPECT_TRUE(toggle.isOn());
    const auto wheel = UIActivityIndicatorView::withStyle(UIActivityIndicatorViewStyle::White);
    wheel.setColor(UIColor::black());
    EXPECT_FALSE(wheel.isAnimating());
}

TEST_F(ControlHandles, AScrollViewsMethodsAreTheClasss)
{
    const UIScrollView scroll = UIScrollView::withFrame(CGRectMake(0, 0, 100, 100));
    scroll.setContentSize({ 300, 400 });
    scroll.setContentInset({ 1, 2, 3, 4 });
    scroll.setContentInsetAdjustmentBehavior(UIScrollViewContentInsetAdjustmentBehavior::Never);
    EXPECT_EQ(scroll.contentSize(), CGSizeMake(300, 400));
    EXPECT_EQ(scroll.contentInset(), scroll.adjustedContentInset());
    scroll.setContentOffset({ 5, 6 }, false);
    EXPECT_EQ(scroll.contentOffset(), CGPointMake(5, 6));
    EXPECT_EQ(scroll.bounds().origin, CGPointMake(5, 6));
    scroll.setDirectionalLockEnabled(true);
    scroll.setAlwaysBounceVertical(true);
    scroll.setAlwaysBounceHorizontal(true);
    scroll.setShowsVerticalScrollIndicator(false);
    scroll.setShowsHorizontalScrollIndicator(false);
    scroll.setIndicatorStyle(UIScrollViewIndicatorStyle::White);
    EXPECT_EQ(scroll.panGestureRecognizer().view(), scroll);
}

TEST_F(ControlHandles, ATablesMethodsAreTheClasss)
{
    const UITableView table = UITableView::withFrame(CGRectMake(0, 0, 100, 100), UITableViewStyle::InsetGrouped);
    EXPECT_EQ(table.style(), UITableViewStyle::InsetGrouped);
    table.setRowHeight(30);
    table.setSectionHeaderHeight(10);
    table.setSectionFooterHeight(UITableViewAutomaticDimension);
    table.setSeparatorStyle(UITableViewCellSeparatorStyle::None);
    table.setTableHeaderView(UIView::withFrame(CGRectMake(0, 0, 10, 20)));
    table.setTableFooterView(UIView::withFrame(CGRectMake(0, 0, 10, 30)));
    table.layoutIfNeeded();
    EXPECT_EQ(table.contentSize(), CGSizeMake(100, 50));
    EXPECT_FALSE(table.headerViewForSection(0) || table.footerViewForSection(0));
    EXPECT_FALSE(table.indexPathForCell(UITableViewCell()));
    EXPECT_TRUE(itemsOf(table.visibleCells()).empty() && itemsOf(table.indexPathsForVisibleRows()).empty());

    const UITableViewCell cell = UITableViewCell::withStyle(UITableViewCellStyle::Subtitle, string("a"));
    cell.setSelectionStyle(UITableViewCellSelectionStyle::None);
    cell.setSeparatorInset({ 0, 5, 0, 5 });
    cell.setBackgroundView(UIView::create());
    cell.setSelectedBackgroundView(UIView::create());
    cell.setSelected(true, false);
    EXPECT_TRUE(cell.isSelected());
    EXPECT_EQ(cell.accessoryType(), UITableViewCellAccessoryType::None);
    EXPECT_FALSE(cell.accessoryView());
    const auto head = UITableViewHeaderFooterView::withReuseIdentifier(string("h"));
    head.setBackgroundView(UIView::create());
    EXPECT_TRUE(head.contentView() && head.textLabel() && head.reuseIdentifier());
}

TEST_F(ControlHandles, AnIndexPathIsAValue)
{
    for (const ClassDefinition* const definition : foundationClasses())
        registerClass(*definition);
    const auto path = [](NSInteger section, NSInteger row) { return NSIndexPath::forRow(row, section); };
    EXPECT_TRUE(path(2, 3).row() == 3 && path(2, 3).section() == 2);
    EXPECT_TRUE(isEqual(path(2, 3), path(2, 3)));
    EXPECT_FALSE(isEqual(path(2, 3), path(3, 2)));
    EXPECT_EQ((send<"hash", NSUInteger>(path(2, 3))), (send<"hash", NSUInteger>(path(2, 3))));
    const auto order = [](const id& left, const id& right) { return send<"compare:", NSInteger>(left, right); };
    EXPECT_EQ(order(path(1, 9), path(2, 0)), -1);
    EXPECT_EQ(order(path(2, 1), path(2, 0)), 1);
    EXPECT_EQ(order(path(2, 1), path(2, 1)), 0);
    EXPECT_EQ((send<"indexAtPosition:", NSUInteger>(path(2, 1), NSUInteger { 2 })), NSNotFound);
    EXPECT_FALSE(asIndexPath(send<"indexPathWithIndex:">(id(NSIndexPath::classObject()), NSUInteger { 1 })));
    const id range = send<"indexSetWithIndexesInRange:">(support::classObject<"NSIndexSet">(), NSRange { 3, 2 });
    EXPECT_EQ(indexesOf(range), (std::set<NSUInteger> { 3, 4 }));
    EXPECT_TRUE(isEqual(range, indexSet({ 4, 3 })));
}

} // namespace
