#include "cli/command/transition_options.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

namespace cli {

using Json = nlohmann::json;

namespace {

Json textOrNull(const std::optional<std::string>& text)
{
    return text ? Json(*text) : Json(nullptr);
}

struct Requester {
    std::optional<std::string> name;
    std::optional<std::string> bundleIdentifier;
};

Requester requesterOf(const TransitionOptions& options)
{
    if (options.requester || options.requesterBundle)
        return { options.requester, options.requesterBundle };
    if (options.source.empty() || options.isBreadcrumb)
        return { "SpringBoard", "com.apple.springboard" };
    return { options.source, options.source };
}

Json labelOf(const TransitionOptions& options, const Requester& requester, const std::string& destination)
{
    if (options.hasNoLabel)
        return nullptr;
    if (options.label)
        return *options.label;
    if (options.isBreadcrumb)
        return "ActivateFromBreadcrumb";
    const std::string asks = requester.bundleIdentifier.value_or(requester.name.value_or(""));
    return "OpenApplication(" + destination + ")ForRequester(" + asks + ")";
}

} // namespace

bool TransitionOptions::any() const
{
    return !source.empty() || action != "none" || isBreadcrumb || hasNoLabel || label || requester || requesterBundle
        || previousScene;
}

void addTransitionOptions(CLI::App& verb, TransitionOptions& options)
{
    verb.add_option("--from", options.source, "bundle identifier of the application that opens the other")
        ->type_name("ID");
    verb.add_flag_callback(
        "--url", [&options] { options.action = "openURL"; }, "it opens a URL");
    verb.add_option("--action", options.action, "what it brings along: none, openURL or other")
        ->check(CLI::IsMember({ "none", "openURL", "other" }));
    verb.add_flag("--breadcrumb", options.isBreadcrumb, "by the way back in the status bar");
    CLI::Option* const label
        = verb.add_option("--label", options.label, "the request's event label")->type_name("TEXT");
    verb.add_flag("--no-label", options.hasNoLabel, "a request without a label")->excludes(label);
    verb.add_option("--requester", options.requester, "name of the process that asks: lsd, configd, …")
        ->type_name("NAME");
    verb.add_option("--requester-bundle", options.requesterBundle, "bundle identifier of that process")
        ->type_name("ID");
    verb.add_option("--previous-scene", options.previousScene, "the scene that was in front: sceneID:ID-default, …")
        ->type_name("SCENE");
}

Json transitionRecord(const TransitionOptions& options, const std::string& destination)
{
    const Requester requester = requesterOf(options);
    const bool hasEntity = !options.isBreadcrumb && (!options.source.empty() || options.action != "none");
    Json entity;
    if (hasEntity)
        entity = { { "bundleIdentifier", options.source.empty() ? Json(nullptr) : Json(options.source) },
            { "action", options.action } };
    auto scene = options.previousScene;
    if (!scene && options.isBreadcrumb && !options.source.empty())
        scene = "sceneID:" + options.source + "-default";
    return { { "transitionRequest", true }, { "eventLabel", labelOf(options, requester, destination) },
        { "sourceEntity", entity },
        { "requester",
            { { "name", textOrNull(requester.name) },
                { "bundleIdentifier", textOrNull(requester.bundleIdentifier) } } },
        { "previousScene", textOrNull(scene) }, { "destination", destination },
        { "secondsSinceSourceLaunch", nullptr } };
}

} // namespace cli
