#pragma once

#include "cli/command/verb_details.h"
#include "cli/command/verb_rows.h"

#include <CLI/CLI.hpp>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// The verbs as the library that reads the command line has them.

namespace cli {

/// What the groups of verbs are about.
struct VerbGroup {
    std::string_view words;
    std::string_view description;
};

std::span<const VerbGroup> verbGroups() noexcept;

class CommandTree {
public:
    CommandTree();

    /// Throws what the library throws of a line that can't be read.
    void parse(int argumentCount, char** arguments) { app_.parse(argumentCount, arguments); }

    CLI::App& app() noexcept { return app_; }
    /// The group or verb of those words; null when there is none.
    const CLI::App* find(const std::vector<std::string>& words) const;
    const std::deque<VerbDetails>& verbs() const noexcept { return verbs_; }

    /// Of the line that was read.
    const Action& action() const noexcept { return action_; }
    const VerbDetails* verb() const noexcept { return verb_; }
    const std::string& root() const noexcept { return root_; }
    bool isRootGiven() const { return app_.count("--root") > 0; }
    bool isJson() const noexcept { return json_; }
    bool isVerbose() const noexcept { return verbose_; }

private:
    CLI::App& commandOf(std::string_view words);
    void add(const VerbRow& row);

    CLI::App app_;
    std::deque<VerbDetails> verbs_; ///< where the verbs' arguments keep what they are
    std::string root_;
    bool json_ = false;
    bool verbose_ = false;
    Action action_;
    const VerbDetails* verb_ = nullptr;
};

/// What somebody meant who wrote these words, of which the last is no verb of its group: "appledger phone tap", or "".
std::string meantVerb(const CommandTree& tree, const std::vector<std::string>& words);

} // namespace cli
