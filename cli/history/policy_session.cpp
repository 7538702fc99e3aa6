#include "cli/history/policy_session.h"

#include "cli/command/phone_client.h"
#include "phone/supervisor/policy_deadline.h"
#include "platform/darwin/bus.h"
#include "platform/darwin/notify.h"
#include "platform/foundation/files.h"

#include <algorithm>
#include <chrono>
#include <cstring>

namespace cli {

using Json = nlohmann::json;
using Clash = ValueChange::Clash;
using Direction = ValueChange::Direction;

namespace {

std::string withoutEnd(const WrittenChange& written)
{
    return written.outcome.problem
        + (written.outcome.setAside.empty() ? "" : "; what couldn't be read is " + written.outcome.setAside + " now");
}

/// Back to what the values were before some of a transaction's changes, the last first.
void takeBack(const std::vector<ValueChange>& made)
{
    for (auto change = made.rbegin(); change != made.rend(); ++change)
        static_cast<void>(writeChange(*change, Direction::Back, Clash::Leave).outcome.isDone());
}

void addNotification(const ValueName& name, std::vector<std::string>& notifications)
{
    const std::string notification(notificationOf(name));
    if (!notification.empty() && std::ranges::find(notifications, notification) == notifications.end())
        notifications.push_back(notification);
}

} // namespace

double secondsNow()
{
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

PolicySession::PolicySession(const phone::PhoneDirectory& directory, std::unique_ptr<HistoryFile> file)
    : directory_(directory)
    , file_(std::move(file))
{
}

std::unique_ptr<PolicySession> PolicySession::open(const phone::PhoneDirectory& directory, std::string& problem)
{
    auto file = HistoryFile::open(directory, problem);
    if (!file)
        return nullptr;
    if (!platform::setDeviceRoot(directory.root())) {
        problem = "can't open " + directory.root() + " as the phone's root";
        return nullptr;
    }
    std::unique_ptr<PolicySession> session(new PolicySession(directory, std::move(file)));
    problem = session->finishUnfinished();
    if (problem.empty()) {
        session->present_ = session->wanted_ = PolicyValues::ofDevice();
        problem = session->endTimers();
    }
    return problem.empty() ? std::move(session) : nullptr;
}

void PolicySession::want(const ValueName& name, Json value)
{
    // The files beside the domain have no way to tell an empty list from none.
    if (name.place != ValueName::Place::Domain && value.empty())
        value = present_.value(name).is_null()         ? Json()
            : name.place == ValueName::Place::MuteFile ? Json::array()
                                                       : Json::object();
    wanted_.set(name, std::move(value));
    if (std::ranges::find(names_, name) == names_.end())
        names_.push_back(name);
}

CommitReport PolicySession::commit(CommitOptions options, const std::vector<ValueName>& always)
{
    Transaction transaction { .number = file_->history().nextNumber(),
        .time = secondsNow(),
        .verb = std::move(options.verb),
        .until = options.until,
        .undoes = options.undoes,
        .redoes = options.redoes,
        .ends = std::move(options.ends) };
    for (const ValueName& name : names_)
        if (auto change = ValueChange::between(name, present_.value(name), wanted_.value(name)))
            transaction.changes.push_back(std::move(*change));
    names_.clear();
    for (ItemChange& item : options.confirmed)
        if (file_->history().timerOf(item))
            transaction.confirmed.push_back(std::move(item));
    const bool isNothing = transaction.changes.empty() && transaction.confirmed.empty() && !transaction.undoes
        && !transaction.redoes && transaction.ends.empty();
    CommitReport report;
    if (isNothing) {
        for (const ValueName& name : always)
            addNotification(name, report.notifications);
        post(report);
        return report;
    }
    if (transaction.until)
        report.problem = keepDeadline(transaction.until);
    if (report.isDone())
        report.problem = file_->begin(transaction);
    if (report.isDone())
        report = make(transaction, transaction.undoes || transaction.redoes ? Clash::Leave : Clash::Override, always);
    present_ = wanted_ = PolicyValues::ofDevice();
    return report;
}

/// Of what has begun: the changes, the notifications, and the end in the history.
CommitReport PolicySession::make(const Transaction& transaction, Clash clash, const std::vector<ValueName>& always)
{
    CommitReport report { .number = transaction.number };
    std::vector<ValueChange> made;
    bool isAsBegun = true;
    for (const ValueChange& change : transaction.changes) {
        const WrittenChange written = writeChange(change, Direction::Forward, clash);
        if (!written.outcome.isDone()) {
            takeBack(made);
            file_->abandon();
            return { .problem = withoutEnd(written) };
        }
        if (!written.outcome.setAside.empty())
            report.setAside = written.outcome.setAside;
        const auto actual = ValueChange::between(change.name(), written.before, written.after);
        addNotification(change.name(), report.notifications);
        if (actual) {
            made.push_back(*actual);
        } else if (change.carriedOut(written.after, Direction::Back, Clash::Leave)) {
            made.push_back(change); // by who began it, or by another who wanted the same
        } else {
            isAsBegun = false;
            std::ranges::move(change.items(), std::back_inserter(report.left));
            continue;
        }
        std::ranges::move(made.back().items(), std::back_inserter(report.items));
        isAsBegun = isAsBegun && made.back().toJson() == change.toJson();
    }
    for (const ValueName& name : always)
        addNotification(name, report.notifications);
    post(report);
    file_->finish(isAsBegun ? std::nullopt : std::optional(made));
    keepDeadline(std::nullopt);
    return report;
}

void PolicySession::post(CommitReport& report) const
{
    report.isPosted = !report.notifications.empty() && connectToPhone(directory_);
    if (!report.isPosted)
        return;
    for (const std::string& notification : report.notifications)
        platform::CFNotificationCenterPostNotification(notification);
    platform::flushBus(std::chrono::seconds { 5 });
}

/// So that the phone knows when to have something taken back, also one that is down until then.
std::string PolicySession::keepDeadline(std::optional<double> withThis)
{
    auto deadline = file_->history().deadline();
    if (withThis)
        deadline = std::min(deadline.value_or(*withThis), *withThis);
    if (deadline == phone::readPolicyDeadline(directory_))
        return "";
    const int error = phone::writePolicyDeadline(directory_, deadline);
    return error == 0 ? "" : "can't keep when the change is to end: " + std::string(std::strerror(error));
}

std::optional<CommitReport> PolicySession::undo(const std::string& verb)
{
    const auto number = history().undoable();
    if (!number)
        return std::nullopt;
    const Transaction taken = *history().find(*number);
    CommitOptions options { .verb = verb, .undoes = number };
    std::vector<ItemChange> left;
    for (auto change = taken.changes.rbegin(); change != taken.changes.rend(); ++change) {
        const Json present = wanted_.value(change->name());
        for (ItemChange& item : change->items())
            options.confirmed.push_back(std::move(item));
        if (const auto former = change->carriedOut(present, Direction::Back, Clash::Leave))
            want(change->name(), *former);
        else
            std::ranges::move(change->items(), std::back_inserter(left));
    }
    CommitReport report = commit(std::move(options));
    std::ranges::move(left, std::back_inserter(report.left));
    return report;
}

std::optional<CommitReport> PolicySession::redo(const std::string& verb)
{
    const auto number = history().redoable();
    if (!number)
        return std::nullopt;
    const Transaction again = *history().find(*number);
    std::vector<ItemChange> left;
    for (const ValueChange& change : again.changes) {
        if (const auto next = change.carriedOut(wanted_.value(change.name()), Direction::Forward, Clash::Leave))
            want(change.name(), *next);
        else
            std::ranges::move(change.items(), std::back_inserter(left));
    }
    CommitReport report = commit({ .verb = verb, .until = again.until, .redoes = number });
    std::ranges::move(left, std::back_inserter(report.left));
    return report;
}

std::string PolicySession::beginWatching(const std::string& verb, const std::vector<ValueName>& names)
{
    Transaction transaction { .number = file_->history().nextNumber(), .time = secondsNow(), .verb = verb };
    transaction.watched = Json::array();
    for (const ValueName& name : names)
        transaction.watched->push_back({ { "key", name.key }, { "before", present_.value(name) } });
    return file_->begin(transaction);
}

void PolicySession::endWatching()
{
    if (!file_->unfinished() || !file_->unfinished()->watched)
        return;
    present_ = wanted_ = PolicyValues::ofDevice();
    std::vector<ValueChange> changes;
    for (const Json& each : *file_->unfinished()->watched) {
        const ValueName name = ValueName::ofKey(each.value("key", ""));
        if (auto change = ValueChange::between(name, each.value("before", Json()), present_.value(name)))
            changes.push_back(std::move(*change));
    }
    if (changes.empty())
        file_->abandon();
    else
        file_->finish(changes);
    keepDeadline(std::nullopt);
}

/// Another has begun it and was killed. What it has changed already is found changed, and the rest is changed now; who
/// hears of it twice rereads the same.
std::string PolicySession::finishUnfinished()
{
    const auto unfinished = file_->unfinished();
    if (!unfinished)
        return "";
    if (unfinished->watched) {
        endWatching();
        return "";
    }
    const CommitReport report = make(*unfinished, Clash::Leave, {});
    if (!report.isDone())
        warn("what \"" + unfinished->verb + "\" had begun can't be finished, and is dropped: " + report.problem);
    return "";
}

std::string PolicySession::endTimers()
{
    const double now = secondsNow();
    CommitOptions options { .verb = "the end of a time" };
    for (const Timer& timer : history().timers()) {
        if (timer.until > now)
            continue;
        const ItemChange& item = timer.item;
        want(item.name, withItem(wanted_.value(item.name), item, item.before));
        options.confirmed.push_back(item);
        if (std::ranges::find(options.ends, timer.number) == options.ends.end())
            options.ends.push_back(timer.number);
    }
    if (options.ends.empty()) {
        // One that was killed before it began may have left one that nothing belongs to.
        keepDeadline(std::nullopt);
        return "";
    }
    const CommitReport report = commit(std::move(options));
    return report.isDone() ? "" : "what was to end by now can't be taken back: " + report.problem;
}

std::string settlePolicies(const phone::PhoneDirectory& directory)
{
    const auto deadline = phone::readPolicyDeadline(directory);
    if (!isSomethingUnfinished(directory) && (!deadline || *deadline > secondsNow()))
        return "";
    std::string problem;
    PolicySession::open(directory, problem);
    return problem;
}

} // namespace cli
