#include "cli/command/default_root.h"

#include <array>
#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace cli {

namespace {

/// The variable's value where it is an absolute path; a relative one would be another directory in each folder.
std::string directoryFrom(const char* variable)
{
    const char* const value = std::getenv(variable);
    return value && *value == '/' ? value : "";
}

std::string homeOfAccount()
{
    std::array<char, 16 * 1024> buffer;
    passwd account {};
    passwd* found = nullptr;
    const bool isKnown = ::getpwuid_r(::geteuid(), &account, buffer.data(), buffer.size(), &found) == 0 && found;
    return isKnown && found->pw_dir && *found->pw_dir == '/' ? found->pw_dir : "";
}

} // namespace

std::string defaultRoot()
{
    constexpr const char* phone = "/appledger/phone";
    if (const char* const named = std::getenv("APPLEDGER_ROOT"); named && *named != '\0')
        return named;
    if (const std::string data = directoryFrom("XDG_DATA_HOME"); !data.empty())
        return data + phone;
    std::string home = directoryFrom("HOME");
    if (home.empty())
        home = homeOfAccount();
    return home.empty() ? "" : home + "/.local/share" + phone;
}

} // namespace cli
