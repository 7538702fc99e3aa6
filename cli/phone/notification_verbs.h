#pragma once

#include "cli/command/output.h"
#include "phone/supervisor/phone_directory.h"

#include <functional>
#include <optional>
#include <string>

namespace CLI {
class App;
}

/// `appledger phone push` and `phone notifications`.

namespace cli {

struct PushOptions {
    std::string application;
    std::string title;
    std::string body;
    std::optional<long> badge;
    bool hasSound = false;
    std::string road = "bulletin";
};

using PhoneAction = std::function<ExitStatus(const phone::PhoneDirectory& directory)>;

/// Adds the verbs; `chosen` gets what a command line asks for. `options` must outlive the command.
void addNotificationVerbs(CLI::App& phone, PushOptions& options, const std::function<void(PhoneAction)>& chosen);

/// Publishes a notification, and says whether it was published or dropped, sounded, and alerted.
ExitStatus phonePush(const phone::PhoneDirectory& directory, const PushOptions& options);
ExitStatus phoneNotifications(const phone::PhoneDirectory& directory);

} // namespace cli
