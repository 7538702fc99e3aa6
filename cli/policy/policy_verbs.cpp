#include "cli/command/arguments.h"
#include "cli/command/verb_rows.h"
#include "cli/policy/policy_commands.h"
#include "cli/policy/side_file_policies.h"

#include <memory>

namespace cli {

namespace {

struct PolicyWords {
    Word key;
    Word identifier;
    Word value;
};

using Words = std::shared_ptr<PolicyWords>;

Words wordsOf(Arguments& arguments, std::initializer_list<const char*> names)
{
    auto words = std::make_shared<PolicyWords>();
    for (const std::string_view name : names)
        arguments
            .add(std::string(name),
                name == "KEY"      ? words->key
                    : name == "ID" ? words->identifier
                                   : words->value,
                name == "VALUE" ? "what it becomes" : "")
            .required();
    return words;
}

Action show(Arguments& arguments)
{
    const Words words = wordsOf(arguments, { "ID" });
    return [words](const phone::PhoneDirectory& directory) { return showPolicies(directory, words->identifier); };
}

template <ListChange Change> Action changeList(Arguments& arguments)
{
    const Words words = wordsOf(arguments, { "KEY", "ID" });
    return [words](const phone::PhoneDirectory& directory) {
        return changePolicyList(directory, Change, words->key, words->identifier);
    };
}

Action set(Arguments& arguments)
{
    const Words words = wordsOf(arguments, { "KEY", "VALUE" });
    return [words](const phone::PhoneDirectory& directory) { return setPolicy(directory, words->key, words->value); };
}

Action unset(Arguments& arguments)
{
    const Words words = wordsOf(arguments, { "KEY" });
    return [words](const phone::PhoneDirectory& directory) { return unsetPolicy(directory, words->key); };
}

template <bool Muted> Action mute(Arguments& arguments)
{
    const Words words = wordsOf(arguments, { "ID" });
    return [words](const phone::PhoneDirectory& directory) { return mutePolicy(directory, words->identifier, Muted); };
}

Action brightness(Arguments& arguments)
{
    const auto words = std::make_shared<PolicyWords>();
    arguments.add("ID", words->identifier).required();
    arguments.add("VALUE", words->value, "from 0 to 1, or off").required();
    return [words](const phone::PhoneDirectory& directory) {
        return brightnessPolicy(directory, words->identifier, words->value);
    };
}

constexpr VerbRow rows[] {
    { "policy list", "every key that is set", plain<listPolicies> },
    { "policy keys", "every key that there is, what it takes and its default", plain<listKeys> },
    { "policy show", "what holds for one application", show },
    { "policy add", "put an application on a list", changeList<ListChange::Add> },
    { "policy remove", "take an application off a list", changeList<ListChange::Remove> },
    { "policy toggle", "put it on, or take it off", changeList<ListChange::Toggle> },
    { "policy set", "set a key", set },
    { "policy unset", "remove a key, so that its default holds", unset },
    { "policy mute", "take the volume away while an application is in front", mute<true> },
    { "policy unmute", "leave it the volume", mute<false> },
    { "policy brightness", "give an application a brightness of its own while it is in front", brightness },
};

} // namespace

extern const VerbRows policyVerbs { rows };

} // namespace cli
