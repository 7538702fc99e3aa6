#include "scenario/json_vocabulary.h"

#include "support/golden.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <sstream>

namespace scenario {

namespace {

using Json = nlohmann::json;

/// What stands in a cell of a table's row, without the spaces around it.
std::string cell(const std::string& row, int number)
{
    std::istringstream cells(row);
    std::string text;
    for (int index = 0; index <= number; ++index)
        std::getline(cells, text, '|');
    const std::size_t start = text.find_first_not_of(' ');
    return start == std::string::npos ? "" : text.substr(start, text.find_last_not_of(' ') - start + 1);
}

/// From a key, or the beginning of several ("seconds…"), to its type.
std::map<std::string, std::string> documentedTypes()
{
    std::ifstream document(support::folderOf(__FILE__).parent_path().parent_path() / "docs/json.md");
    std::map<std::string, std::string> types;
    for (std::string line; std::getline(document, line);)
        if (line.starts_with("| `"))
            types[cell(line, 1).substr(1, cell(line, 1).size() - 2)] = cell(line, 2);
    return types;
}

bool isOfType(const Json& value, const std::string& type)
{
    if (const std::size_t either = type.find(" or "); either != std::string::npos)
        return isOfType(value, type.substr(0, either)) || isOfType(value, type.substr(either + 4));
    return (type == "text" && value.is_string()) || (type == "flag" && value.is_boolean())
        || (type == "number" && value.is_number()) || (type == "list" && value.is_array())
        || (type == "object" && value.is_object()) || (type == "null" && value.is_null());
}

std::string typeOf(const std::map<std::string, std::string>& types, const std::string& key)
{
    for (const auto& [known, type] : types)
        if (known == key || (known.ends_with("…") && key.starts_with(known.substr(0, known.size() - 3))))
            return type;
    return "";
}

constexpr const char* ofOthers[] { "after", "before", "content", "domain", "policies", "record" };
constexpr const char* otherNames[] { "app", "bundleID", "bundleIdentifier", "id" };

std::string problemWithin(const Json& value, const std::map<std::string, std::string>& types)
{
    if (value.is_array())
        for (const Json& item : value)
            if (std::string problem = problemWithin(item, types); !problem.empty())
                return problem;
    if (!value.is_object())
        return "";
    for (const auto& [key, member] : value.items()) {
        if (std::ranges::find(otherNames, key) != std::end(otherNames) && !value.contains("process"))
            return "an application is called " + key;
        if (const std::string type = typeOf(types, key); !type.empty() && !isOfType(member, type))
            return key + " isn't " + type + ": " + member.dump().substr(0, 200);
        if (std::ranges::find(ofOthers, key) != std::end(ofOthers))
            continue;
        if (std::string problem = problemWithin(member, types); !problem.empty())
            return problem;
    }
    return "";
}

} // namespace

std::string problemOfAnswer(const Json& answer, int status)
{
    static const std::map<std::string, std::string> types = documentedTypes();
    if (types.size() < 15)
        return "docs/json.md can't be read";
    if (answer.value("version", Json()) != 1)
        return "version";
    if (answer.value("ok", Json()) != (status == 0))
        return "ok";
    if (status != 0 && (answer.value("status", Json()) != status || !answer.contains("error")))
        return "status";
    for (const Json& change : answer.value("changed", Json::array()))
        if (change.contains("key") == change.contains("file") || !change.contains("before")
            || !change.contains("after"))
            return "changed";
    return problemWithin(answer, types);
}

} // namespace scenario
