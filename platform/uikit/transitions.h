#pragma once

#include "platform/uikit/view_controllers.h"

#include <functional>

/// How one controller gives way to another: the presentation that arranges both, the context that an animator is
/// handed, and the coordinator with which others animate alongside.

namespace platform {

/// The style that stands for none: a sheet since 13, the whole screen before.
PresentationStyle automaticStyle() noexcept;

class CoordinatorObject : public NSObject {
public:
    static const ClassDefinition definition;

    Weak<TransitionContextObject> context {};
    double duration = 0;

    /// False once the transition is over.
    bool animateAlongside(const id& animation, const id& completion);
    /// Whoever has asked is animated now.
    void start();
    void finish();

private:
    enum class Stage { Waiting, Running, Over };
    Stage stage_ = Stage::Waiting;
    std::vector<id> animations_ {};
    std::vector<id> completions_ {};
};

class TransitionContextObject : public NSObject {
public:
    static const ClassDefinition definition;

    Ref<ViewObject> container {};
    Ref<ViewControllerObject> from {};
    Ref<ViewControllerObject> to {};
    id fromView {};
    id toView {};
    CGRect initialFromFrame {};
    CGRect finalFromFrame {};
    CGRect initialToFrame {};
    CGRect finalToFrame {};
    bool isAnimated = false;
    bool isDismissal = false;
    bool wasCancelled = false;
    PresentationStyle style = PresentationStyle::None;
    Ref<CoordinatorObject> coordinator {}; ///< null without an animation
    std::function<void(bool)> completion {}; ///< given whether the transition has been completed

    /// Has the animator animate, or completes at once for a nil one. Held by the controllers until it is over.
    void run(const id& animator);
    /// What the animator says at its end; a second time changes nothing.
    void complete(bool didComplete);
    /// Done when the transition is over; at once when it is.
    void afterwards(std::function<void()> work);

private:
    id animator_ {};
    bool isOver_ = false;
    std::vector<std::function<void()>> afterwards_ {};
};

class PresentationControllerObject : public NSObject {
public:
    static const ClassDefinition definition;

    Weak<ViewControllerObject> presented {};
    Weak<ViewControllerObject> presenting {};
    Weak<NSObject> delegate {};
    Ref<ViewObject> container {}; ///< while the presented controller is shown
    PresentationStyle style = PresentationStyle::Custom;

    /// The bodies of messages of the same meaning.
    virtual CGRect presentedFrame() const;
    virtual bool removesPresentersView() const;
    virtual void willPresent() { }
    virtual void willDismiss() { }
    virtual void layOut();

    /// How it comes and goes where no delegate says so.
    virtual id animator(bool dismisses) const;

    id presentedView() const;
    /// Takes the presenting controller's view off the screen, and has it back where it was.
    void takePresenterAway();
    void bringPresenterBack();
    bool tookPresenter() const noexcept { return tookPresenter_; }

private:
    Weak<ViewObject> formerSuperview_ {};
    bool tookPresenter_ = false;
};

/// A card over a dimmed presenter, which steps back.
Ref<PresentationControllerObject> makeSheetPresentation(PresentationStyle style);
/// A bubble with an arrow.
Ref<PresentationControllerObject> makePopoverPresentation();

/// The ways in which the system brings views in and takes them out.
enum class TransitionLook { CoverVertical, FlipHorizontal, CrossDissolve, Alert, Fade };
id makeAnimator(TransitionLook look, bool dismisses);

/// The dimmed ground below what is presented; `action` is sent to the target at a tap.
Ref<ViewObject> makeDimming(const Color& light, const Color& dark, const id& target, SEL action);

extern const ClassDefinition UIPopoverPresentationController_class;

} // namespace platform
