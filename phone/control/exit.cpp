#include "phone/control/exit.h"

#include "phone/launchservices/installed_applications.h"
#include "phone/springboard/applications/application_process.h"
#include "phone/springboard/roads.h"
#include "platform/dispatch/clock.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/files.h"

#include <array>
#include <chrono>
#include <memory>

namespace phone {

using namespace platform;
using namespace std::chrono_literals;

namespace {

constexpr std::array<std::string_view, 2> cacheFolders { "Library/Caches", "tmp" };

/// Counts off the main thread: a folder may hold very many items.
class CacheWatch : public std::enable_shared_from_this<CacheWatch> {
public:
    CacheWatch(std::optional<std::string> container, std::function<void(const Json& folders)> done)
        : container_(std::move(container))
        , before_(count())
        , done_(std::move(done))
    {
    }

    void look()
    {
        dispatch_after(20ms, dispatch_get_global_queue(QueuePriority::Default), [self = shared_from_this()] {
            const Counts now = self->count();
            if (now == Counts {} || clockNow() >= self->end_)
                dispatch_async(dispatch_get_main_queue(), [self, now] { self->done_(self->report(now)); });
            else
                self->look();
        });
    }

private:
    using Counts = std::array<std::size_t, cacheFolders.size()>;

    Counts count() const
    {
        Counts counts {};
        for (std::size_t index = 0; container_ && index < counts.size(); ++index)
            counts[index] = directoryEntries(pathByAppending(*container_, cacheFolders[index])).size();
        return counts;
    }

    Json report(const Counts& after) const
    {
        Json folders = Json::array();
        for (std::size_t index = 0; index < after.size(); ++index)
            folders.push_back(
                { { "folder", cacheFolders[index] }, { "before", before_[index] }, { "after", after[index] } });
        return folders;
    }

    const std::optional<std::string> container_;
    const Counts before_;
    const std::function<void(const Json&)> done_;
    const std::chrono::nanoseconds end_ = clockNow() + 1s;
};

} // namespace

void exitApplication(const Json& request, const Reply& reply)
{
    const std::string identifier = text(request, "application");
    takeJournal();
    const auto watch
        = std::make_shared<CacheWatch>(dataContainerOf(identifier), [reply, identifier](const Json& folders) {
              reply({ { "ok", true }, { "application", identifier }, { "front", frontmostApplication() },
                  { "folders", folders }, { "journal", toJson(takeJournal()) } });
          });
    if (endProcessOf(identifier))
        watch->look();
    else
        reply(failure(identifier + " isn't running"));
}

} // namespace phone
