#pragma once

#include "platform/runtime/class_definition.h"

namespace appledger {

/// `ALHelper`: the library's pictures, and folders opened in a file manager. Main thread.
class ALHelper : public platform::NSObject {
public:
    static const platform::ClassDefinition definition;
    static ALHelper& sharedInstance();

    /// `imageNamed:`, a class method. Nil where there is no such picture, or no bundle.
    static platform::id imageNamed(const platform::id& name);

    /// `openDirectoryAtURL:fromController:`, a class method: in the file manager that the owner has chosen, or another
    /// one where that is missing. Where there is none, an alert that the controller presents says so.
    static void openDirectoryAtURL(const platform::id& url, const platform::id& controller);

    platform::id resoucesBundle; ///< spelled as the system's other code knows it; nil where there is none
};

} // namespace appledger
