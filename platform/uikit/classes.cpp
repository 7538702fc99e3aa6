#include "platform/foundation/values.h"
#include "platform/graphics/objects.h"
#include "platform/uikit/application.h"
#include "platform/uikit/constraints.h"
#include "platform/uikit/control.h"
#include "platform/uikit/device.h"
#include "platform/uikit/elements.h"
#include "platform/uikit/feedback_generators.h"
#include "platform/uikit/gestures.h"
#include "platform/uikit/keyboard.h"
#include "platform/uikit/layers.h"
#include "platform/uikit/navigation.h"
#include "platform/uikit/presentations.h"
#include "platform/uikit/renderer.h"
#include "platform/uikit/screen_picture.h"
#include "platform/uikit/scroll_view.h"
#include "platform/uikit/search.h"
#include "platform/uikit/table_view.h"
#include "platform/uikit/text_field.h"
#include "platform/uikit/text_positions.h"
#include "platform/uikit/traits.h"
#include "platform/uikit/view_controllers.h"
#include "platform/uikit/views.h"
#include "platform/uikit/visual_effects.h"
#include "platform/uikit/window_scene.h"

/// The door of the library: its classes, and the functions of its host as class methods.

namespace platform {

namespace {

id pictureAtScale(const id&, SEL, double scale)
{
    return pictureOfWindows(scale);
}

id descriptionOfWindows(const id&, SEL)
{
    return string(describeScreen());
}

id elements(const id&, SEL)
{
    return elementsOfWindows();
}

id viewAt(const id&, SEL, CGPoint point)
{
    return viewOfWindowsAt(point);
}

void touchAt(const id&, SEL, CGPoint point, NSInteger phase)
{
    touchScreen(point, static_cast<TouchPhase>(phase));
}

void setSize(const id&, SEL, CGSize size, double scale)
{
    changeScreenSize(size, scale);
}

void setInterfaceStyle(const id&, SEL, NSInteger style)
{
    changeScreenStyle(static_cast<InterfaceStyle>(style));
}

bool typeText(const id&, SEL, const id& text)
{
    const auto typed = asString(text);
    return typed && enterOnKeyboard(*typed);
}

bool pressKey(const id&, SEL, const id& name)
{
    const auto text = asString(name);
    return text && pressKeyOnKeyboard(*text);
}

constexpr MethodDefinition screenFunctions[] {
    classMethod<"descriptionOfWindows", &descriptionOfWindows>(),
    classMethod<"elementsOfWindows", &elements>(),
    classMethod<"pictureAtScale:", &pictureAtScale>(),
    classMethod<"pressKey:", &pressKey>(),
    classMethod<"setInterfaceStyle:", &setInterfaceStyle>(),
    classMethod<"setSize:scale:", &setSize>(),
    classMethod<"touchAt:phase:", &touchAt>(),
    classMethod<"typeText:", &typeText>(),
    classMethod<"viewAt:", &viewAt>(),
};

const ClassDefinition UIScreenFunctions_class { .name = "UIScreenFunctions", .methods = screenFunctions };

using ClassSpan = std::span<const ClassDefinition* const>;

constexpr const ClassDefinition* classes[] {
    &CAGradientLayer_class,
    &LayerObject::definition,
    &NSLayoutAnchor_class,
    &LayoutConstraintObject::definition,
    &NSValue_class,
    &UIActivityIndicatorView_class,
    &UIAlertAction_class,
    &UIAlertController_class,
    &UIApplication_class,
    &BezierPathObject::definition,
    &BarButtonItemObject::definition,
    &UIBlurEffect_class,
    &UIButton_class,
    &ColorObject::definition,
    &ControlObject::definition,
    &UIDevice_class,
    &UIDimmingView_class,
    &EventObject::definition,
    &FontObject::definition,
    &GestureRecognizerObject::definition,
    &GraphicsContext::definition,
    &UIGraphicsFunctions_class,
    &UIGraphicsImageRenderer_class,
    &ImageObject::definition,
    &UIImageView_class,
    &UIImpactFeedbackGenerator_class,
    &UILabel_class,
    &UILongPressGestureRecognizer_class,
    &NavigationBarObject::definition,
    &NavigationControllerObject::definition,
    &NavigationItemObject::definition,
    &UINotificationFeedbackGenerator_class,
    &UIPanGestureRecognizer_class,
    &UIPasteboard_class,
    &UIPopoverPresentationController_class,
    &PresentationControllerObject::definition,
    &UIRemoteKeyboardWindow_class,
    &UIResponder_class,
    &UIScreen_class,
    &UIScreenFunctions_class,
    &ScrollViewObject::definition,
    &SearchBarObject::definition,
    &SearchControllerObject::definition,
    &UISearchTextField_class,
    &UISelectionFeedbackGenerator_class,
    &UISheetPresentation_class,
    &UIStackView_class,
    &UISwipeGestureRecognizer_class,
    &UISwitch_class,
    &TableViewObject::definition,
    &TableCellObject::definition,
    &UITableViewController_class,
    &TableSectionViewObject::definition,
    &UITapGestureRecognizer_class,
    &TextFieldObject::definition,
    &TextPositionObject::definition,
    &TextRangeObject::definition,
    &TouchObject::definition,
    &UITraitCollection_class,
    &UITransitionView_class,
    &ViewObject::definition,
    &ViewControllerObject::definition,
    &UIVisualEffect_class,
    &UIVisualEffectView_class,
    &WindowObject::definition,
    &UIWindowScene_class,
};

} // namespace

extern "C" const ClassSpan* platformUIKitClasses()
{
    static const ClassSpan all { classes };
    addStringDrawing();
    return &all;
}

} // namespace platform
