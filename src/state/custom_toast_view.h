#pragma once

#include "platform/runtime/class.h"

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
/// All on the main queue. Nil in a process without views.
platform::Class customToastViewClass();

} // namespace appledger
