#include "cli/policy/policy_set_file.h"

#include "cli/history/value_text.h"
#include "cli/policy/policy_set.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/values.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <vector>

namespace cli {

using Json = nlohmann::json;

namespace {

constexpr std::size_t largestFile = std::size_t { 16 } << 20;
constexpr std::size_t deepestNesting = 32;

std::size_t lineOf(std::string_view bytes, std::size_t position)
{
    return 1
        + static_cast<std::size_t>(std::count(
            bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(std::min(position, bytes.size())), '\n'));
}

std::string atLine(std::size_t line, const std::string& problem)
{
    return "line " + std::to_string(line) + ": " + problem;
}

/// Where a key first stands; the first line where it can't be found.
std::size_t lineOfKey(std::string_view bytes, const std::string& key)
{
    for (const std::string& written : { Json(key).dump(), "<key>" + key + "</key>" })
        if (const std::size_t at = bytes.find(written); at != std::string_view::npos)
            return lineOf(bytes, at);
    return 1;
}

/// The line on which brackets first stand too deep in each other; 0 when they don't.
std::size_t lineThatIsTooDeep(std::string_view text)
{
    std::size_t depth = 0;
    bool isInText = false;
    for (std::size_t index = 0; index < text.size(); ++index) {
        const char c = text[index];
        if (isInText) {
            if (c == '\\')
                ++index;
            else if (c == '"')
                isInText = false;
        } else if (c == '"') {
            isInText = true;
        } else if (c == '[' || c == '{') {
            if (++depth > deepestNesting)
                return lineOf(text, index);
        } else if ((c == ']' || c == '}') && depth > 0) {
            --depth;
        }
    }
    return 0;
}

/// The line of the first element that isn't closed in order, or the last line.
std::size_t lineOfXmlFault(std::string_view text)
{
    std::vector<std::string_view> open;
    for (std::size_t start = text.find('<'); start != std::string_view::npos; start = text.find('<', start + 1)) {
        if (text.substr(start, 4) == "<!--") {
            start = text.find("-->", start);
            if (start == std::string_view::npos)
                break;
            continue;
        }
        const std::size_t end = text.find('>', start);
        if (end == std::string_view::npos)
            return lineOf(text, start);
        std::string_view tag = text.substr(start + 1, end - start - 1);
        if (tag.starts_with('?') || tag.starts_with('!') || tag.ends_with('/'))
            continue;
        const bool isEnd = tag.starts_with('/');
        tag.remove_prefix(isEnd ? 1 : 0);
        tag = tag.substr(0, tag.find_first_of(" \t\r\n"));
        if (!isEnd)
            open.push_back(tag);
        else if (open.empty() || open.back() != tag)
            return lineOf(text, start);
        else
            open.pop_back();
    }
    return lineOf(text, text.size());
}

SetReading checked(std::string_view bytes, Json set)
{
    if (const auto problem = problemOfSet(set))
        return { nullptr, atLine(lineOfKey(bytes, problem->key), problem->problem) };
    return { std::move(set) };
}

SetReading fromJson(std::string_view bytes)
{
    if (const std::size_t line = lineThatIsTooDeep(bytes))
        return { nullptr, atLine(line, "it is nested too deep") };
    try {
        return checked(bytes, Json::parse(bytes));
    } catch (const Json::parse_error& error) {
        const bool isCut = error.byte > bytes.size();
        return { nullptr,
            atLine(lineOf(bytes, error.byte == 0 ? 0 : error.byte - 1),
                isCut ? "the file ends in the middle" : "it isn't JSON from here on") };
    }
}

} // namespace

SetReading setFromBytes(std::string_view bytes)
{
    const std::size_t start = bytes.find_first_not_of(" \t\r\n");
    if (start == std::string_view::npos)
        return { nullptr, "line 1: the file is empty" };
    const bool isBinary = bytes.starts_with("bplist");
    if (!isBinary && bytes[start] != '<')
        return fromJson(bytes);
    const platform::PropertyListReading reading = platform::readPropertyList(bytes);
    if (reading.value)
        return checked(bytes, jsonFromValue(reading.value));
    return { nullptr,
        isBinary ? std::string(reading.problem) : atLine(lineOfXmlFault(bytes), std::string(reading.problem)) };
}

SetReading setFromFile(const std::string& path)
{
    std::ifstream file;
    if (path != "-") {
        file.open(path, std::ios::binary);
        if (!file)
            return { nullptr, path + " can't be read" };
    }
    std::istream& input = path == "-" ? std::cin : file;
    std::string bytes;
    char buffer[1 << 16];
    while (bytes.size() <= largestFile && (input.read(buffer, sizeof buffer) || input.gcount() > 0))
        bytes.append(buffer, static_cast<std::size_t>(input.gcount()));
    if (input.bad() || (bytes.empty() && !input.eof()))
        return { nullptr, path + " can't be read" };
    if (bytes.size() > largestFile)
        return { nullptr, path + ", " + atLine(lineOf(bytes, largestFile), "it goes on behind 16 MiB") };
    SetReading reading = setFromBytes(bytes);
    if (!reading.problem.empty())
        reading.problem = path + ", " + reading.problem;
    return reading;
}

std::string bytesOfSet(const Json& set, const std::string& path)
{
    if (!path.ends_with(".plist"))
        return set.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
    const auto value = valueFromJson(set);
    const auto bytes = value ? platform::dataFromPropertyList(*value, platform::PropertyListFormat::Xml) : std::nullopt;
    return bytes.value_or(std::string());
}

} // namespace cli
