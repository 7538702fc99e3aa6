#pragma once

#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace cli {

/// What a phone's policies are to be, as simply as it can be said: whole states, kept one beside the other.
class PolicyModel {
public:
    using Json = nlohmann::json;
    /// "ALHiddenApps", "mute", …; what isn't set isn't there.
    using State = std::map<std::string, Json>;

    const State& state() const noexcept { return state_; }

    void change(State next)
    {
        if (next == state_)
            return;
        undo_.push_back(state_);
        redo_.clear();
        state_ = std::move(next);
    }

    bool canUndo() const noexcept { return !undo_.empty(); }
    bool canRedo() const noexcept { return !redo_.empty(); }

    using Profiles = std::map<std::string, State>;
    const Profiles& profiles() const noexcept { return profiles_; }
    void save(const std::string& name) { profiles_[name] = state_; }

    void undo()
    {
        redo_.push_back(state_);
        state_ = undo_.back();
        undo_.pop_back();
    }

    void redo()
    {
        undo_.push_back(state_);
        state_ = redo_.back();
        redo_.pop_back();
    }

private:
    State state_;
    std::vector<State> undo_;
    std::vector<State> redo_;
    Profiles profiles_;
};

} // namespace cli
