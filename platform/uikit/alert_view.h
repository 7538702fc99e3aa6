#pragma once

#include "platform/uikit/view_controllers.h"

namespace platform {

enum class AlertStyle : long { ActionSheet = 0, Alert = 1 };
enum class ActionStyle : long { Default = 0, Cancel = 1, Destructive = 2 };

/// A choice in an alert.
class AlertActionObject : public NSObject {
public:
    id title {};
    id handler {}; ///< a block of the action, or nil
    ActionStyle style = ActionStyle::Default;

    bool isEnabled() const noexcept { return isEnabled_; }
    void setEnabled(bool enabled);
    NSInteger styleNumber() const { return static_cast<NSInteger>(style); }

    Weak<ViewControllerObject> alert {};

private:
    bool isEnabled_ = true;
};

/// What an alert shows.
struct AlertContents {
    id title {};
    id message {};
    std::vector<id> actions {}; ///< in the order in which they are shown
    id preferred {};
    std::vector<id> textFields {};
    AlertStyle style = AlertStyle::Alert;
    bool isInPopover = false; ///< an action sheet without a ground of its own
};

/// The box with its texts and buttons. A finger that goes down on a button and up on another has chosen that one.
class AlertViewObject : public ViewObject {
public:
    static const ClassDefinition definition;

    Weak<NSObject> chooser {}; ///< is sent `_choose:` with the action

    /// Makes its subviews anew for that width; how high they are.
    double fill(const AlertContents& contents, double width);

    void touched(const id& touches, const id& event);
    void lifted(const id& touches, const id& event);
    void cancelled(const id& touches, const id& event);

private:
    struct Button {
        id action;
        id view;
    };

    double build(const AlertContents& contents, double width);
    id makeGround(const CGRect& frame, bool isOpaque);
    double addTexts(const id& ground, const AlertContents& contents, double width);
    double addButtons(const id& ground, const std::vector<id>& actions, const AlertContents& contents, double y);
    void addButton(const id& ground, const id& action, const CGRect& frame, bool isBold, double fontSize);
    const Button* buttonAt(const id& touches) const;
    void highlight(const Button* button);

    std::vector<Button> buttons_ {};
    id highlighted_ {};
};

} // namespace platform
