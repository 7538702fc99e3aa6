#include "phone/control/authentication.h"

#include "phone/control/request_rows.h"
#include "phone/localauthentication/prompts.h"
#include "phone/springboard/roads.h"
#include "platform/darwin/system.h"
#include "platform/dispatch/clock.h"
#include "platform/dispatch/queue.h"
#include "platform/runtime/class.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <memory>
#include <utility>

namespace phone {

using namespace platform;
using namespace std::chrono_literals;

namespace {

bool isConsequence(const JournalEntry& entry)
{
    switch (entry.event) {
    case JournalEvent::Opened:
    case JournalEvent::OpenedInBackground:
    case JournalEvent::Declined:
    case JournalEvent::Prompt:
        return true;
    default:
        return false;
    }
}

/// Looks now and then at the journal for what an answer to a prompt brings: nobody tells the phone what its
/// owner's success is good for.
class Watch : public std::enable_shared_from_this<Watch> {
public:
    explicit Watch(std::function<void(const std::vector<JournalEntry>&)> done)
        : done_(std::move(done))
    {
    }

    void look()
    {
        std::ranges::move(takeJournal(), std::back_inserter(seen_));
        if (std::ranges::any_of(seen_, isConsequence) || clockNow() >= end_)
            done_(seen_);
        else
            dispatch_after(20ms, dispatch_get_main_queue(), [self = shared_from_this()] { self->look(); });
    }

private:
    const std::function<void(const std::vector<JournalEntry>&)> done_;
    const std::chrono::nanoseconds end_ = clockNow() + 1s;
    std::vector<JournalEntry> seen_;
};

bool flag(const Json& request, std::string_view key)
{
    const auto value = request.find(key);
    return value != request.end() && value->is_boolean() && value->get<bool>();
}

PromptAnswer answerIn(const Json& request)
{
    if (flag(request, "success"))
        return PromptAnswer::Authenticated;
    return flag(request, "cancelled") ? PromptAnswer::Cancelled : PromptAnswer::Failed;
}

} // namespace

Json promptStatus()
{
    const auto prompt = promptThatIsUp();
    if (!prompt)
        return nullptr;
    const std::chrono::duration<double> age = clockNow() - prompt->asked;
    return { { "process", processFacts().processName }, { "reason", prompt->reason },
        { "fallbackTitle", prompt->fallbackTitle }, { "policy", prompt->policy },
        { "application", prompt->application.empty() ? Json(nullptr) : Json(prompt->application) },
        { "secondsUp", age.count() } };
}

void nameApplicationOfPrompt(const std::vector<JournalEntry>& entries, const std::vector<std::string>& beingOpened)
{
    const bool isOurs = std::ranges::any_of(entries, [](const JournalEntry& entry) {
        return entry.event == JournalEvent::Prompt && entry.subject == processFacts().processName;
    });
    if (isOurs && beingOpened.size() == 1)
        nameApplicationOfPrompt(beingOpened.front());
}

namespace {

void authenticate(const Json& request, const Reply& reply)
{
    const Json prompt = promptStatus();
    if (!answerPrompt(answerIn(request))) {
        Json refusal = failure("no prompt is up");
        refusal["prompt"] = nullptr;
        reply(refusal);
        return;
    }
    const auto watch = std::make_shared<Watch>([reply, prompt](const std::vector<JournalEntry>& entries) {
        Json report = launchReport(entries);
        report["prompt"] = prompt;
        if (objc_getClass("SBMainWorkspace"))
            report["front"] = frontmostApplication();
        reply(report);
    });
    watch->look();
}

constexpr RequestRow rows[] { { "authenticate", authenticate } };

} // namespace

extern const RequestRows authenticationRequests { rows };

} // namespace phone
