#pragma once

#include "cli/history/transaction.h"
#include "phone/supervisor/phone_directory.h"
#include "platform/foundation/descriptor.h"

#include <memory>
#include <optional>
#include <string>

/// The history of a phone's policies: a file of its own folder to which the command appends, a JSON object a line.
/// A transaction is one line before anything is changed, and a second one when all of it is: whoever is killed between
/// the two is followed by another who finishes it.

namespace cli {

/// Open for writing. Holds the lock among all commands: no other changes policies meanwhile.
class HistoryFile {
public:
    /// Waits ten seconds for others at most. Null, and why in `problem`, for people.
    static std::unique_ptr<HistoryFile> open(const phone::PhoneDirectory& directory, std::string& problem);

    const History& history() const noexcept { return history_; }

    /// What a killed command has begun.
    const std::optional<Transaction>& unfinished() const noexcept { return unfinished_; }

    /// Makes known what is about to be changed, on the disk. "" when that is done, else why nothing may be changed.
    std::string begin(const Transaction& transaction);

    /// All of it is changed, or nothing is any more. `changes` in place of those that were begun, where others came
    /// between. Where it can't be written, whoever comes next looks again and finds it done.
    void finish(const std::optional<std::vector<ValueChange>>& changes = std::nullopt);
    void abandon();

private:
    HistoryFile(const phone::PhoneDirectory& directory, platform::detail::Descriptor lock);

    std::string read();
    std::string append(const nlohmann::json& line, bool isToLast);
    std::string forgetOldest();

    const phone::PhoneDirectory directory_;
    const platform::detail::Descriptor lock_;
    platform::detail::Descriptor file_;
    std::size_t size_ = 0; ///< of the whole lines in the file
    History history_;
    std::optional<Transaction> unfinished_;
};

/// The history as it stands, for one who only looks. `problem`: why it can't be read, for people.
History readHistory(const phone::PhoneDirectory& directory, std::string& problem);

/// Whether a killed command has left something to finish: a look at the end of the file.
bool isSomethingUnfinished(const phone::PhoneDirectory& directory);

} // namespace cli
