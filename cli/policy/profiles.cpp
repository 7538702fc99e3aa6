#include "cli/policy/profiles.h"

#include "cli/policy/policy_set.h"
#include "platform/foundation/descriptor.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace cli {

using Json = nlohmann::json;

namespace {

constexpr const char* fileName = "policy-profiles";
constexpr const char* formatName = "appledger-profiles";
constexpr int formatVersion = 1;

} // namespace

std::map<std::string, Json> readProfiles(const phone::PhoneDirectory& directory, std::string& problem)
{
    std::map<std::string, Json> profiles;
    const platform::detail::Descriptor file(directory.openRunFile(fileName, O_RDONLY));
    const std::string path = std::string(fileName) + " in " + directory.runDirectory();
    if (!file) {
        if (errno != ENOENT)
            problem = "can't read " + path + ": " + std::strerror(errno);
        return profiles;
    }
    std::string content;
    char buffer[1 << 16];
    ssize_t count = 0;
    while ((count = ::read(file.get(), buffer, sizeof buffer)) > 0)
        content.append(buffer, static_cast<std::size_t>(count));
    const Json object = Json::parse(content, nullptr, false);
    if (count < 0 || !object.is_object() || object.value("format", Json()) != formatName
        || object.value("version", Json()) != formatVersion || !object.value("profiles", Json()).is_object()) {
        problem = path + " holds no profiles that this command can read";
        return profiles;
    }
    for (const auto& [name, set] : object["profiles"].items())
        if (isProfileName(name) && !problemOfSet(set))
            profiles[name] = set;
    return profiles;
}

std::string writeProfiles(const phone::PhoneDirectory& directory, const std::map<std::string, Json>& profiles)
{
    const Json object { { "format", formatName }, { "version", formatVersion }, { "profiles", profiles } };
    const int error
        = directory.replaceRunFile(fileName, object.dump(1, ' ', false, Json::error_handler_t::replace) + "\n");
    return error == 0
        ? ""
        : "can't write " + std::string(fileName) + " in " + directory.runDirectory() + ": " + std::strerror(error);
}

bool isProfileName(const std::string& name)
{
    constexpr std::string_view allowed = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_.";
    return !name.empty() && name.size() <= 64 && name.find_first_not_of(allowed) == std::string::npos
        && name.front() != '.' && name.front() != '-';
}

} // namespace cli
