#include "launch/redirect_decision.h"

#include "core/policies.h"

#include <array>
#include <cmath>
#include <cstring>

namespace appledger {

namespace {

using enum RedirectStep;

constexpr std::string_view appStore = "com.apple.AppStore";
constexpr std::string_view storeSheet = "com.apple.ios.StoreKitUIService";
constexpr std::string_view safari = "com.apple.mobilesafari";
constexpr std::string_view safariSheet = "com.apple.SafariViewService";
constexpr std::string_view configurationDaemon = "com.apple.configd";
constexpr std::string_view systemPrefix = "com.apple.";
constexpr double pauseAfter = 10; // seconds since the source's launch

enum class LabelKind { Breadcrumb, Request, Other };

LabelKind kindOfLabel(const std::optional<std::string_view>& label) noexcept
{
    if (!label)
        return LabelKind::Request;
    const auto contains = [&label](std::string_view text) { return label->find(text) != std::string_view::npos; };
    if (contains("ActivateFromBreadcrumb"))
        return LabelKind::Breadcrumb;
    return contains("OpenApplication") && contains("ForRequester") ? LabelKind::Request : LabelKind::Other;
}

/// "sceneID:com.example.notes-default", or with a UUID at the end, to "com.example.notes"; empty when nothing
/// is left.
std::optional<std::string_view> applicationOfScene(std::optional<std::string_view> scene) noexcept
{
    constexpr std::string_view prefix = "sceneID:";
    constexpr std::string_view defaultSuffix = "-default";
    constexpr std::size_t uuidSuffix = 37; // with its hyphen
    if (!scene)
        return std::nullopt;
    if (scene->starts_with(prefix))
        scene->remove_prefix(prefix.size());
    if (scene->ends_with(defaultSuffix))
        scene->remove_suffix(defaultSuffix.size());
    else if (scene->size() > uuidSuffix)
        scene->remove_suffix(uuidSuffix);
    return scene->empty() ? std::nullopt : scene;
}

std::optional<std::string_view> sourceWithoutEntity(const Transition& transition, LabelKind label) noexcept
{
    if (label == LabelKind::Breadcrumb || transition.requesterName == "lsd")
        if (const auto front = applicationOfScene(transition.previousScene))
            return front;
    return transition.requesterBundleIdentifier;
}

bool holds(const RuleSet* set, const HashedText& text) noexcept
{
    return set && set->contains(text);
}

/// "source->destination", put together on the stack.
class RulePairText {
public:
    RulePairText(std::string_view source, std::string_view destination)
    {
        constexpr std::string_view arrow = "->";
        const std::size_t size = source.size() + arrow.size() + destination.size();
        char* place = buffer_.data();
        if (size > buffer_.size()) {
            long_.resize(size);
            place = long_.data();
        }
        text_ = { place, size };
        for (const std::string_view part : { source, arrow, destination }) {
            if (!part.empty())
                std::memcpy(place, part.data(), part.size());
            place += part.size();
        }
    }

    RulePairText(const RulePairText&) = delete;
    RulePairText& operator=(const RulePairText&) = delete;

    std::string_view view() const noexcept { return text_; }

private:
    std::array<char, 512> buffer_;
    std::string long_;
    std::string_view text_;
};

bool isAppStore(std::string_view application) noexcept
{
    return application == appStore || application == storeSheet;
}

bool isSafari(std::string_view application) noexcept
{
    return application == safari || application == safariSheet;
}

/// Safari opens what any page asks for: it is no system source.
bool isSystemSource(std::string_view source) noexcept
{
    return source.starts_with(systemPrefix) && !isSafari(source);
}

enum class Judgement { Pass, Refuse };

struct StepTaken {
    Judgement judgement;
    RedirectStep step;
};

bool isPaused(const HashedText& source, const RedirectPolicies& policies, double now) noexcept
{
    if (!holds(policies.rules.lenientSources, source) || !policies.lastLaunches)
        return false;
    const auto stamp = policies.lastLaunches->of(source.text());
    return stamp && std::abs(now - *stamp) > pauseAfter;
}

StepTaken judge(const HashedText& source, const HashedText& destination, const RedirectPolicies& policies, double now)
{
    const RedirectRules& rules = policies.rules;
    if (policies.hidden.contains(source) || policies.hidden.contains(destination))
        return { Judgement::Refuse, Hidden };
    if (isPaused(source, policies, now))
        return { Judgement::Pass, Paused };
    const RulePairText pairText(source.text(), destination.text());
    const HashedText pair(pairText.view());
    if (holds(rules.allowedPairs, pair))
        return { Judgement::Pass, AllowedPair };
    if (holds(rules.forbiddenSources, source))
        return { Judgement::Refuse, ForbiddenSource };
    if (holds(rules.forbiddenDestinations, destination))
        return isSystemSource(source.text()) ? StepTaken { Judgement::Pass, SystemSource }
                                             : StepTaken { Judgement::Refuse, ForbiddenDestination };
    if (isAppStore(destination.text()) && holds(rules.forbiddenSourcesForAppStore, source))
        return { Judgement::Refuse, AppStore };
    if (isSafari(destination.text()) && holds(rules.forbiddenSourcesForSafari, source))
        return { Judgement::Refuse, Safari };
    if (holds(rules.forbiddenPairs, pair))
        return { Judgement::Refuse, ForbiddenPair };
    return { Judgement::Pass, Default };
}

RedirectOutcome outcomeOfRefusal(std::string_view destination, bool isSimulated) noexcept
{
    if (!isSimulated || destination == storeSheet)
        return RedirectOutcome::Decline;
    return destination == safariSheet ? RedirectOutcome::Pass : RedirectOutcome::Background;
}

} // namespace

std::string_view name(RedirectStep step) noexcept
{
    switch (step) {
    case NotATransition:
        return "not-a-transition";
    case OtherLabel:
        return "other-label";
    case OtherAction:
        return "other-action";
    case UnknownApplication:
        return "unknown-application";
    case SameApplication:
        return "same-application";
    case Hidden:
        return "hidden";
    case Paused:
        return "paused";
    case AllowedPair:
        return "allowed-pair";
    case ForbiddenSource:
        return "forbidden-source";
    case SystemSource:
        return "system-source";
    case ForbiddenDestination:
        return "forbidden-destination";
    case AppStore:
        return "app-store";
    case Safari:
        return "safari";
    case ForbiddenPair:
        return "forbidden-pair";
    case Default:
        return "default";
    }
    return "";
}

RedirectParties redirectParties(const Transition& transition) noexcept
{
    if (!transition.isMainWorkspaceRequest)
        return { .passes = NotATransition };
    const LabelKind label = kindOfLabel(transition.eventLabel);
    if (label == LabelKind::Other)
        return { .passes = OtherLabel };

    RedirectParties parties { .destination = transition.destination };
    const auto& source = parties.source;
    const auto& destination = parties.destination;
    if (const auto& entity = transition.sourceEntity) {
        if (entity->action == SourceAction::Other)
            return { .destination = transition.destination, .passes = OtherAction };
        parties.source = entity->bundleIdentifier ? entity->bundleIdentifier : transition.requesterBundleIdentifier;
    } else {
        parties.source = sourceWithoutEntity(transition, label);
    }
    if (source && source == destination)
        return { source, destination, SameApplication };
    if (!transition.sourceEntity && transition.requesterName == "configd")
        parties.source = configurationDaemon;
    if (!source || !destination)
        parties.passes = UnknownApplication;
    else if (source == destination)
        parties.passes = SameApplication;
    return parties;
}

RedirectVerdict decideRedirect(const Transition& transition, const RedirectPolicies& policies, double now)
{
    RedirectVerdict verdict { .parties = redirectParties(transition) };
    const auto& [source, destination, passes] = verdict.parties;
    if (passes) {
        verdict.step = *passes;
        return verdict;
    }
    const HashedText hashedSource(*source);
    const auto [judgement, step] = judge(hashedSource, HashedText(*destination), policies, now);
    verdict.step = step;
    if (judgement == Judgement::Refuse) {
        verdict.isSimulated = holds(policies.rules.simulatedSources, hashedSource);
        verdict.outcome = outcomeOfRefusal(*destination, verdict.isSimulated);
    }
    return verdict;
}

std::string_view RedirectVerdict::reason() const noexcept
{
    if (outcome != RedirectOutcome::Decline)
        return "";
    return isSimulated ? "No Redirect (Handled)" : "No Redirect";
}

std::string RedirectVerdict::key() const
{
    const auto keyed = [](std::string_view prefix, const std::optional<std::string_view>& application) {
        return std::string(prefix).append(application.value_or(""));
    };
    switch (step) {
    case Hidden:
        return std::string(policy::hidden.key);
    case Paused:
        return keyed(redirectKey::lenientSource, parties.source);
    case AllowedPair:
        return keyed(redirectKey::allowedSources, parties.destination);
    case ForbiddenSource:
        return keyed(redirectKey::forbiddenSource, parties.source);
    case SystemSource:
    case ForbiddenDestination:
        return keyed(redirectKey::forbiddenDestination, parties.destination);
    case AppStore:
        return keyed(redirectKey::forbiddenSourceForAppStore, parties.source);
    case Safari:
        return keyed(redirectKey::forbiddenSourceForSafari, parties.source);
    case ForbiddenPair:
        return keyed(redirectKey::forbiddenDestinations, parties.source);
    case NotATransition:
    case OtherLabel:
    case OtherAction:
    case UnknownApplication:
    case SameApplication:
    case Default:
        break;
    }
    return "";
}

std::string RedirectVerdict::simulationKey() const
{
    return isSimulated ? std::string(redirectKey::simulatedSource).append(parties.source.value_or("")) : "";
}

} // namespace appledger
