#include "cli/command/arguments.h"
#include "cli/command/nearest.h"
#include "cli/command/verb_rows.h"
#include "cli/policy/policy_commands.h"
#include "cli/policy/policy_set.h"
#include "cli/policy/policy_set_file.h"
#include "cli/policy/profiles.h"

#include <memory>

namespace cli {

using Json = nlohmann::json;

namespace {

using Profiles = std::map<std::string, Json>;

ExitStatus refuseUnknown(const Profiles& profiles, const std::string& name)
{
    std::vector<std::string> names;
    for (const auto& [known, set] : profiles)
        names.push_back(known);
    const auto meant = nearest(name, names);
    return refuse("there is no profile " + name + (meant ? "; the nearest is " + *meant : "")
        + (profiles.empty() ? "; none is saved" : ""));
}

ExitStatus save(const phone::PhoneDirectory& directory, const std::string& name)
{
    if (!isProfileName(name))
        return refuseUsage("a profile's name is made of letters, digits, \"-\", \"_\" and \".\", up to 64 of them");
    std::string problem;
    const auto session = PolicySession::open(directory, problem);
    if (session)
        problem = session->values().problem();
    Profiles profiles = problem.empty() ? readProfiles(directory, problem) : Profiles();
    if (!problem.empty())
        return refuse(problem);
    const Json set = policySetOf(session->values());
    if (const auto wrong = problemOfSet(set))
        return refuse("what is set can't be a profile: " + wrong->problem);
    const bool isNew = !profiles.contains(name);
    profiles[name] = set;
    problem = writeProfiles(directory, profiles);
    if (!problem.empty())
        return refuse(problem);
    say((isNew ? "Saved " : "Saved anew: ") + name + ".", { { "profile", name }, { "isNew", isNew } });
    return ExitStatus::Done;
}

ExitStatus use(const phone::PhoneDirectory& directory, const std::string& name)
{
    std::string problem;
    const auto session = PolicySession::open(directory, problem);
    if (session)
        problem = session->values().problem();
    const Profiles profiles = problem.empty() ? readProfiles(directory, problem) : Profiles();
    if (!problem.empty())
        return refuse(problem);
    const auto found = profiles.find(name);
    if (found == profiles.end())
        return refuseUnknown(profiles, name);
    wantSet(*session, found->second, SetMode::Replace);
    const CommitReport report = session->commit({ .verb = "policy profile use " + name });
    if (!report.isDone())
        return refuse(report.problem);
    std::string text = name + " is in force; " + std::to_string(report.items.size()) + " things changed."
        + describePosting(report) + "\n";
    for (const ItemChange& item : report.items)
        text += "  " + onOneLine(describeItem(item)) + "\n";
    Json object { { "profile", name } };
    addCommit(object, report);
    say(text, object);
    return ExitStatus::Done;
}

ExitStatus list(const phone::PhoneDirectory& directory)
{
    if (const auto problem = openForReading(directory))
        return refuse(*problem);
    std::string problem;
    const Profiles profiles = readProfiles(directory, problem);
    const PolicyValues values = PolicyValues::ofDevice();
    if (problem.empty())
        problem = values.problem();
    if (!problem.empty())
        return refuse(problem);
    const Json present = policySetOf(values);
    std::string text;
    Json names = Json::array();
    for (const auto& [name, set] : profiles) {
        const bool isInForce = differences(present, set).empty();
        text += name + (isInForce ? "  (in force)\n" : "\n");
        names.push_back({ { "profile", name }, { "inForce", isInForce } });
    }
    say(text.empty() ? "No profile is saved." : text, { { "profiles", names } });
    return ExitStatus::Done;
}

ExitStatus show(const phone::PhoneDirectory& directory, const std::string& name)
{
    std::string problem;
    const Profiles profiles = readProfiles(directory, problem);
    if (!problem.empty())
        return refuse(problem);
    const auto found = profiles.find(name);
    if (found == profiles.end())
        return refuseUnknown(profiles, name);
    say(bytesOfSet(found->second, ""), { { "profile", name }, { "policies", found->second } });
    return ExitStatus::Done;
}

ExitStatus remove(const phone::PhoneDirectory& directory, const std::string& name)
{
    std::string problem;
    const auto session = PolicySession::open(directory, problem);
    Profiles profiles = session ? readProfiles(directory, problem) : Profiles();
    if (!problem.empty())
        return refuse(problem);
    if (profiles.erase(name) == 0)
        return refuseUnknown(profiles, name);
    problem = writeProfiles(directory, profiles);
    if (!problem.empty())
        return refuse(problem);
    say("Removed the profile " + name + ".", { { "profile", name } });
    return ExitStatus::Done;
}

template <ExitStatus (*Function)(const phone::PhoneDirectory& directory, const std::string& name)>
Action named(Arguments& arguments)
{
    const auto name = std::make_shared<Word>();
    arguments.add("NAME", *name, "the profile's name").required().ofKind(ArgumentKind::Profile);
    return [name](const phone::PhoneDirectory& directory) { return Function(directory, *name); };
}

constexpr VerbRow rows[] {
    { "policy profile save", "give all that is set now a name", named<save> },
    { "policy profile use", "set all that it had, and nothing else", named<use> },
    { "policy profile list", "the profiles, and which is in force", plain<list> },
    { "policy profile show", "what one sets", named<show> },
    { "policy profile remove", "forget one; what is set stays", named<remove> },
};

} // namespace

extern const VerbRows profileVerbs { rows };

} // namespace cli
