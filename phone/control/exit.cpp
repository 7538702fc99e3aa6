#include "phone/control/answers.h"
#include "phone/control/request_rows.h"
#include "phone/launchservices/installed_applications.h"
#include "phone/springboard/applications/application_process.h"
#include "phone/springboard/roads.h"
#include "platform/dispatch/clock.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/device_path.h"
#include "platform/foundation/directory_tree.h"
#include "platform/foundation/files.h"

#include <array>
#include <chrono>
#include <fcntl.h>
#include <memory>

namespace phone {

using namespace platform;
using namespace std::chrono_literals;

namespace {

constexpr std::array<std::string_view, 2> cacheFolders { "Library/Caches", "tmp" };

struct Counts {
    std::array<std::size_t, cacheFolders.size()> items {}; ///< right in the folders
    std::size_t beneath = 0; ///< in all that is in them; a clearing may be long at work in one item

    bool allGone() const { return items == decltype(items) {}; }
    friend bool operator==(const Counts&, const Counts&) = default;
};

/// So long nothing may change before a clearing counts as not begun, or as ended.
constexpr auto patience = 1s;
/// So long a clearing is watched.
constexpr auto longestWatch = 3s;

std::size_t countBeneath(int directory, int depth)
{
    constexpr int deepest = 64;
    std::size_t count = 0;
    for (platform::detail::DirectoryListing listing(directory); !listing.empty(); listing.advance()) {
        ++count;
        if (!platform::detail::mayBeDirectory(listing.kind()) || depth >= deepest)
            continue;
        if (const auto inner = platform::detail::openDirectoryIn(directory, listing.name()))
            count += countBeneath(inner.get(), depth + 1);
    }
    return count;
}

enum class Depth { Top, All };

Counts countItems(const std::optional<std::string>& container, Depth depth)
{
    Counts counts;
    for (std::size_t index = 0; container && index < counts.items.size(); ++index) {
        const std::string folder = pathByAppending(*container, cacheFolders[index]);
        counts.items[index] = directoryEntries(folder).size();
        if (depth == Depth::Top)
            continue;
        if (const auto opened = platform::detail::openDevicePath(folder, O_RDONLY | O_DIRECTORY); opened.descriptor)
            counts.beneath += countBeneath(opened.descriptor.get(), 0);
    }
    return counts;
}

/// Ends an application's process and tells what becomes of its caches. A folder may hold very many items, which are
/// counted off the main thread; the watch, and the reply in it, stay on it.
class Exit : public std::enable_shared_from_this<Exit> {
public:
    Exit(std::string identifier, Reply reply)
        : identifier_(std::move(identifier))
        , reply_(std::move(reply))
    {
    }

    void begin() { count(0ms, Depth::Top, &Exit::end); }

private:
    void count(std::chrono::milliseconds delay, Depth depth, void (Exit::*next)(const Counts& counts))
    {
        dispatch_after(delay, dispatch_get_global_queue(QueuePriority::Default),
            [self = shared_from_this(), depth, next, container = container_]() mutable {
                const Counts counts = countItems(container, depth);
                dispatch_async(
                    dispatch_get_main_queue(), [self = std::move(self), next, counts] { ((*self).*next)(counts); });
            });
    }

    void end(const Counts& counts)
    {
        before_ = last_ = counts;
        if (!endProcessOf(identifier_)) {
            reply_(failure(identifier_ + " isn't running"));
            return;
        }
        began_ = changed_ = clockNow();
        count(0ms, Depth::All, &Exit::look);
    }

    void look(const Counts& counts)
    {
        const std::chrono::nanoseconds now = clockNow();
        if (std::exchange(last_, counts) != counts)
            changed_ = now;
        const bool isOver = counts.allGone() || now - changed_ >= patience;
        if (isOver || now - began_ >= longestWatch)
            report(!isOver);
        else
            count(20ms, Depth::All, &Exit::look);
    }

    void report(bool goesOn) const
    {
        Json folders = Json::array();
        for (std::size_t index = 0; index < cacheFolders.size(); ++index)
            folders.push_back({ { "folder", cacheFolders[index] }, { "before", before_.items[index] },
                { "after", last_.items[index] } });
        reply_({ { "ok", true }, { "application", identifier_ }, { "front", frontmostApplication() },
            { "folders", folders }, { "clearingGoesOn", goesOn }, { "journal", toJson(takeJournal()) } });
    }

    const std::string identifier_;
    const Reply reply_;
    const std::optional<std::string> container_ = dataContainerOf(identifier_);
    Counts before_ {};
    Counts last_ {};
    std::chrono::nanoseconds began_ {};
    std::chrono::nanoseconds changed_ {}; ///< when the counts last did
};

/// "exit": the process of "application" ends. The answer, {"ok", "application", "front", "folders": [{"folder",
/// "before", "after"}], "clearingGoesOn", "journal"}, tells how many items its folders for caches held before, and once
/// both are empty or stay as they are; after three seconds it says that the clearing goes on. Refused when the
/// application doesn't run.
void exitApplication(const Json& request, const Reply& reply)
{
    std::make_shared<Exit>(text(request, "application"), reply)->begin();
}

constexpr RequestRow rows[] { { "exit", exitApplication } };

} // namespace

extern const RequestRows exitRequests { rows };

} // namespace phone
