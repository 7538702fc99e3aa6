#include "launch/redirect_rules.h"

#include "core/preference_domain.h"
#include "platform/foundation/values.h"

#include <array>

namespace appledger {

using namespace platform;

Published<RuleSet> gForbiddenLaunchSources;
Published<RuleSet> gForbiddenLaunchDestinations;
Published<RuleSet> gForbiddenLaunchSourcesForAppStore;
Published<RuleSet> gForbiddenLaunchSourcesForSafariServices;
Published<RuleSet> gUseLenientModeSources;
Published<RuleSet> gUseHandledSimulationSources;
Published<RuleSet> gCustomAllowedMappings;
Published<RuleSet> gCustomForbiddenMappings;

namespace {

enum class RuleKind {
    Flag, ///< the key's application is the rule
    ListOfSources, ///< the listed applications may open the key's
    ListOfDestinations, ///< the key's application may not open the listed ones
};

struct RuleKey {
    std::string_view prefix;
    RuleKind kind;
    Published<RuleSet>& set;
};

const RuleKey ruleKeys[] {
    { "IsBlockedFromLaunchingOthers/", RuleKind::Flag, gForbiddenLaunchSources },
    { "IsBlockedFromBeingLaunched/", RuleKind::Flag, gForbiddenLaunchDestinations },
    { "IsBlockedFromLaunchingAppStore/", RuleKind::Flag, gForbiddenLaunchSourcesForAppStore },
    { "IsBlockedFromLaunchingSafari/", RuleKind::Flag, gForbiddenLaunchSourcesForSafariServices },
    { "ShouldTeardownAutomatically/", RuleKind::Flag, gUseLenientModeSources },
    { "ShouldSimulateSuccess/", RuleKind::Flag, gUseHandledSimulationSources },
    { "CustomBypassedApplications/", RuleKind::ListOfSources, gCustomAllowedMappings },
    { "CustomBlockedApplications/", RuleKind::ListOfDestinations, gCustomForbiddenMappings },
};

std::vector<std::string_view> views(const std::vector<std::string>& texts)
{
    return { texts.begin(), texts.end() };
}

void addRules(RuleKind kind, std::string_view application, const id& value, std::vector<std::string>& rules)
{
    if (kind == RuleKind::Flag) {
        if (boolValue(value))
            rules.emplace_back(application);
        return;
    }
    const auto items = asArray(value);
    if (!items)
        return;
    for (const id& item : *items) {
        // An item of another kind is formatted like any object: a rule that no application matches.
        const auto text = asString(item);
        const std::string other = text ? text->text() : describe(item);
        rules.push_back(kind == RuleKind::ListOfSources ? rulePair(other, application) : rulePair(application, other));
    }
}

} // namespace

RuleSet::RuleSet(std::vector<std::string> texts)
    : texts_(std::move(texts))
    , set_(views(texts_))
{
}

std::string rulePair(std::string_view source, std::string_view destination)
{
    return std::string(source).append("->").append(destination);
}

void ReloadRedirectPrefs()
{
    const id all = synchronizedPreferences()->dictionaryRepresentation();
    std::array<std::vector<std::string>, std::size(ruleKeys)> rules;
    if (const auto pairs = asDictionary(all)) {
        for (const auto& [keyObject, value] : *pairs) {
            const auto key = asString(keyObject);
            if (!key)
                continue;
            for (std::size_t index = 0; index < rules.size(); ++index)
                if (key->view().starts_with(ruleKeys[index].prefix))
                    addRules(
                        ruleKeys[index].kind, key->view().substr(ruleKeys[index].prefix.size()), value, rules[index]);
        }
    }
    for (std::size_t index = 0; index < rules.size(); ++index)
        ruleKeys[index].set.assign(new RuleSet(std::move(rules[index])));
}

} // namespace appledger
