#include "phone/device/removed_applications.h"

#include "platform/foundation/property_list_file.h"
#include "platform/foundation/values.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace phone {

using namespace platform;

namespace {

// From bundle identifier to the folders that are still to go.
constexpr std::string_view file = "/var/db/removed_applications.plist";
constexpr PropertyListFileKind kind { PropertyListRoot::Dictionary, PropertyListFormat::Binary, 0644 };

id asStrings(const std::vector<std::string>& texts)
{
    std::vector<id> items;
    for (const std::string& text : texts)
        items.push_back(string(text));
    return array(std::move(items));
}

std::vector<std::string> textsOf(const id& strings)
{
    std::vector<std::string> texts;
    for (const id& item : itemsOf(strings))
        if (const auto text = asString(item))
            texts.push_back(text->text());
    return texts;
}

/// The file is read after it has lain on the disk: a name in it that is no application's folder removes nothing.
bool isOfAnApplication(std::string_view folder)
{
    constexpr std::string_view places[] { "/var/containers/Bundle/Application/",
        "/var/mobile/Containers/Data/Application/" };
    return std::ranges::any_of(places, [&](std::string_view place) { return folder.starts_with(place); })
        && !folder.ends_with('/') && folder.find("/.") == std::string_view::npos
        && folder.find("//") == std::string_view::npos;
}

/// The folders that stay, with the reasons.
std::vector<std::string> removeFolders(const std::vector<std::string>& folders)
{
    std::vector<std::string> stayed;
    for (const std::string& folder : folders)
        if (!isOfAnApplication(folder))
            stayed.push_back(folder + ": it isn't an application's");
        else if (const int error = removeTree(folder))
            stayed.push_back(folder + ": " + std::strerror(error));
    return stayed;
}

/// What has gone needn't be remembered: another application may have a folder of that name some day.
void forgetFolders(std::string_view bundleIdentifier)
{
    const WriteOutcome outcome = changePropertyListFile(std::string(file), kind,
        [&](const id& root) { return dictionaryBySetting(root, bundleIdentifier, array(std::vector<id> {})); });
    static_cast<void>(outcome.isDone()); // else the next who finishes removals removes nothing, and tries again
}

} // namespace

std::string removeForGood(std::string_view bundleIdentifier, const std::vector<std::string>& folders)
{
    const WriteOutcome outcome = changePropertyListFile(std::string(file), kind, [&](const id& root) {
        std::vector<std::string> all = textsOf(pairsOf(root)[bundleIdentifier]);
        all.insert(all.end(), folders.begin(), folders.end());
        return dictionaryBySetting(root, bundleIdentifier, asStrings(all));
    });
    if (!outcome.isDone())
        return outcome.problem;
    if (removeFolders(folders).empty())
        forgetFolders(bundleIdentifier);
    return "";
}

bool wasRemoved(std::string_view bundleIdentifier)
{
    return static_cast<bool>(pairsOf(dictionaryWithContentsOfFile(file))[bundleIdentifier]);
}

std::vector<std::string> foldersOfRemovedApplications()
{
    std::vector<std::string> folders;
    for (const auto& [identifier, ofOne] : pairsOf(dictionaryWithContentsOfFile(file)))
        for (std::string& folder : textsOf(ofOne))
            folders.push_back(std::move(folder));
    return folders;
}

std::vector<std::string> finishRemovals()
{
    std::vector<std::string> stayed;
    for (const auto& [identifier, folders] : pairsOf(dictionaryWithContentsOfFile(file))) {
        const auto text = asString(identifier);
        if (!text || itemsOf(folders).empty())
            continue;
        std::vector<std::string> left = removeFolders(textsOf(folders));
        if (left.empty())
            forgetFolders(text->view());
        stayed.insert(stayed.end(), std::make_move_iterator(left.begin()), std::make_move_iterator(left.end()));
    }
    return stayed;
}

} // namespace phone
