#include "cli/explain/explain_redirect.h"

#include "cli/explain/explain_record.h"

namespace cli {

using namespace appledger;
using Json = nlohmann::json;

namespace {

SourceAction readAction(RecordReader& reader, const Json& entity)
{
    const auto action = reader.text(entity, "action").value_or("none");
    if (action == "openURL")
        return SourceAction::OpenUrl;
    if (action == "other")
        return SourceAction::Other;
    if (action != "none")
        reader.fail("\"action\" is \"none\", \"openURL\" or \"other\"");
    return SourceAction::None;
}

Transition readTransition(RecordReader& reader)
{
    Transition transition { .isMainWorkspaceRequest = reader.required("transitionRequest"),
        .eventLabel = reader.text("eventLabel"),
        .previousScene = reader.text("previousScene"),
        .destination = reader.text("destination") };
    if (const Json* const entity = reader.object("sourceEntity"))
        transition.sourceEntity = { reader.text(*entity, "bundleIdentifier"), readAction(reader, *entity) };
    if (const Json* const requester = reader.object("requester")) {
        transition.requesterName = reader.text(*requester, "name");
        transition.requesterBundleIdentifier = reader.text(*requester, "bundleIdentifier");
    }
    return transition;
}

std::string_view outcomeName(RedirectOutcome outcome)
{
    switch (outcome) {
    case RedirectOutcome::Pass:
        return "pass";
    case RedirectOutcome::Decline:
        return "decline";
    case RedirectOutcome::Background:
        return "background";
    }
    return "";
}

std::string_view explanation(RedirectStep step)
{
    switch (step) {
    case RedirectStep::NotATransition:
        return "the request is none of the main workspace's transition requests";
    case RedirectStep::OtherLabel:
        return "the request's label names neither an application's request nor a breadcrumb";
    case RedirectStep::OtherAction:
        return "the source brings along an action other than the opening of a URL";
    case RedirectStep::UnknownApplication:
        return "the source or the destination can't be told";
    case RedirectStep::SameApplication:
        return "source and destination are one application";
    case RedirectStep::Hidden:
        return "one of the two is hidden";
    case RedirectStep::Paused:
        return "the source's restrictions pause 10 seconds after its launch";
    case RedirectStep::AllowedPair:
        return "an exception lets this source open this destination";
    case RedirectStep::ForbiddenSource:
        return "the source may open no other application";
    case RedirectStep::SystemSource:
        return "no application may open the destination, but the source is the system's";
    case RedirectStep::ForbiddenDestination:
        return "no other application may open the destination";
    case RedirectStep::AppStore:
        return "the source may not open the App Store";
    case RedirectStep::Safari:
        return "the source may not open Safari";
    case RedirectStep::ForbiddenPair:
        return "the source may not open this destination";
    case RedirectStep::Default:
        return "no rule speaks against it";
    }
    return "";
}

} // namespace

ExplainedRedirect explainRedirect(const Json& record, const ExplainPolicies& policies)
{
    RecordReader reader(record);
    const Transition transition = readTransition(reader);
    const auto seconds = reader.number("secondsSinceSourceLaunch");
    if (!reader.error().empty())
        return { .error = reader.error() };

    // The record's clock starts at the source's launch.
    LaunchStamps launches;
    if (seconds)
        if (const auto source = redirectParties(transition).source)
            launches = launches.with(*source, 0);
    return { decideRedirect(
        transition, { policies.redirect.rules(), policies.hidden.list(), &launches }, seconds.value_or(0)) };
}

std::string ruleText(const RedirectVerdict& verdict)
{
    std::string text(name(verdict.step));
    if (const std::string key = verdict.key(); !key.empty())
        text.append(" ").append(key);
    if (verdict.isSimulated)
        text.append(", ").append(verdict.simulationKey());
    return text;
}

Json redirectVerdictObject(const ExplainedRedirect& explained)
{
    if (!explained.error.empty())
        return { { "error", explained.error } };
    const std::string_view reason = explained.verdict.reason();
    return { { "outcome", outcomeName(explained.verdict.outcome) },
        { "reason", reason.empty() ? Json(nullptr) : Json(reason) }, { "rule", ruleText(explained.verdict) } };
}

std::string describeRedirect(const RedirectVerdict& verdict)
{
    const std::string source(verdict.parties.source.value_or("An unknown application"));
    std::string text = source + " asks for " + std::string(verdict.parties.destination.value_or("no application"));
    switch (verdict.outcome) {
    case RedirectOutcome::Pass:
        text += verdict.isSimulated ? ": refused, but it passes unchanged, as the source's refusals are simulated as "
                                      "successes."
                                    : ": it passes.";
        break;
    case RedirectOutcome::Decline:
        text.append(": declined with \"").append(verdict.reason()).append("\".");
        break;
    case RedirectOutcome::Background:
        text += ": refused, but to the source it looks done; the destination opens in the background.";
        break;
    }
    return text.append("\nWhy: ").append(explanation(verdict.step)).append(" (").append(ruleText(verdict)).append(").");
}

} // namespace cli
