#pragma once

#include "platform/handles/UINavigationItem.h"
#include "platform/handles/UIPopoverPresentationController.h"
#include "platform/handles/UITraitCollection.h"

namespace platform {

enum class UIModalPresentationStyle : NSInteger {
    Automatic = -2,
    None = -1,
    FullScreen = 0,
    PageSheet = 1,
    FormSheet = 2,
    CurrentContext = 3,
    Custom = 4,
    OverFullScreen = 5,
    OverCurrentContext = 6,
    Popover = 7,
};
enum class UIModalTransitionStyle : NSInteger { CoverVertical = 0, FlipHorizontal = 1, CrossDissolve = 2 };

class UIViewController : public Handle {
public:
    using Handle::Handle;
    static Class classObject() { return classNamed<"UIViewController">(); }
    static UIViewController create() { return created<UIViewController>(); }

    UIView view() const { return call<"view", UIView>(); }
    void setView(const UIView& view) const { call<"setView:">(view); }
    bool isViewLoaded() const { return call<"isViewLoaded", bool>(); }
    void loadViewIfNeeded() const { call<"loadViewIfNeeded">(); }
    id title() const { return call<"title", id>(); }
    void setTitle(const id& title) const { call<"setTitle:">(title); }
    UINavigationItem navigationItem() const { return call<"navigationItem", UINavigationItem>(); }
    UITraitCollection traitCollection() const { return call<"traitCollection", UITraitCollection>(); }
    void setOverrideUserInterfaceStyle(UIUserInterfaceStyle style) const
    {
        call<"setOverrideUserInterfaceStyle:">(style);
    }
    void setAdditionalSafeAreaInsets(const UIEdgeInsets& insets) const { call<"setAdditionalSafeAreaInsets:">(insets); }
    void setPreferredContentSize(CGSize size) const { call<"setPreferredContentSize:">(size); }

    UIViewController parentViewController() const { return call<"parentViewController", UIViewController>(); }
    void addChildViewController(const UIViewController& child) const { call<"addChildViewController:">(child); }
    void willMoveToParentViewController(const UIViewController& parent) const
    {
        call<"willMoveToParentViewController:">(parent);
    }
    void didMoveToParentViewController(const UIViewController& parent) const
    {
        call<"didMoveToParentViewController:">(parent);
    }
    void removeFromParentViewController() const { call<"removeFromParentViewController">(); }

    UIViewController presentedViewController() const { return call<"presentedViewController", UIViewController>(); }
    UIViewController presentingViewController() const { return call<"presentingViewController", UIViewController>(); }
    bool isBeingPresented() const { return call<"isBeingPresented", bool>(); }
    bool isBeingDismissed() const { return call<"isBeingDismissed", bool>(); }
    void setModalPresentationStyle(UIModalPresentationStyle style) const { call<"setModalPresentationStyle:">(style); }
    void setModalTransitionStyle(UIModalTransitionStyle style) const { call<"setModalTransitionStyle:">(style); }
    void setDefinesPresentationContext(bool defines) const { call<"setDefinesPresentationContext:">(defines); }
    void setTransitioningDelegate(const id& delegate) const { call<"setTransitioningDelegate:">(delegate); }
    UIPresentationController presentationController() const
    {
        return call<"presentationController", UIPresentationController>();
    }
    UIPopoverPresentationController popoverPresentationController() const
    {
        return call<"popoverPresentationController", UIPopoverPresentationController>();
    }
    /// The completion is a block, or nil.
    void present(const UIViewController& controller, bool animated, const id& completion = nil) const
    {
        call<"presentViewController:animated:completion:">(controller, animated, completion);
    }
    void dismiss(bool animated, const id& completion = nil) const
    {
        call<"dismissViewControllerAnimated:completion:">(animated, completion);
    }
};

} // namespace platform
