#include "phone/localauthentication/prompts.h"

#include "phone/system/journal.h"
#include "platform/darwin/system.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/block.h"
#include "platform/foundation/error.h"

#include <mutex>
#include <utility>
#include <vector>

namespace phone {

using namespace platform;

namespace {

struct Evaluation {
    const NSObject* context; ///< by its identity alone
    Prompt prompt;
    id reply;
};

struct Evaluations {
    std::mutex mutex;
    std::vector<Evaluation> stack; ///< the one that is up last
};

Evaluations& evaluations()
{
    static auto* const shared = new Evaluations;
    return *shared;
}

id errorOf(PromptAnswer answer)
{
    constexpr auto domain = "com.apple.LocalAuthentication";
    switch (answer) {
    case PromptAnswer::Authenticated:
        break;
    case PromptAnswer::Failed:
        return error(domain, -1);
    case PromptAnswer::Cancelled:
        return error(domain, -2);
    }
    return nil;
}

} // namespace

void putPromptUp(const NSObject* context, Prompt prompt, id reply)
{
    journal(JournalEvent::Prompt, processFacts().processName, prompt.reason);
    const std::lock_guard lock(evaluations().mutex);
    evaluations().stack.push_back({ context, std::move(prompt), std::move(reply) });
}

void dropPrompts(const NSObject* context)
{
    // A reply may hold other contexts, so it goes once the lock is open again.
    std::vector<Evaluation> dropped;
    const std::lock_guard lock(evaluations().mutex);
    for (Evaluation& evaluation : evaluations().stack)
        if (evaluation.context == context)
            dropped.push_back(std::move(evaluation));
    std::erase_if(evaluations().stack, [context](const Evaluation& each) { return each.context == context; });
}

std::optional<Prompt> promptThatIsUp()
{
    const std::lock_guard lock(evaluations().mutex);
    if (evaluations().stack.empty())
        return std::nullopt;
    return evaluations().stack.back().prompt;
}

void nameApplicationOfPrompt(const std::string& identifier)
{
    const std::lock_guard lock(evaluations().mutex);
    if (!evaluations().stack.empty())
        evaluations().stack.back().prompt.application = identifier;
}

bool answerPrompt(PromptAnswer answer)
{
    id reply;
    {
        const std::lock_guard lock(evaluations().mutex);
        if (evaluations().stack.empty())
            return false;
        reply = std::move(evaluations().stack.back().reply);
        evaluations().stack.pop_back();
    }
    dispatch_async(dispatch_get_global_queue(QueuePriority::Default), [reply = std::move(reply), answer] {
        callBlock(reply, answer == PromptAnswer::Authenticated, errorOf(answer));
    });
    return true;
}

} // namespace phone
