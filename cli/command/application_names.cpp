#include "cli/command/application_names.h"

#include "cli/command/nearest.h"
#include "phone/device/web_clips.h"
#include "phone/launchservices/installed_applications.h"
#include "platform/foundation/files.h"

#include <algorithm>
#include <cctype>

namespace cli {

namespace {

constexpr std::size_t shortestPart = 2; ///< letters of a name

std::string small(std::string_view text)
{
    std::string result(text);
    std::ranges::transform(
        result, result.begin(), [](char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); });
    return result;
}

std::string shortened(const std::string& word)
{
    constexpr std::size_t enough = 60;
    return word.size() <= enough ? word : word.substr(0, enough) + "…";
}

std::string listed(const std::vector<const KnownApplication*>& applications)
{
    std::string list;
    for (const KnownApplication* const application : applications)
        list += (list.empty() ? "" : ", ") + application->name + " (" + application->identifier + ")";
    return list;
}

std::string noteOn(const std::vector<KnownApplication>& known, const std::string& word)
{
    std::vector<std::string> candidates;
    for (const KnownApplication& application : known) {
        candidates.push_back(application.identifier);
        candidates.push_back(application.name);
    }
    std::string note = "no application here is called " + shortened(word);
    const auto meant = nearest(word, candidates);
    if (!meant)
        return note;
    const auto found = std::ranges::find_if(known, [&meant](const KnownApplication& application) {
        return application.identifier == *meant || application.name == *meant;
    });
    return note + "; the nearest is " + listed({ &*found });
}

} // namespace

std::vector<KnownApplication> knownApplications(const phone::PhoneDirectory& directory)
{
    std::vector<KnownApplication> known;
    if (!directory.problem().empty() || !platform::setDeviceRoot(directory.root()))
        return known;
    for (const phone::InstalledApplication& application : phone::installedApplications())
        known.push_back({ application.bundleIdentifier, application.displayName });
    for (const phone::WebClip& clip : phone::webClips())
        known.push_back({ clip.identifier, clip.title });
    return known;
}

MeantApplication meantApplication(const std::vector<KnownApplication>& known, const std::string& word)
{
    if (std::ranges::find(known, word, &KnownApplication::identifier) != known.end())
        return { word, true };
    const std::string wanted = small(word);
    std::vector<const KnownApplication*> whole;
    std::vector<const KnownApplication*> part;
    for (const KnownApplication& application : known) {
        const std::string name = small(application.name);
        if (name == wanted)
            whole.push_back(&application);
        else if (wanted.size() >= shortestPart && name.find(wanted) != std::string::npos)
            part.push_back(&application);
    }
    const auto& meant = whole.empty() ? part : whole;
    if (meant.size() == 1)
        return { meant.front()->identifier, true };
    if (meant.size() > 1)
        return { word, false, {}, shortened(word) + " may be any of " + listed(meant) };
    return { word, false, known.empty() ? "" : noteOn(known, word) };
}

std::string applicationLabel(const std::vector<KnownApplication>& known, const std::string& identifier)
{
    const auto found = std::ranges::find(known, identifier, &KnownApplication::identifier);
    return found == known.end() || found->name.empty() ? identifier : found->name + " (" + identifier + ")";
}

} // namespace cli
