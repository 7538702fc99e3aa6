#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

/// What a command says: text for people, or with --json one JSON object on standard output.

namespace cli {

enum class ExitStatus : int { Done = 0, Refused = 1, BadUsage = 2 };

enum class OutputFormat { Text, Json };

/// For the whole command, set once.
void setOutputFormat(OutputFormat format) noexcept;
OutputFormat outputFormat() noexcept;

/// Prints the object with --json, else the text. Text that isn't UTF-8 is repaired.
void say(std::string_view text, const nlohmann::json& object);

/// Says on standard error why a command was refused; with --json an object with "error" on standard output
/// as well. Returns Refused.
ExitStatus refuse(std::string_view reason);

} // namespace cli
