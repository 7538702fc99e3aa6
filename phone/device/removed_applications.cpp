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

/// The application's list with others in it and without some. It stays when it is empty: what has such a list doesn't
/// come with the phone any more.
WriteOutcome changeFolders(
    std::string_view bundleIdentifier, const std::vector<std::string>& added, const std::vector<std::string>& dropped)
{
    return changePropertyListFile(std::string(file), kind, [&](const id& root) {
        std::vector<std::string> all = textsOf(pairsOf(root)[bundleIdentifier]);
        std::erase_if(all, [&](const std::string& folder) {
            return std::ranges::find(dropped, folder) != dropped.end()
                || std::ranges::find(added, folder) != added.end();
        });
        all.insert(all.end(), added.begin(), added.end());
        return dictionaryBySetting(root, bundleIdentifier, asStrings(all));
    });
}

std::string problemOf(const WriteOutcome& outcome)
{
    return outcome.isDone() ? "" : outcome.problem;
}

/// What has gone needn't be remembered: another application may have a folder of that name some day.
void removeAndForget(std::string_view bundleIdentifier, const std::vector<std::string>& folders)
{
    if (!removeFolders(folders).empty())
        return;
    const WriteOutcome outcome = changeFolders(bundleIdentifier, {}, folders);
    static_cast<void>(outcome.isDone()); // else the next who finishes removals removes nothing, and tries again
}

} // namespace

ApplicationsLock::ApplicationsLock(std::chrono::milliseconds patience)
{
    error_ = createDirectories("/var/db");
    if (error_ != 0)
        return;
    lock_.emplace("/var/db/applications.lock", patience);
    error_ = lock_->error();
}

std::string ApplicationsLock::problem() const
{
    if (error_ == ETIMEDOUT)
        return "another application is being installed or removed";
    return error_ == 0 ? "" : std::string("/var/db/applications.lock can't be had: ") + std::strerror(error_);
}

std::string announceFolders(std::string_view bundleIdentifier, const std::vector<std::string>& folders)
{
    return problemOf(changeFolders(bundleIdentifier, folders, {}));
}

std::string exchangeFolders(
    std::string_view bundleIdentifier, const std::vector<std::string>& folders, const std::vector<std::string>& former)
{
    const WriteOutcome outcome = changeFolders(bundleIdentifier, former, folders);
    if (outcome.isDone() && !former.empty())
        removeAndForget(bundleIdentifier, former);
    return problemOf(outcome);
}

void withdrawFolders(std::string_view bundleIdentifier, const std::vector<std::string>& folders)
{
    removeAndForget(bundleIdentifier, folders);
}

std::string removeForGood(std::string_view bundleIdentifier, const std::vector<std::string>& folders)
{
    return exchangeFolders(bundleIdentifier, {}, folders);
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
    const ApplicationsLock lock(std::chrono::milliseconds { 0 });
    if (!lock.problem().empty())
        return stayed; // who holds it has folders of its own under way
    for (const auto& [identifier, folders] : pairsOf(dictionaryWithContentsOfFile(file))) {
        const auto text = asString(identifier);
        if (!text || itemsOf(folders).empty())
            continue;
        const std::vector<std::string> all = textsOf(folders);
        std::vector<std::string> left = removeFolders(all);
        if (left.empty())
            static_cast<void>(changeFolders(text->view(), {}, all).isDone());
        stayed.insert(stayed.end(), std::make_move_iterator(left.begin()), std::make_move_iterator(left.end()));
    }
    return stayed;
}

} // namespace phone
