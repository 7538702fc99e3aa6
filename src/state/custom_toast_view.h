#pragma once

#include "platform/runtime/class_definition.h"

namespace appledger {

/// `CustomToastView`, a pill that drops in from the top of the topmost visible window and leaves by itself:
///
///     initWithTitle:subtitle:icon:autoHide:   texts, an image or nil, and seconds (an integer) after which it hides; 0
///                                             or less: it stays. The seconds count from here.
///     presentToast                            shows it, in place of one that shows; nothing without a visible window
///     hideWithAnimation, hideAfter:           slides it out, at once or after seconds (a double)
///     getKeyWindow                            the window that it would take, or nil
///     titleLabel, subtitleLabel, containerView, hStack, vStack
///
/// All on the main queue. The library registers it when it loads, so that whoever knows its name finds it. Nil in a
/// process without views.
extern const platform::ClassDefinition CustomToastView_class;
platform::Class customToastViewClass();

} // namespace appledger
