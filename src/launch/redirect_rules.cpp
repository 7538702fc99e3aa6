#include "launch/redirect_rules.h"

#include "core/policies.h"
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
    const RuleSet* RedirectRules::*place;
};

constexpr RuleKey ruleKeys[] {
    { redirectKey::forbiddenSource, RuleKind::Flag, gForbiddenLaunchSources, &RedirectRules::forbiddenSources },
    { redirectKey::forbiddenDestination, RuleKind::Flag, gForbiddenLaunchDestinations,
        &RedirectRules::forbiddenDestinations },
    { redirectKey::forbiddenSourceForAppStore, RuleKind::Flag, gForbiddenLaunchSourcesForAppStore,
        &RedirectRules::forbiddenSourcesForAppStore },
    { redirectKey::forbiddenSourceForSafari, RuleKind::Flag, gForbiddenLaunchSourcesForSafariServices,
        &RedirectRules::forbiddenSourcesForSafari },
    { redirectKey::lenientSource, RuleKind::Flag, gUseLenientModeSources, &RedirectRules::lenientSources },
    { redirectKey::simulatedSource, RuleKind::Flag, gUseHandledSimulationSources, &RedirectRules::simulatedSources },
    { redirectKey::allowedSources, RuleKind::ListOfSources, gCustomAllowedMappings, &RedirectRules::allowedPairs },
    { redirectKey::forbiddenDestinations, RuleKind::ListOfDestinations, gCustomForbiddenMappings,
        &RedirectRules::forbiddenPairs },
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

RedirectRules currentRedirectRules() noexcept
{
    RedirectRules rules;
    for (const RuleKey& key : ruleKeys)
        rules.*key.place = key.set.load();
    return rules;
}

RedirectRuleSets::RedirectRuleSets(const id& preferences)
{
    static_assert(std::tuple_size_v<decltype(sets_)> == std::size(ruleKeys));
    std::array<std::vector<std::string>, std::size(ruleKeys)> rules;
    for (const auto& [keyObject, value] : pairsOf(preferences)) {
        const auto key = asString(keyObject);
        if (!key)
            continue;
        for (std::size_t index = 0; index < rules.size(); ++index)
            if (key->view().starts_with(ruleKeys[index].prefix))
                addRules(ruleKeys[index].kind, key->view().substr(ruleKeys[index].prefix.size()), value, rules[index]);
    }
    for (std::size_t index = 0; index < rules.size(); ++index)
        sets_[index] = std::make_unique<const RuleSet>(std::move(rules[index]));
}

RedirectRules RedirectRuleSets::rules() const noexcept
{
    RedirectRules rules;
    for (std::size_t index = 0; index < sets_.size(); ++index)
        rules.*ruleKeys[index].place = sets_[index].get();
    return rules;
}

void RedirectRuleSets::publish() &&
{
    for (std::size_t index = 0; index < sets_.size(); ++index)
        ruleKeys[index].set.assign(sets_[index].release());
}

void ReloadRedirectPrefs()
{
    RedirectRuleSets(synchronizedPreferences()->dictionaryRepresentation()).publish();
}

} // namespace appledger
