#include "cli/command/transition_options.h"

#include "cli/command/arguments.h"

#include <nlohmann/json.hpp>

namespace cli {

using Json = nlohmann::json;

namespace {

Json textOrNull(const std::optional<Word>& text)
{
    return text ? Json(text->text()) : Json(nullptr);
}

const std::string& actionOf(const TransitionOptions& options)
{
    static const std::string openUrl = "openURL";
    return options.opensUrl ? openUrl : options.action.text();
}

struct Requester {
    std::optional<Word> name;
    std::optional<Word> bundleIdentifier;
};

Requester requesterOf(const TransitionOptions& options)
{
    if (options.requester || options.requesterBundle)
        return { options.requester, options.requesterBundle };
    if (options.source.empty() || options.isBreadcrumb)
        return { Word("SpringBoard"), Word("com.apple.springboard") };
    return { options.source, options.source };
}

Json labelOf(const TransitionOptions& options, const Requester& requester, const std::string& destination)
{
    if (options.hasNoLabel)
        return nullptr;
    if (options.label)
        return options.label->text();
    if (options.isBreadcrumb)
        return "ActivateFromBreadcrumb";
    const std::string asks = requester.bundleIdentifier.value_or(requester.name.value_or(Word()));
    return "OpenApplication(" + destination + ")ForRequester(" + asks + ")";
}

} // namespace

bool TransitionOptions::any() const
{
    return !source.empty() || actionOf(*this) != "none" || isBreadcrumb || hasNoLabel || label || requester
        || requesterBundle || previousScene;
}

void addTransitionOptions(Arguments& arguments, TransitionOptions& options)
{
    arguments.add("--from", options.source, "bundle identifier of the application that opens the other").shownAs("ID");
    arguments.flag("--url", options.opensUrl, "it opens a URL");
    arguments.add("--action", options.action, "what it brings along: none, openURL or other")
        .oneOf({ "none", "openURL", "other" });
    arguments.flag("--breadcrumb", options.isBreadcrumb, "by the way back in the status bar");
    arguments.add("--label", options.label, "the request's event label").shownAs("TEXT");
    arguments.flag("--no-label", options.hasNoLabel, "a request without a label").excludes("--label");
    arguments.add("--requester", options.requester, "name of the process that asks: lsd, configd, …").shownAs("NAME");
    arguments.add("--requester-bundle", options.requesterBundle, "bundle identifier of that process").shownAs("ID");
    arguments.add("--previous-scene", options.previousScene, "the scene that was in front: sceneID:ID-default, …")
        .shownAs("SCENE");
}

Json transitionRecord(const TransitionOptions& options, const std::string& destination)
{
    const Requester requester = requesterOf(options);
    const bool hasEntity = !options.isBreadcrumb && (!options.source.empty() || actionOf(options) != "none");
    Json entity;
    if (hasEntity)
        entity = { { "bundleIdentifier", options.source.empty() ? Json(nullptr) : Json(options.source.text()) },
            { "action", actionOf(options) } };
    auto scene = options.previousScene;
    if (!scene && options.isBreadcrumb && !options.source.empty())
        scene = Word("sceneID:" + options.source.text() + "-default");
    return { { "transitionRequest", true }, { "eventLabel", labelOf(options, requester, destination) },
        { "sourceEntity", entity },
        { "requester",
            { { "name", textOrNull(requester.name) },
                { "bundleIdentifier", textOrNull(requester.bundleIdentifier) } } },
        { "previousScene", textOrNull(scene) }, { "destination", destination },
        { "secondsSinceSourceLaunch", nullptr } };
}

} // namespace cli
