#pragma once

#include "platform/runtime/class_definition.h"

namespace appledger {

/// `ALIconStore`: what is done to icons, by messages, for who can't call the library's functions. SpringBoard's main
/// thread, but for the last.
///
/// - `saveImage:forBundleIdentifier:iconView:completion:`: makes the image the application's picture; `completion`
///   (a block without arguments, or nil) is called when the refresh has begun, and never for a nil image or identifier.
/// - `resetForBundleIdentifier:iconView:`
/// - `refreshAllForBundleIdentifier:completion:`
/// - `stateForBundleIdentifier:`, any process and thread: a dictionary with the "path" of the icon file, the "token",
///   how many "images" are kept in all, and, where that is known, whether the application "hasFile".
class ALIconStore : public platform::NSObject {
public:
    static const platform::ClassDefinition definition;
};

} // namespace appledger
