#pragma once

#include "cli/history/history_file.h"
#include "cli/history/policy_values.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A change of a phone's policies: what is wanted is gathered, and then made at once, with its line in the history.

namespace cli {

/// What a commit has done.
struct CommitReport {
    std::string problem {}; ///< why nothing is changed, for people; "" when all is done
    std::vector<ItemChange> items {}; ///< what became different
    std::vector<ItemChange> left {}; ///< what somebody else has changed meanwhile, and stays as that did
    std::vector<std::string> notifications {}; ///< the names that belong to what was changed, each once
    bool isPosted = false; ///< to a phone that is up
    std::string setAside {}; ///< where a damaged file is now; "" where none was
    ChangeNumber number = 0; ///< in the history; 0 when nothing was to be done

    bool isDone() const noexcept { return problem.empty(); }
};

/// How a change is told, and what else it means.
struct CommitOptions {
    std::string verb; ///< as it was given
    std::optional<double> until {}; ///< takes itself back then, in seconds since 1970
    std::optional<ChangeNumber> undoes {};
    std::optional<ChangeNumber> redoes {};
    std::vector<ChangeNumber> ends {};
    std::vector<ItemChange> confirmed {}; ///< spoken of, changed or not
};

/// Holds the lock among all commands while it lives.
class PolicySession {
public:
    /// Makes the phone's directory where it is missing, and makes it the device's root. What a killed command has
    /// begun is finished, and what was to end by now is taken back. Null, and why in `problem`.
    static std::unique_ptr<PolicySession> open(const phone::PhoneDirectory& directory, std::string& problem);

    /// As they are, with what is wanted besides.
    const PolicyValues& values() const noexcept { return wanted_; }
    const History& history() const noexcept { return file_->history(); }

    void want(const ValueName& name, nlohmann::json value);

    /// Makes the changes, each in one operation under the lock of its file, then posts the notifications, each once.
    /// All are made or none, also when this process is killed: then whoever opens the next session finishes them.
    /// Posts also for `always`, whose values were set to what they were.
    CommitReport commit(CommitOptions options, const std::vector<ValueName>& always = {});

    /// The last change that wasn't taken back is; and the last that was is made again. Empty: there is none.
    std::optional<CommitReport> undo(const std::string& verb);
    std::optional<CommitReport> redo(const std::string& verb);

    /// Something that the phone does itself and that may change these values: begin, then have it done, then end.
    std::string beginWatching(const std::string& verb, const std::vector<ValueName>& names);
    void endWatching();

private:
    PolicySession(const phone::PhoneDirectory& directory, std::unique_ptr<HistoryFile> file);

    std::string finishUnfinished();
    std::string endTimers();
    CommitReport make(const Transaction& transaction, ValueChange::Clash clash, const std::vector<ValueName>& always);
    std::string keepDeadline(std::optional<double> withThis);
    void post(CommitReport& report) const;

    const phone::PhoneDirectory directory_;
    const std::unique_ptr<HistoryFile> file_;
    PolicyValues present_;
    PolicyValues wanted_;
    std::vector<ValueName> names_; ///< of what is wanted, each once, in order
};

/// Finishes what a killed command has begun and takes back what was to end by now, when there is such a thing. For
/// those who only read. "" or what went wrong.
std::string settlePolicies(const phone::PhoneDirectory& directory);

/// Seconds since 1970.
double secondsNow();

} // namespace cli
