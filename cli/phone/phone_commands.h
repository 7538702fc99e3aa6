#pragma once

#include "cli/command/output.h"
#include "cli/command/transition_options.h"
#include "phone/supervisor/phone_directory.h"
#include "platform/darwin/system.h"

#include <string>
#include <vector>

/// `appledger phone …`: starts and stops a phone, and does what a finger would do on it.

namespace cli {

struct UpOptions {
    platform::SystemVersion version { 16, 0, 0 };
    bool stock = false;
    bool foreground = false;
};

ExitStatus phoneUp(const phone::PhoneDirectory& directory, const UpOptions& options);
ExitStatus phoneDown(const phone::PhoneDirectory& directory);
ExitStatus phoneStatus(const phone::PhoneDirectory& directory);
ExitStatus phoneRespring(const phone::PhoneDirectory& directory);
ExitStatus phoneKill(const phone::PhoneDirectory& directory, const std::string& process);

/// Opens applications on one of the phone's roads and says what came of it. Done also when the launch was
/// refused: the refusal is the answer.
ExitStatus phoneOpen(
    const phone::PhoneDirectory& directory, const std::string& road, const std::vector<std::string>& identifiers);
struct AuthenticateOptions {
    std::string answer; ///< "yes", "no" or "cancel"
    double after = 0; ///< seconds to wait first
};

/// Answers the prompt that is up, SpringBoard's or else Spotlight's, and says what opened in consequence.
/// Refused when none is up.
ExitStatus phoneAuthenticate(const phone::PhoneDirectory& directory, const AuthenticateOptions& options);

/// Has one application open another and says whether the transition passed, was declined and why, or went to
/// the background, and what happened on the way.
ExitStatus phoneOpenFrom(
    const phone::PhoneDirectory& directory, const TransitionOptions& transition, const std::string& identifier);
ExitStatus phoneHome(const phone::PhoneDirectory& directory);

struct ScreenshotOptions {
    std::string file;
    double scale = 3; ///< pixels a point
};

/// Writes what is on the screen as a PNG file. Refused when it can't be written.
ExitStatus phoneScreenshot(const phone::PhoneDirectory& directory, const ScreenshotOptions& options);

/// What is on the screen as text, one view a line.
ExitStatus phoneDescribe(const phone::PhoneDirectory& directory);

/// `change` is "open" or "close".
ExitStatus phoneFolder(const phone::PhoneDirectory& directory, const std::string& change, const std::string& name);

/// Ends an application's process, and says what was cleared of its caches. Refused when it doesn't run.
ExitStatus phoneExit(const phone::PhoneDirectory& directory, const std::string& identifier);

/// The names of all roads, SpringBoard's first.
std::vector<std::string> roadNames();

} // namespace cli
