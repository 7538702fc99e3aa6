#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>

/// Facts of the device and of this process, set once by the process's host before anything else runs.

namespace platform {

struct SystemVersion {
    int major = 0;
    int minor = 0;
    int patch = 0;
    friend auto operator<=>(const SystemVersion&, const SystemVersion&) = default;

    std::string text() const; ///< "16.0", or "16.0.2" where the patch isn't 0
};

/// "16", "16.0" or "16.0.2"; empty for anything else.
std::optional<SystemVersion> parseSystemVersion(std::string_view text);

struct ProcessFacts {
    std::string bundleIdentifier; ///< `[[NSBundle mainBundle] bundleIdentifier]`; may be empty
    std::string processName; ///< `[[NSProcessInfo processInfo] processName]`
    SystemVersion version;
};

void setProcessFacts(ProcessFacts facts);
const ProcessFacts& processFacts() noexcept;

/// `getpid`.
int processIdentifier() noexcept;

bool isOperatingSystemAtLeastVersion(int major, int minor, int patch) noexcept;

} // namespace platform
