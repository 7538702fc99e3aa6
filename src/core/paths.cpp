#include "core/paths.h"

#include "platform/darwin/images.h"
#include "platform/foundation/files.h"

#include <span>
#include <vector>

namespace appledger {

using namespace platform;

namespace {

constexpr std::string_view rootlessRoot = "/var/jb";

std::string joined(std::string_view root, std::string_view path)
{
    return std::string(root).append(path);
}

/// The text in front of each marker that the path of this library's image holds, in the markers' order;
/// none when the image has no path.
std::vector<std::string> rootsOfThisImage(std::span<const std::string_view> markers)
{
    std::vector<std::string> roots;
    const auto image = dladdr(reinterpret_cast<const void*>(&rootsOfThisImage));
    for (const std::string_view marker : markers)
        if (const auto position = image ? image->find(marker) : std::string::npos; position != std::string::npos)
            roots.push_back(image->substr(0, position));
    return roots;
}

} // namespace

std::string ALCompatiblePath(std::string_view path)
{
    static constexpr std::string_view markers[] { "/Library/MobileSubstrate/", "/usr/lib/TweakInject/",
        "/Library/PreferenceBundles/", "/Library/Application Support/" };
    if (const auto roots = rootsOfThisImage(markers); !roots.empty() && !roots.front().empty())
        return joined(roots.front(), path);
    const std::string candidate = joined(rootlessRoot, path);
    return fileExists(candidate) ? candidate : std::string(path);
}

std::string GetRootHideConfigPath()
{
    return fileExists("/var/jb/var/mobile/Library/RootHide/")
        ? "/var/jb/var/mobile/Library/RootHide/RootHideConfig.plist"
        : "/var/mobile/Library/RootHide/RootHideConfig.plist";
}

bool IsRootHideEnvironment()
{
    return directoryExists(pathByDeletingLastComponent(GetRootHideConfigPath()));
}

std::string sideFilePath(std::string_view path)
{
    return fileExists("/var/jb/") ? pathByAppending(rootlessRoot, path) : std::string(path);
}

std::optional<std::string> choicyBundlePath()
{
    // These markers differ from ALCompatiblePath's, and the two lists stay apart: other loaders put Choicy
    // elsewhere than this library.
    static constexpr std::string_view markers[] { "/Library/MobileSubstrate", "/usr/lib/TweakInject",
        "/Library/TweakInject", "/basebin", "/procursus" };
    static constexpr std::string_view bundle = "/Library/PreferenceBundles/ChoicyPrefs.bundle";
    std::vector<std::string> candidates;
    for (const std::string& root : rootsOfThisImage(markers))
        candidates.push_back(joined(root, bundle));
    candidates.push_back(joined(rootlessRoot, bundle));
    candidates.push_back(joined("/private/var/jb", bundle));
    candidates.push_back(joined("/var/containers/Bundle/Application/.jbroot-XXXXXXXX", bundle));
    candidates.emplace_back(bundle);
    for (const std::string& candidate : candidates)
        if (fileExists(candidate))
            return candidate;
    return std::nullopt;
}

} // namespace appledger
