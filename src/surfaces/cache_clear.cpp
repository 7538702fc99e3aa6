#include "surfaces/cache_clear.h"

#include "core/empty_directory.h"
#include "platform/dispatch/clock.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "surfaces/auto_clear_decision.h"

namespace appledger {

using namespace platform;

namespace {

dispatch_once_t madeOnce;
NSObject* g_lastClearTimes; ///< identifier → seconds of the last clear; touched on the queue alone
dispatch_queue_t* g_clearCacheQueue;

void makeQueueAndTimes()
{
    dispatch_once(madeOnce, [] {
        g_lastClearTimes = mutableDictionary().leak();
        g_clearCacheQueue = new dispatch_queue_t(dispatch_queue_create("com.merrowlane.appledger.clearcache"));
    });
}

void clearCaches(const id& bundleIdentifier)
{
    const id proxy
        = askObject<"applicationProxyForIdentifier:">(id(classNamed<"LSApplicationProxy">()), bundleIdentifier);
    const id container = askObject<"dataContainerURL">(proxy);
    if (!container)
        return;
    const id caches = askObject<"URLByAppendingPathComponent:">(container, string("Library/Caches"));
    const id temporary = askObject<"URLByAppendingPathComponent:">(container, string("tmp"));
    emptyDirectory(caches);
    emptyDirectory(temporary);
}

} // namespace

void ALPerformBackgroundCacheClear(const id& bundleIdentifier)
{
    const auto identifier = asString(bundleIdentifier);
    if (!identifier || identifier->empty())
        return;
    makeQueueAndTimes();
    dispatch_async(*g_clearCacheQueue, [bundleIdentifier] {
        const double now = CACurrentMediaTime();
        const id times = g_lastClearTimes;
        if (!mayClearAgain(asDouble(send<"objectForKey:">(times, bundleIdentifier)), now))
            return;
        send<"setObject:forKey:", void>(times, real(now), bundleIdentifier);
        dispatch_async(dispatch_get_global_queue(QueuePriority::Background),
            [bundleIdentifier] { clearCaches(bundleIdentifier); });
    });
}

} // namespace appledger
