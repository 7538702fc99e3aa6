#include "phone/springboard/applications/termination_assertion.h"

#include "phone/springboard/applications/application_process.h"
#include "phone/system/journal.h"
#include "platform/dispatch/clock.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <atomic>
#include <future>
#include <mutex>
#include <set>
#include <thread>

namespace phone {

using namespace platform;

namespace {

struct Held {
    std::mutex mutex;
    std::multiset<std::string, std::less<>> identifiers;
};

Held& held()
{
    static auto* const shared = new Held; // threads end after main()
    return *shared;
}

std::atomic<bool> isEnforced = false;
std::thread::id mainThread;

struct TerminationAssertion {
    std::string bundleIdentifier;
};

void endOnMainThread(const std::string& bundleIdentifier)
{
    if (!isEnforced)
        return;
    if (std::this_thread::get_id() == mainThread) {
        endProcessOf(bundleIdentifier);
        return;
    }
    const auto ended = std::make_shared<std::promise<void>>();
    dispatch_async(dispatch_get_main_queue(), [ended, bundleIdentifier] {
        endProcessOf(bundleIdentifier);
        ended->set_value();
    });
    ended->get_future().wait();
}

} // namespace

void* createTerminationAssertion(const void*, const id& bundleIdentifier, int, int* error)
{
    if (error)
        *error = 0;
    const auto identifier = asString(bundleIdentifier);
    auto* const assertion = new TerminationAssertion { identifier ? identifier->text() : std::string() };
    {
        const std::lock_guard lock(held().mutex);
        held().identifiers.insert(assertion->bundleIdentifier);
    }
    journal(JournalEvent::Note, assertion->bundleIdentifier + " is held down");
    endOnMainThread(assertion->bundleIdentifier);
    return assertion;
}

void invalidateTerminationAssertion(void* assertion)
{
    const std::unique_ptr<TerminationAssertion> taken(static_cast<TerminationAssertion*>(assertion));
    if (!taken)
        return;
    journal(JournalEvent::Note, taken->bundleIdentifier + " is let go");
    const std::lock_guard lock(held().mutex);
    if (const auto found = held().identifiers.find(taken->bundleIdentifier); found != held().identifiers.end())
        held().identifiers.erase(found);
}

void enforceTerminationAssertions()
{
    mainThread = std::this_thread::get_id();
    isEnforced = true;
}

std::string whyNotRunnable(const id& application)
{
    const auto identifier = asString(send<"bundleIdentifier">(application));
    if (send<"isPlaceholder", bool>(send<"info">(application)))
        return "Nothing but its data is on the phone";
    const std::lock_guard lock(held().mutex);
    return identifier && held().identifiers.contains(identifier->view()) ? "It is held down" : "";
}

} // namespace phone
