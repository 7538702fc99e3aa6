#pragma once

#include "phone/control/request_rows.h"
#include "phone/system/class_list.h"
#include "platform/darwin/system.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The processes of the phone: what each is called, which frameworks it has, and what it does.

namespace phone {

struct ProcessDefinition {
    std::string_view name;
    std::string_view bundleIdentifier;
    std::span<ClassList (*const)() noexcept> frameworks;
    void (*start)(); ///< the system's own code at the process's start
    std::span<const RequestRows* const> requests; ///< of the command and of other processes
};

/// The processes that a phone runs, SpringBoard first.
std::span<const ProcessDefinition> processDefinitions();

/// Null when there is none of that name.
const ProcessDefinition* processDefinition(std::string_view name);

/// Every class that the process has on that version, sorted by name. `bundleIdentifier` and `name` may be those
/// of no process of the phone: an ordinary application then, with the frameworks that every application has.
std::vector<const platform::ClassDefinition*> classesOfProcess(
    std::string_view name, std::string_view bundleIdentifier);

/// Registers them for this process, but for those named in `absent`.
void registerClassesOfProcess(std::string_view name, std::string_view bundleIdentifier,
    const platform::SystemVersion& version, std::span<const std::string> absent = {});

/// The versions of the platform that a phone can have.
constexpr int oldestVersion = 12;
constexpr int newestVersion = 17;

} // namespace phone
