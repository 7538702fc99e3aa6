#pragma once

#include <string>
#include <vector>

namespace platform {

/// `[NSLocale preferredLanguages]`: the languages that the owner of the device wants, such as "en-GB", the
/// most wanted first. {"en"} unless the host of the process has said otherwise. Any thread.
const std::vector<std::string>& preferredLanguages() noexcept;

/// Said once by the host of the process, before anything else runs.
void setPreferredLanguages(std::vector<std::string> languages);

} // namespace platform
