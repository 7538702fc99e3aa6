#include "phone/substrate/injection.h"

#include "platform/darwin/images.h"
#include "platform/darwin/system.h"
#include "platform/foundation/files.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/values.h"

namespace phone {

using namespace platform;

namespace {

bool lists(const DictionaryValue& filter, std::string_view key, const std::string& name)
{
    return itemsOf(filter[key]).contains(name);
}

bool filterNamesThisProcess(const std::string& filterPath)
{
    const id filter = pairsOf(dictionaryWithContentsOfFile(filterPath))["Filter"];
    const DictionaryValue names = pairsOf(filter);
    return lists(names, "Bundles", processFacts().bundleIdentifier)
        || lists(names, "Executables", processFacts().processName);
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
        if (!filterNamesThisProcess(filter))
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
