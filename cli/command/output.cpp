#include "cli/command/output.h"

#include "platform/foundation/values.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>
#include <nlohmann/json.hpp>
#include <unistd.h>

namespace cli {

namespace {

OutputFormat format = OutputFormat::Text;
bool isDetailed = false;
nlohmann::json warnings = nlohmann::json::array();
bool isLost = false; ///< whether something that was said on standard output didn't get out

/// Bytes of the control character that the text (UTF-8) begins with, 0 where it begins with none: those of ASCII,
/// those behind it, which some terminals obey too, and those that turn the direction of what follows.
std::size_t lengthOfControlCharacter(std::string_view text)
{
    const auto byte
        = [&text](std::size_t index) { return index < text.size() ? static_cast<unsigned char>(text[index]) : 0U; };
    if (byte(0) < 0x20 || byte(0) == 0x7F)
        return 1;
    if (byte(0) == 0xC2 && byte(1) >= 0x80 && byte(1) < 0xA0)
        return 2;
    const bool turns = byte(0) == 0xE2
        && ((byte(1) == 0x80 && byte(2) >= 0xAA && byte(2) <= 0xAE)
            || (byte(1) == 0x81 && byte(2) >= 0xA6 && byte(2) <= 0xA9));
    return turns ? 3 : 0;
}

/// Of a character of up to three bytes.
unsigned codeOf(std::string_view character)
{
    constexpr unsigned bitsOfFirst[] { 0x7F, 0x1F, 0x0F };
    unsigned code = static_cast<unsigned char>(character[0]) & bitsOfFirst[character.size() - 1];
    for (const char c : character.substr(1))
        code = code << 6 | (static_cast<unsigned char>(c) & 0x3FU);
    return code;
}

enum class Escapes { ForPeople, OfJson };

/// What is printed instead of control characters but for those in `kept`.
std::string shown(std::string_view text, std::string_view kept, Escapes escapes)
{
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = lengthOfControlCharacter(text);
        if (length == 0 || kept.find(text[0]) != std::string_view::npos) {
            result += text[0];
            text.remove_prefix(1);
            continue;
        }
        char escape[16];
        const unsigned code = codeOf(text.substr(0, length));
        std::snprintf(escape, sizeof escape, escapes == Escapes::OfJson || code > 0xFF ? "\\u%04X" : "\\x%02X", code);
        result += escape;
        text.remove_prefix(length);
    }
    return result;
}

std::string repaired(std::string_view text)
{
    return platform::asString(platform::string(text))->text();
}

void print(std::FILE* stream, std::string_view text)
{
    const bool written = std::fwrite(text.data(), 1, text.size(), stream) == text.size()
        && (text.ends_with('\n') || std::fputc('\n', stream) != EOF);
    isLost = isLost || (stream == stdout && !written);
}

void printText(std::FILE* stream, std::string_view text)
{
    print(stream, shown(repaired(text), "\n", Escapes::ForPeople));
}

} // namespace

void setOutputFormat(OutputFormat newFormat) noexcept
{
    format = newFormat;
}

OutputFormat outputFormat() noexcept
{
    return format;
}

void setVerbose(bool verbose) noexcept
{
    isDetailed = verbose;
}

bool isVerbose() noexcept
{
    return isDetailed;
}

void say(std::string_view text, const nlohmann::json& object)
{
    if (format == OutputFormat::Text)
        return printText(stdout, text);
    nlohmann::json whole = object.is_object() ? object : nlohmann::json::object();
    whole.emplace("ok", true);
    whole.emplace("version", jsonVersion);
    if (!warnings.empty())
        whole.emplace("warnings", warnings);
    print(stdout, jsonLine(whole));
}

namespace {

ExitStatus refuseWith(ExitStatus status, std::string_view reason)
{
    printText(stderr, "appledger: " + std::string(reason));
    if (format == OutputFormat::Json)
        say({}, { { "ok", false }, { "error", reason }, { "status", static_cast<int>(status) } });
    return status;
}

} // namespace

ExitStatus refuse(std::string_view reason)
{
    return refuseWith(ExitStatus::Refused, reason);
}

ExitStatus refuseUsage(std::string_view reason)
{
    return refuseWith(ExitStatus::BadUsage, reason);
}

void warn(std::string_view what)
{
    warnings.push_back(what);
    printText(stderr, "appledger: " + std::string(what));
}

void tellProgress(std::string_view text)
{
    static bool isShown = false;
    if (format == OutputFormat::Json || ::isatty(STDERR_FILENO) == 0 || (text.empty() && !isShown))
        return;
    isShown = !text.empty();
    std::fprintf(stderr, "\r%s\x1B[K", onOneLine(text).c_str());
    std::fflush(stderr);
}

void sayUsage(std::string_view text, ExitStatus status)
{
    printText(status == ExitStatus::Done ? stdout : stderr, text);
}

ExitStatus finishOutput(ExitStatus status)
{
    isLost = std::fflush(stdout) != 0 || isLost;
    if (!isLost)
        return status;
    printText(stderr, "appledger: standard output can't be written");
    return ExitStatus::Refused;
}

std::string jsonLine(const nlohmann::json& object)
{
    return shown(object.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace), "", Escapes::OfJson);
}

std::string valueText(const nlohmann::json& value)
{
    const double exact = value.is_number_float() ? value.get<double>() : 0;
    const bool isInRange = std::abs(exact) <= std::numeric_limits<float>::max();
    const auto single = static_cast<float>(isInRange ? exact : 0);
    if (exact != 0 && static_cast<double>(single) == exact) {
        std::array<char, 32> digits {};
        return { digits.data(), std::to_chars(digits.begin(), digits.end(), single).ptr };
    }
    return value.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

std::string onOneLine(std::string_view text)
{
    return shown(repaired(text), "", Escapes::ForPeople);
}

} // namespace cli
