#include "phone/substrate/injection.h"

#include "phone/substrate/filter.h"
#include "platform/darwin/images.h"
#include "platform/darwin/system.h"
#include "platform/foundation/files.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/text_property_list.h"
#include "platform/foundation/values.h"

namespace phone {

using namespace platform;

namespace {

/// In any form that filters are written in, the old text form too; nil when it can't be read.
id readFilter(const std::string& path)
{
    const std::optional<std::string> bytes = readFile(path);
    if (!bytes)
        return nil;
    const id filter = propertyListFromData(*bytes);
    return filter ? filter : platform::detail::readTextPropertyList(*bytes).value_or(nil);
}

std::vector<std::string>& injected()
{
    static auto* const libraries = new std::vector<std::string>;
    return *libraries;
}

} // namespace

std::vector<std::string> injectLibraries(const std::function<void(const std::string& path)>& loading)
{
    constexpr std::string_view librarySuffix = ".dylib";
    std::vector<std::string> failures;
    for (const std::string& entry : directoryEntries(substrateFolder)) {
        if (!entry.ends_with(librarySuffix))
            continue;
        const std::string path = pathByAppending(substrateFolder, entry);
        const std::string filter = path.substr(0, path.size() - librarySuffix.size()) + ".plist";
        const FilterAnswer answer
            = askFilter(readFilter(filter), processFacts().bundleIdentifier, processFacts().processName);
        if (answer == FilterAnswer::Unreadable)
            failures.push_back(path + " is passed over: its filter " + filter + " is missing, or can't be read");
        if (answer != FilterAnswer::Names)
            continue;
        loading(path);
        if (std::string failure = loadLibrary(path); failure.empty())
            injected().push_back(path);
        else
            failures.push_back(std::move(failure));
    }
    return failures;
}

const std::vector<std::string>& injectedLibraries() noexcept
{
    return injected();
}

} // namespace phone
