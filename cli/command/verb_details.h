#pragma once

#include "cli/command/word.h"

#include <optional>
#include <string>
#include <vector>

/// What is known of a verb beside what it does: for its help, for completion, and for the manual.

namespace cli {

/// What an argument names.
enum class ArgumentKind { Other, Application, Key, Process, Profile, File };

struct ArgumentDetails {
    std::string name; ///< "ID", or "--road"
    std::string description {};
    std::string value {}; ///< what stands for the value in the usage; "" for a flag and for one without dashes
    ArgumentKind kind = ArgumentKind::Other;
    std::vector<std::string> words {}; ///< that it may be; none: any
    std::string example {};
    bool isRequired = false;
    bool takesSeveral = false;
    bool isFlag = false;

    bool isOption() const noexcept { return name.starts_with('-'); }
};

/// Where the identifiers of applications come to stand that the line names: each is exchanged for the one that is
/// meant.
struct ApplicationArgument {
    Word* word = nullptr;
    std::optional<Word>* ifGiven = nullptr;
    std::vector<Word>* several = nullptr;
};

struct VerbDetails {
    std::string words; ///< "phone tap"
    std::string description;
    std::vector<ArgumentDetails> arguments {};
    std::vector<ApplicationArgument> applications {};
    bool isHidden = false; ///< for programs
    const bool* isStrict = nullptr; ///< an application that isn't there is refused

    /// A line that the verb understands: "appledger phone tap com.example.notes".
    std::string example() const;
};

} // namespace cli
