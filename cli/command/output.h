#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

/// What a command says: text for people, or with --json one JSON object on standard output. No other file writes
/// text to a terminal.

namespace cli {

/// Done; what was asked for can't be, or isn't there; or the line itself means nothing. One for one kind of fault.
enum class ExitStatus : int { Done = 0, Refused = 1, BadUsage = 2 };

/// Of every JSON object: what its keys mean changes with it (docs/json.md).
inline constexpr int jsonVersion = 1;

enum class OutputFormat { Text, Json };

/// For the whole command, set once.
void setOutputFormat(OutputFormat format) noexcept;
OutputFormat outputFormat() noexcept;

/// Whether what only the developers of hooks want to know is said too.
void setVerbose(bool verbose) noexcept;
bool isVerbose() noexcept;

/// Prints the object with --json, with "ok", "version" and the "warnings" so far where it has none, else the text. Text
/// that isn't UTF-8 is repaired, and control characters but for the ends of lines are shown: names come from files and
/// from others, and what a terminal obeys is none of theirs to say.
void say(std::string_view text, const nlohmann::json& object);

/// Says on standard error why a command was refused; with --json an object with "error" and the exit "status" on
/// standard output as well. Returns Refused.
ExitStatus refuse(std::string_view reason);

/// The same for a line that means nothing: an unknown word or key, a value that isn't allowed. Returns BadUsage.
ExitStatus refuseUsage(std::string_view reason);

/// Says on standard error what a command that goes on had to pass over, and in the "warnings" of what it says.
void warn(std::string_view what);

/// Shows on standard error how far a command is, in place of what was shown so before; "" takes it away. On a terminal
/// alone, and not with --json.
void tellProgress(std::string_view text);

/// What is said for the command line's own sake, --help and bad usage: text, whatever the format.
void sayUsage(std::string_view text, ExitStatus status);

/// Hands over to the system what was said. The status, or Refused, said on standard error, when not all of it could be
/// written.
ExitStatus finishOutput(ExitStatus status);

/// An object as --json prints it, without the line's end.
std::string jsonLine(const nlohmann::json& object);

/// A value for people: as JSON, but what was kept in single precision with the digits of that, 0.8 for
/// 0.800000011920929.
std::string valueText(const nlohmann::json& value);

/// A text for one line: with control characters shown, "\x1B" for an escape, and bytes that aren't UTF-8 repaired.
std::string onOneLine(std::string_view text);

} // namespace cli
