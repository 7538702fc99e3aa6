#pragma once

#include "cli/command/output.h"
#include "phone/supervisor/phone_directory.h"

#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

/// `appledger phone switcher`: its cards, the selection of one, and a swipe that kills.

namespace cli {

struct SwitcherOptions {
    std::vector<std::string> applications; ///< of the card to select; none: list the cards
    bool modifiers = false;
    std::string application; ///< whose card is to be swiped away
};

using SwitcherAction = std::function<ExitStatus(const phone::PhoneDirectory& directory)>;

/// Adds the verb; `chosen` gets what a command line asks for. `options` must outlive the command.
void addSwitcher(CLI::App& phone, SwitcherOptions& options, const std::function<void(SwitcherAction)>& chosen);

} // namespace cli
