#pragma once

#include "platform/graphics/objects.h"
#include "platform/runtime/weak.h"
#include "platform/uikit/asking.h"

#include <optional>
#include <string>
#include <vector>

/// The C++ classes behind views, for the files of this folder alone. Main thread.

namespace platform {

class ViewObject;
class TouchObject;
class WindowObject;

/// What becomes of a touch that begins in a view's contents.
enum class ContentTouch {
    Delivered,
    HeldBack, ///< for a moment, since it may be the beginning of a scroll
    Swallowed,
};

/// What is animated, each as up to six numbers.
enum class Animatable { Bounds, Center, Transform, Alpha, BackgroundColor, CornerRadius };

/// How a view's box is drawn; a layer of its own has a place among its superlayer's.
class LayerObject : public NSObject {
public:
    static const ClassDefinition definition;
    ~LayerObject() override;

    ViewObject* view = nullptr; ///< null for a layer without a view
    LayerObject* superlayer = nullptr;
    std::vector<Ref<LayerObject>> sublayers {};
    CGRect frame {}; ///< of a layer without a view
    id backgroundColor {}; ///< likewise
    double opacity = 1; ///< likewise
    bool hidden = false; ///< likewise
    double cornerRadius = 0;
    NSUInteger maskedCorners = AllCorners; ///< those that are round
    id cornerCurve {}; ///< "continuous"; all else is circular
    bool masksToBounds = false;
    id borderColor {};
    double borderWidth = 0;
    id shadowColor {}; ///< nil: black
    float shadowOpacity = 0;
    CGSize shadowOffset { 0, -3 };
    double shadowRadius = 3;
    id contents {}; ///< an image, or nil

    void setCornerRadius(double radius);
    void addSublayer(const id& sublayer);
    void insertSublayer(const id& sublayer, unsigned index);
    void removeFromSuperlayer();
    CGRect bounds() const;
    /// Its box, were its bounds and its radius these.
    Path outline(const CGRect& bounds, double radius) const;

    /// What the layer shows between its background and what stands on it.
    virtual void drawContents(Canvas& canvas, const CGRect& bounds) const;
};

class ViewObject : public NSObject {
public:
    static const ClassDefinition definition;
    ViewObject() = default;
    ~ViewObject() override;

    CGRect bounds {};
    CGPoint center {};
    CGAffineTransform transform {};
    double alpha = 1;
    bool hidden = false;
    bool userInteractionEnabled = true;
    bool multipleTouchEnabled = false;
    bool opaque = true;
    bool translatesAutoresizingMaskIntoConstraints = true;
    unsigned long autoresizingMask = 0;
    long tag = 0;
    long semanticContentAttribute = 0;
    long overrideStyle = 0; ///< of what stands in the view, by the system's numbers; 0: as what the view stands in
    long contentMode = 0;
    id backgroundColor {};
    id tintColor {}; ///< nil: the superview's
    id accessibilityLabel {};
    id accessibilityIdentifier {};
    id constraints {}; ///< mutable array of those that are installed on this view; nil for none
    id gestureRecognizers {}; ///< mutable array, or nil
    float horizontalHugging = 250;
    float verticalHugging = 250;
    Weak<NSObject> controller {}; ///< whose view it is; nil for most
    ViewObject* superview = nullptr;
    std::vector<Ref<ViewObject>> subviews {};

    LayerObject& layer();
    const LayerObject* layerIfMade() const noexcept { return layer_.get(); }

    CGRect frame() const;
    void setFrame(CGRect frame);
    void setBounds(CGRect bounds);
    void setCenter(CGPoint center);
    void setTransform(CGAffineTransform transform);
    void setAlpha(double alpha);
    void setBackgroundColor(const id& color);

    bool needsLayout() const noexcept { return needsLayout_; }
    void setNeedsLayout();
    /// What the content takes up has changed: whoever's layout that can alter is laid out anew, and nobody else.
    void contentSizeChanged();
    /// Lays out this view and what stands in it, as far as it has asked for it.
    void layoutTree();

    void insertSubview(const Ref<ViewObject>& view, std::size_t index);
    void removeFromSuperview();
    bool isDescendantOf(const ViewObject& other) const noexcept;
    /// The window that the view stands in; null when it stands in none.
    virtual WindowObject* window() noexcept;

    /// How far bars and round corners of the screen reach into the view; nothing outside of a window.
    UIEdgeInsets safeArea() const;
    /// The view hears of another safe area with its next layout.
    void safeAreaMayHaveChanged();

    /// To and from the coordinates of the root of the tree that the view stands in.
    CGPoint pointInRoot(CGPoint point) const;
    CGPoint pointFromRoot(CGPoint point) const;
    const ViewObject& root() const noexcept;

    /// The tint in force here.
    Color effectiveTint() const;

    /// What the view itself shows between its background and its subviews. `bounds` are those that are seen now.
    virtual void drawContent(Canvas& canvas, const CGRect& bounds) const;
    /// What the content takes up at its natural size, -1 where it has none. This and the next are what the messages of
    /// the same names answer unless a class says otherwise: whoever wants to know sends the message.
    virtual CGSize intrinsicContentSize() const { return { -1, -1 }; }
    virtual CGSize sizeThatFits(CGSize size) const;
    /// The text in a dump of the tree; empty for none.
    virtual std::optional<std::string> shownText() const { return std::nullopt; }
    virtual ContentTouch contentTouch() { return ContentTouch::Delivered; }
    /// False where the view itself lays out this subview, constraints or not.
    virtual bool constrainsSubview(const ViewObject&) const noexcept { return true; }

private:
    void leaveSuperview(bool staysInWindow);
    void movesToWindow(WindowObject* next);
    void movedToWindow(WindowObject* former);
    void resizeSubviews(CGSize former);

    void checkSafeArea();
    void noticeSafeArea();

    Ref<LayerObject> layer_ {};
    UIEdgeInsets noticedSafeArea_ {};
    bool needsLayout_ = true;
};

/// The view, or null for nil and for any other object.
inline ViewObject* asViewObject(const id& object)
{
    return as<ViewObject>(object);
}

/// Give the view another place by the messages that a class may answer by its own; an equal place is none.
void place(ViewObject& view, const CGRect& frame);
void place(ViewObject& view, const CGRect& bounds, CGPoint center);

/// The view's size by its content and its own constraints, in a width of that much at most; what it can't say is 0.
CGSize fittingSize(ViewObject& view, double width);

/// Frames of the views below `view` that constraints place. `view` keeps its own.
void solveConstraints(ViewObject& view);
/// Whether the view's own constraints fix its width and its height.
bool hasFixedSize(const ViewObject& view);
/// Whether the ancestor has a constraint on something that stands in the view.
bool constrainsInside(const ViewObject& ancestor, const ViewObject& view);
/// Takes away what holds the view to anything outside of it.
void dropConstraintsAcross(ViewObject& view);

} // namespace platform
