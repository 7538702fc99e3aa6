#include "cli/command/application_names.h"
#include "cli/command/arguments.h"
#include "cli/command/verb_rows.h"
#include "cli/policy/audit.h"
#include "cli/policy/policy_commands.h"
#include "cli/policy/policy_set.h"
#include "cli/policy/policy_set_file.h"
#include "cli/policy/profiles.h"
#include "platform/foundation/files.h"

#include <cstring>
#include <filesystem>
#include <memory>

/// All of the policies at once: out, in, beside each other, and away.

namespace cli {

using Json = nlohmann::json;
namespace fs = std::filesystem;

namespace {

std::string countText(std::size_t count, const std::string& what)
{
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

/// The set of a phone that is opened for reading; null and why there is none.
Json presentSet(const phone::PhoneDirectory& directory, std::string& problem)
{
    if (const auto why = openForReading(directory)) {
        problem = *why;
        return nullptr;
    }
    const PolicyValues values = PolicyValues::ofDevice();
    problem = values.problem();
    return problem.empty() ? policySetOf(values) : Json(nullptr);
}

ExitStatus exportPolicies(const phone::PhoneDirectory& directory, const std::string& file)
{
    std::string problem;
    const Json set = presentSet(directory, problem);
    if (!problem.empty())
        return refuse(problem);
    if (const auto wrong = problemOfSet(set))
        warn(wrong->problem + "; 'appledger policy import' won't take it ('appledger policy audit' tells more)");
    if (file.empty() || file == "-") {
        say(bytesOfSet(set, ""), { { "policies", set } });
        return ExitStatus::Done;
    }
    const std::string bytes = bytesOfSet(set, file);
    if (bytes.empty())
        return refuse("a property list has no way to write this; a file of JSON has");
    if (const int error = platform::writeHostFileAtomically(file, bytes, 0600))
        return refuse("can't write " + file + ": " + std::strerror(error));
    say("Wrote " + file + ".", { { "file", file }, { "bytes", bytes.size() } });
    return ExitStatus::Done;
}

Action exporting(Arguments& arguments)
{
    const auto file = std::make_shared<std::string>();
    arguments.add("FILE", *file, "where to; a property list where it ends in .plist (default: standard output)");
    return [file](const phone::PhoneDirectory& directory) { return exportPolicies(directory, *file); };
}

std::string itemLines(const std::vector<ItemChange>& items)
{
    std::string text;
    for (const ItemChange& item : items)
        text += "  " + onOneLine(describeItem(item)) + "\n";
    return text;
}

struct ImportOptions {
    std::string file;
    bool isMerge = false;
    bool isReplace = false;
    bool isDryRun = false;
};

ExitStatus importPolicies(const phone::PhoneDirectory& directory, const ImportOptions& options)
{
    const SetReading reading = setFromFile(options.file);
    if (!reading.problem.empty())
        return refuse(reading.problem + "; nothing is changed");
    std::string problem;
    const auto session = PolicySession::open(directory, problem);
    if (session)
        problem = session->values().problem();
    if (!problem.empty())
        return refuse(problem);
    const Json before = policySetOf(session->values());
    wantSet(*session, reading.set, options.isReplace ? SetMode::Replace : SetMode::Merge);
    if (options.isDryRun) {
        const auto items = differences(before, policySetOf(session->values()));
        Json changed = Json::array();
        for (const ItemChange& item : items)
            changed.push_back(itemJson(item));
        say(items.empty() ? "It would change nothing." : "It would change:\n" + itemLines(items),
            { { "changed", changed }, { "dryRun", true } });
        return ExitStatus::Done;
    }
    const CommitReport report
        = session->commit({ .verb = "policy import " + options.file + (options.isReplace ? " --replace" : "") });
    if (!report.isDone())
        return refuse(report.problem);
    Json object;
    addCommit(object, report);
    say("Changed " + countText(report.items.size(), "thing") + "." + describePosting(report) + "\n"
            + itemLines(report.items),
        object);
    return ExitStatus::Done;
}

Action importing(Arguments& arguments)
{
    const auto options = std::make_shared<ImportOptions>();
    arguments.add("FILE", options->file, "what 'policy export' has written; - is standard input").required();
    arguments.flag("--merge", options->isMerge, "add to what is set (default)");
    arguments.flag("--replace", options->isReplace, "unset what the file doesn't have").excludes("--merge");
    arguments.flag("--dry-run", options->isDryRun, "say what would change, and change nothing");
    return [options](const phone::PhoneDirectory& directory) { return importPolicies(directory, *options); };
}

/// A file, a profile of this phone, or the directory of a phone; "" is this phone. Null and why there is none.
Json setNamed(const phone::PhoneDirectory& directory, const std::string& name, std::string& problem)
{
    std::error_code error;
    if (name.empty())
        return presentSet(directory, problem);
    if (fs::is_directory(name, error))
        return presentSet(phone::PhoneDirectory(fs::absolute(name).lexically_normal().string()), problem);
    if (name == "-" || fs::exists(name, error)) {
        SetReading reading = setFromFile(name);
        problem = reading.problem;
        return reading.set;
    }
    const auto profiles = readProfiles(directory, problem);
    if (const auto found = profiles.find(name); found != profiles.end())
        return found->second;
    if (problem.empty())
        problem = name + " is no file, no profile and no phone's directory";
    return nullptr;
}

Action comparing(Arguments& arguments)
{
    struct Options {
        std::string before;
        std::string after;
    };
    const auto options = std::make_shared<Options>();
    arguments.add("A", options->before, "a file, a profile, or a phone's directory")
        .required()
        .example("policies.json");
    arguments.add("B", options->after, "another one (default: this phone)");
    return [options](const phone::PhoneDirectory& directory) {
        std::string problem;
        const Json before = setNamed(directory, options->before, problem);
        const Json after = problem.empty() ? setNamed(directory, options->after, problem) : Json();
        if (!problem.empty())
            return refuse(problem);
        const auto items = differences(before, after);
        Json changed = Json::array();
        for (const ItemChange& item : items)
            changed.push_back(itemJson(item));
        say(items.empty() ? "They are the same." : itemLines(items), { { "differences", changed } });
        return ExitStatus::Done;
    };
}

Action resetting(Arguments& arguments)
{
    struct Options {
        std::vector<Word> applications;
        bool isAll = false;
    };
    const auto options = std::make_shared<Options>();
    arguments.add("ID", options->applications, "applications, by identifier or name").example("com.example.notes");
    arguments.flag("--all", options->isAll, "unset everything").excludes("ID");
    return [options](const phone::PhoneDirectory& directory) {
        if (options->applications.empty() && !options->isAll)
            return refuseUsage("say which applications, or --all");
        std::string problem;
        const auto session = PolicySession::open(directory, problem);
        if (session)
            problem = session->values().problem();
        if (!problem.empty())
            return refuse(problem);
        std::string verb = "policy reset";
        if (options->isAll) {
            verb += " --all";
            wantSet(*session, emptySet(), SetMode::Replace);
        } else {
            for (const Word& application : options->applications)
                verb += " " + application.text();
            wantReset(*session, { options->applications.begin(), options->applications.end() });
        }
        const CommitReport report = session->commit({ .verb = verb });
        if (!report.isDone())
            return refuse(report.problem);
        Json object;
        addCommit(object, report);
        say(report.items.empty()
                ? "Nothing was set."
                : "Unset " + countText(report.items.size(), "thing") + "; 'appledger policy undo' brings back what was."
                    + describePosting(report) + "\n" + itemLines(report.items),
            object);
        return ExitStatus::Done;
    };
}

ExitStatus auditPolicies(const phone::PhoneDirectory& directory)
{
    if (const auto problem = openForReading(directory))
        return refuse(*problem);
    const PolicyValues values = PolicyValues::ofDevice();
    if (!values.problem().empty())
        return refuse(values.problem());
    const auto findings = auditOf(values, knownApplications(directory));
    std::string text;
    Json list = Json::array();
    for (const Finding& finding : findings) {
        text += finding.kind + ": " + onOneLine(finding.text) + "  (" + onOneLine(finding.key) + ")\n";
        list.push_back({ { "kind", finding.kind }, { "key", finding.key },
            { "application", finding.application.empty() ? Json(nullptr) : Json(finding.application) },
            { "text", finding.text } });
    }
    say(text.empty() ? "Nothing is odd." : text, { { "findings", list } });
    return ExitStatus::Done;
}

constexpr VerbRow rows[] {
    { "policy export", "all policies as a file that people can read", exporting },
    { "policy import", "take such a file over, whole or not at all", importing },
    { "policy diff", "what two sets of policies differ in", comparing },
    { "policy reset", "unset all that is set for applications, or for all", resetting },
    { "policy audit", "what is odd: unknown keys, wrong values, rules without effect, applications that are gone",
        plain<auditPolicies> },
};

} // namespace

extern const VerbRows wholeSetVerbs { rows };

} // namespace cli
