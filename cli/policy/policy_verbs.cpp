#include "cli/command/arguments.h"
#include "cli/command/verb_rows.h"
#include "cli/policy/policy_commands.h"
#include "cli/policy/policy_reading.h"

#include <memory>

namespace cli {

namespace {

struct PolicyWords {
    Word key;
    Word identifier;
    std::vector<Word> identifiers;
    Word value;
    Word grouping { "application" };
    bool isStrict = false;
};

Action list(Arguments& arguments)
{
    const auto words = std::make_shared<PolicyWords>();
    arguments.add("--by", words->grouping, "what it is grouped by (default application)")
        .oneOf({ "application", "feature", "key" });
    return [words](const phone::PhoneDirectory& directory) {
        const std::string& grouping = words->grouping;
        return listPolicies(directory,
            grouping == "key"           ? Grouping::Key
                : grouping == "feature" ? Grouping::Feature
                                        : Grouping::Application);
    };
}

Action show(Arguments& arguments)
{
    const auto words = std::make_shared<PolicyWords>();
    arguments.add("ID", words->identifier, "application, by identifier or name").required();
    return [words](const phone::PhoneDirectory& directory) { return showPolicies(directory, words->identifier); };
}

template <ListChange Change> Action changeList(Arguments& arguments)
{
    const auto words = std::make_shared<PolicyWords>();
    arguments.add("KEY", words->key, "'appledger policy keys' lists them").required();
    arguments.add("ID", words->identifiers, "applications, by identifier or name").required();
    arguments.addStrict(words->isStrict);
    return [words](const phone::PhoneDirectory& directory) {
        return changePolicyList(
            directory, Change, words->key, { words->identifiers.begin(), words->identifiers.end() });
    };
}

Action set(Arguments& arguments)
{
    const auto words = std::make_shared<PolicyWords>();
    arguments.add("KEY", words->key, "'appledger policy keys' lists them").required();
    arguments.add("VALUE", words->value, "what it becomes").required();
    return [words](const phone::PhoneDirectory& directory) { return setPolicy(directory, words->key, words->value); };
}

Action unset(Arguments& arguments)
{
    const auto words = std::make_shared<PolicyWords>();
    arguments.add("KEY", words->key).required();
    return [words](const phone::PhoneDirectory& directory) { return unsetPolicy(directory, words->key); };
}

constexpr VerbRow rows[] {
    { "policy list", "all that is set, by application, feature or key", list },
    { "policy keys", "every key that there is: what it does, what it takes, who reads it", plain<listKeys> },
    { "policy show", "what holds for one application", show },
    { "policy add", "put applications on the list of a key", changeList<ListChange::Add> },
    { "policy remove", "take applications off it", changeList<ListChange::Remove> },
    { "policy toggle", "put them on, or take them off", changeList<ListChange::Toggle> },
    { "policy set", "set a key", set },
    { "policy unset", "remove a key, so that its default holds", unset },
};

} // namespace

extern const VerbRows policyVerbs { rows };

} // namespace cli
