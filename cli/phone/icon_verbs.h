#pragma once

#include "cli/phone/notification_verbs.h"

/// `appledger phone icons` and `phone uninstall`.

namespace cli {

struct UninstallOptions {
    std::string application;
    std::string road = "completion";
};

/// Adds the verbs; `chosen` gets what a command line asks for. `options` must outlive the command.
void addIconVerbs(CLI::App& phone, UninstallOptions& options, const std::function<void(PhoneAction)>& chosen);

/// The Home Screen as it is laid out, and what is installed and doesn't stand there.
ExitStatus phoneIcons(const phone::PhoneDirectory& directory);

/// Asks the system to remove an application. Done also when it wasn't removed: that is the answer.
ExitStatus phoneUninstall(const phone::PhoneDirectory& directory, const UninstallOptions& options);

} // namespace cli
