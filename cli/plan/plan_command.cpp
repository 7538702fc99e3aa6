#include "cli/plan/plan_command.h"

#include "entry/load_plan.h"
#include "phone/process/process_definition.h"
#include "platform/runtime/class.h"

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

} // namespace

ExitStatus printPlan(const PlanOptions& options)
{
    phone::registerClassesOfProcess(
        options.processName, options.bundleIdentifier, options.version, options.absentClasses);
    const LoadFacts facts { { options.bundleIdentifier, options.processName, options.version },
        [](std::string_view name) { return platform::NSClassFromString(name) != nullptr; } };

    std::ostringstream text;
    text << "Load into " << options.processName << " ("
         << (options.bundleIdentifier.empty() ? "no bundle identifier" : options.bundleIdentifier) << ") on "
         << options.version.text() << ":\n";
    Json steps = Json::array();
    for (const LoadStep& step : planLoad(facts)) {
        steps.push_back(stepObject(step));
        printStep(text, step, steps.size());
    }
    say(text.str(),
        { { "process", options.processName }, { "bundleIdentifier", options.bundleIdentifier },
            { "ios", options.version.text() }, { "steps", steps } });
    return ExitStatus::Done;
}

} // namespace cli
