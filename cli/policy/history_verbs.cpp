#include "cli/command/arguments.h"
#include "cli/command/verb_rows.h"
#include "cli/policy/policy_commands.h"
#include "platform/foundation/files.h"

#include <ctime>
#include <memory>

/// The way back: what was changed, and the verbs that take it back.

namespace cli {

using Json = nlohmann::json;

namespace {

std::string timeText(double seconds)
{
    const auto time = static_cast<std::time_t>(seconds);
    std::tm parts {};
    char text[32] = "";
    if (::localtime_r(&time, &parts))
        std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &parts);
    return text;
}

std::string describe(const Transaction& transaction, const History& history)
{
    std::string text
        = std::to_string(transaction.number) + "  " + timeText(transaction.time) + "  " + onOneLine(transaction.verb);
    if (transaction.undoes)
        text += "  (takes back " + std::to_string(*transaction.undoes) + ")";
    if (transaction.redoes)
        text += "  (makes " + std::to_string(*transaction.redoes) + " again)";
    for (const ChangeNumber ended : transaction.ends)
        text += "  (takes back " + std::to_string(ended) + ")";
    if (transaction.until) {
        bool isWaiting = false;
        for (const Timer& timer : history.timers())
            isWaiting = isWaiting || timer.number == transaction.number;
        text += "  (until " + timeText(*transaction.until) + (isWaiting ? "; waits)" : ")");
    }
    for (const ValueChange& change : transaction.changes)
        for (const ItemChange& item : change.items())
            text += "\n    " + onOneLine(describeItem(item));
    return text + "\n";
}

Json objectOf(const Transaction& transaction)
{
    Json object { { "change", transaction.number }, { "secondsSince1970", transaction.time },
        { "verb", transaction.verb }, { "changed", Json::array() } };
    for (const ValueChange& change : transaction.changes)
        for (const ItemChange& item : change.items())
            object["changed"].push_back(itemJson(item));
    if (transaction.until)
        object["until"] = *transaction.until;
    if (transaction.undoes)
        object["undoes"] = *transaction.undoes;
    if (transaction.redoes)
        object["redoes"] = *transaction.redoes;
    if (!transaction.ends.empty())
        object["ends"] = transaction.ends;
    return object;
}

ExitStatus showHistory(const phone::PhoneDirectory& directory, std::optional<long> most)
{
    if (const auto problem = openForReading(directory))
        return refuse(*problem);
    std::string problem;
    const History history = readHistory(directory, problem);
    if (!problem.empty())
        return refuse(problem);
    const auto& all = history.transactions();
    const std::size_t shown = most ? std::min(all.size(), static_cast<std::size_t>(*most)) : all.size();
    std::string text;
    Json changes = Json::array();
    for (std::size_t index = all.size() - shown; index < all.size(); ++index) {
        text += describe(all[index], history);
        changes.push_back(objectOf(all[index]));
    }
    const auto numberOrNull = [](std::optional<ChangeNumber> number) { return number ? Json(*number) : Json(nullptr); };
    say(text.empty() ? "Nothing was changed by the command." : text,
        { { "changes", changes }, { "undo", numberOrNull(history.undoable()) },
            { "redo", numberOrNull(history.redoable()) } });
    return ExitStatus::Done;
}

Action history(Arguments& arguments)
{
    const auto most = std::make_shared<std::optional<long>>();
    arguments.add("--last", *most, "the newest alone").shownAs("N");
    return [most](const phone::PhoneDirectory& directory) {
        if (*most && **most < 1)
            return refuseUsage("--last takes a number from 1 on");
        return showHistory(directory, *most);
    };
}

enum class Way { Back, Again };

ExitStatus step(const phone::PhoneDirectory& directory, Way way, long count)
{
    if (const std::string missing = directory.problem(); !missing.empty())
        return refuse(missing);
    std::string problem;
    const auto session = PolicySession::open(directory, problem);
    if (!session)
        return refuse(problem);
    if (!session->values().problem().empty())
        return refuse(session->values().problem());
    const std::string verb = way == Way::Back ? "policy undo" : "policy redo";
    CommitReport all;
    std::string text;
    Json numbers = Json::array();
    for (long index = 0; index < count; ++index) {
        const auto number = way == Way::Back ? session->history().undoable() : session->history().redoable();
        if (!number)
            break;
        const std::string which = session->history().find(*number)->verb;
        const auto report = way == Way::Back ? session->undo(verb) : session->redo(verb);
        if (!report->isDone())
            return refuse(report->problem);
        numbers.push_back(*number);
        text += (way == Way::Back ? "Took back " : "Made again ") + std::to_string(*number) + ": " + onOneLine(which)
            + ".\n";
        for (const ItemChange& item : report->items)
            text += "    " + onOneLine(describeItem(item)) + "\n";
        for (const ItemChange& item : report->left)
            text += "    left as it is, since somebody else has changed it: " + onOneLine(nameText(item.name)) + "\n";
        all.items.insert(all.items.end(), report->items.begin(), report->items.end());
        all.left.insert(all.left.end(), report->left.begin(), report->left.end());
        for (const std::string& notification : report->notifications)
            if (std::find(all.notifications.begin(), all.notifications.end(), notification) == all.notifications.end())
                all.notifications.push_back(notification);
        all.isPosted = all.isPosted || report->isPosted;
        all.number = report->number;
    }
    if (numbers.empty())
        return refuse(way == Way::Back ? "there is nothing to take back" : "there is nothing to make again");
    Json object { { way == Way::Back ? "undone" : "redone", numbers } };
    addCommit(object, all);
    say(text, object);
    return ExitStatus::Done;
}

template <Way W> Action steps(Arguments& arguments)
{
    const auto count = std::make_shared<std::optional<long>>();
    arguments.add("N", *count, "how many changes (default 1)");
    return [count](const phone::PhoneDirectory& directory) {
        const long wanted = count->value_or(1);
        return wanted < 1 ? refuseUsage("N is a number from 1 on") : step(directory, W, wanted);
    };
}

/// What the phone has done when it is time; nothing to say where there was nothing to do.
Action settle(Arguments& arguments)
{
    const auto report = std::make_shared<std::optional<long>>();
    arguments.add("--report-fd", *report, "of who starts it");
    return [report](const phone::PhoneDirectory& directory) {
        const std::string problem = settlePolicies(directory);
        if (!problem.empty())
            return refuse(problem);
        say("", {});
        return ExitStatus::Done;
    };
}

constexpr VerbRow rows[] {
    { "policy history", "what was changed, when, and by which verb", history },
    { "policy undo", "take the last change back", steps<Way::Back> },
    { "policy redo", "make the change again that was taken back last", steps<Way::Again> },
    { "policy settle", "finish what was begun, and take back what is to end by now", settle, "", true },
};

} // namespace

extern const VerbRows historyVerbs { rows };

} // namespace cli
