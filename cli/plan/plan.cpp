#include "cli/command/arguments.h"
#include "cli/command/verb_rows.h"
#include "entry/load_plan.h"
#include "phone/process/process_definition.h"
#include "platform/runtime/class.h"

#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>

namespace cli {

using namespace appledger;
using Json = nlohmann::json;

namespace {

const char* kindName(LoadStepKind kind)
{
    switch (kind) {
    case LoadStepKind::LoadCache:
        return "load cache";
    case LoadStepKind::CreateSingleton:
        return "create singleton";
    case LoadStepKind::AddObserver:
        return "add observer";
    case LoadStepKind::InstallGroup:
        return "install group";
    }
    return "";
}

const char* kindName(HookKind kind)
{
    switch (kind) {
    case HookKind::ReplaceInstanceMethod:
        return "replace";
    case HookKind::ReplaceClassMethod:
        return "replace class method";
    case HookKind::AddMethod:
        return "add";
    case HookKind::AddProperty:
        return "add property";
    }
    return "";
}

bool isAdded(HookKind kind)
{
    return kind == HookKind::AddMethod || kind == HookKind::AddProperty;
}

Json rowObject(const HookRow& row)
{
    Json object { { "class", row.className }, { "selector", row.selector }, { "kind", kindName(row.kind) },
        { "targetExists", hookTargetExists(row) } };
    if (isAdded(row.kind))
        object["types"] = row.types;
    if (row.kind == HookKind::AddProperty) {
        object["setter"] = row.setter;
        object["setterTypes"] = platform::methodEncoding<void, const platform::id&>;
        object["attributes"] = { { "T", row.propertyType }, { "&", "" }, { "N", "" } };
    }
    return object;
}

void printRow(std::ostream& out, const HookRow& row)
{
    out << "        " << (hookTargetExists(row) ? "  " : "- ") << row.className << ' ' << row.selector;
    if (row.kind != HookKind::ReplaceInstanceMethod)
        out << "  (" << kindName(row.kind) << ')';
    if (isAdded(row.kind))
        out << "  \"" << row.types << '"';
    if (row.kind == HookKind::AddProperty)
        out << ", " << row.setter << " \"" << platform::methodEncoding<void, const platform::id&> << "\", T"
            << row.propertyType << ",&,N";
    if (!hookTargetExists(row))
        out << "  (not on this system)";
    out << '\n';
}

Json stepObject(const LoadStep& step)
{
    Json object { { "step", kindName(step.kind) }, { "name", step.name } };
    if (step.kind == LoadStepKind::AddObserver) {
        object["notification"] = step.notification;
        object["suspensionBehavior"] = 4;
    }
    if (step.group) {
        object["rows"] = Json::array();
        step.group->forEachRow([&object](const HookRow& row) { object["rows"].push_back(rowObject(row)); });
    }
    return object;
}

void printStep(std::ostream& out, const LoadStep& step, std::size_t number)
{
    out.width(4);
    out << number << "  " << kindName(step.kind) << "  " << step.name;
    if (step.kind == LoadStepKind::AddObserver)
        out << "  on " << step.notification;
    out << '\n';
    if (step.group)
        step.group->forEachRow([&out](const HookRow& row) { printRow(out, row); });
}

struct PlanOptions {
    Word bundleIdentifier;
    Word processName;
    platform::SystemVersion version { 16, 0, 0 };
    std::vector<Word> absentClasses;
};

/// The library's load into a process of that name, step by step, and for each row of a hook group whether its target
/// exists there.
ExitStatus printPlan(const PlanOptions& options)
{
    const std::string& processName = options.processName;
    const std::string& bundleIdentifier = options.bundleIdentifier;
    const std::vector<std::string> absent(options.absentClasses.begin(), options.absentClasses.end());
    phone::registerClassesOfProcess(processName, bundleIdentifier, options.version, absent);
    const LoadFacts facts { { bundleIdentifier, processName, options.version },
        [](std::string_view name) { return platform::NSClassFromString(name) != nullptr; } };

    std::ostringstream text;
    text << "Load into " << processName << " ("
         << (bundleIdentifier.empty() ? "no bundle identifier" : bundleIdentifier) << ") on " << options.version.text()
         << ":\n";
    Json steps = Json::array();
    for (const LoadStep& step : planLoad(facts)) {
        steps.push_back(stepObject(step));
        printStep(text, step, steps.size());
    }
    say(text.str(),
        { { "process", processName }, { "bundleIdentifier", bundleIdentifier }, { "ios", options.version.text() },
            { "steps", steps } });
    return ExitStatus::Done;
}

Action plan(Arguments& arguments)
{
    const auto options = std::make_shared<PlanOptions>();
    arguments.add("--bundle", options->bundleIdentifier, "bundle identifier of the process").required();
    arguments.add("--process", options->processName, "name of the process").required();
    arguments.add("--absent", options->absentClasses, "a class that the system shall not have");
    arguments.addVersion(options->version);
    return [options](const phone::PhoneDirectory&) { return printPlan(*options); };
}

constexpr VerbRow rows[] { { "plan", "print the library's load into a process, step by step", plan } };

} // namespace

extern const VerbRows planVerbs { rows };

} // namespace cli
