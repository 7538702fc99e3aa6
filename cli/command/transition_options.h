#pragma once

#include "cli/command/word.h"

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

/// How an application opens another one, as the command line says it.

namespace cli {

class Arguments;

struct TransitionOptions {
    Word source {}; ///< "" for none
    Word action { "none" }; ///< none, openURL, other
    bool opensUrl = false;
    bool isBreadcrumb = false;
    bool hasNoLabel = false;
    std::optional<Word> label {};
    std::optional<Word> requester {};
    std::optional<Word> requesterBundle {};
    std::optional<Word> previousScene {};

    /// Whether any of them was given, so that it is a transition from another application at all.
    bool any() const;
};

/// Adds --from, --url, --action, --breadcrumb, --label, --no-label, --requester, --requester-bundle and
/// --previous-scene to a verb. `options` must outlive it.
void addTransitionOptions(Arguments& arguments, TransitionOptions& options);

/// The transition in the form in which the phone takes it and `explain redirect` reads it. What wasn't said is
/// as it usually is: a source asks in its own name for its destination, and a breadcrumb leads back to the
/// application whose scene was in front, with no scene to start from.
nlohmann::json transitionRecord(const TransitionOptions& options, const std::string& destination);

} // namespace cli
