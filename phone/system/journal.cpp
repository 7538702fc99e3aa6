#include "phone/system/journal.h"

#include <algorithm>
#include <cstdio>
#include <deque>
#include <map>
#include <mutex>
#include <utility>

namespace phone {

namespace {

using platform::Activity;

constexpr std::size_t keptBesideRequests = 1000;

struct Journals {
    std::mutex mutex;
    std::map<Activity, std::deque<JournalEntry>> open { { Activity::None, {} } };
};

Journals& shared()
{
    static auto* const journals = new Journals;
    return *journals;
}

} // namespace

void journal(JournalEvent event, std::string_view subject, std::string_view detail)
{
    const std::lock_guard lock(shared().mutex);
    const auto found = shared().open.find(platform::currentActivity());
    if (found == shared().open.end())
        return;
    found->second.push_back({ event, std::string(subject), std::string(detail) });
    if (found->first == Activity::None && found->second.size() > keptBesideRequests)
        found->second.pop_front();
}

std::vector<JournalEntry> takeJournal()
{
    const std::lock_guard lock(shared().mutex);
    const auto found = shared().open.find(platform::currentActivity());
    if (found == shared().open.end())
        return {};
    const std::deque<JournalEntry> entries = std::exchange(found->second, {});
    return { entries.begin(), entries.end() };
}

OpenJournal::OpenJournal(Activity activity)
    : activity_(activity)
{
    const std::lock_guard lock(shared().mutex);
    shared().open.try_emplace(activity);
}

OpenJournal::~OpenJournal()
{
    const std::lock_guard lock(shared().mutex);
    shared().open.erase(activity_);
}

std::string_view journalEventName(JournalEvent event) noexcept
{
    switch (event) {
    case JournalEvent::Sent:
        return "sent";
    case JournalEvent::Ran:
        return "ran";
    case JournalEvent::Opened:
        return "opened";
    case JournalEvent::OpenedInBackground:
        return "opened in background";
    case JournalEvent::Declined:
        return "declined";
    case JournalEvent::Prompt:
        return "prompt";
    case JournalEvent::Installed:
        return "installed";
    case JournalEvent::Published:
        return "published";
    case JournalEvent::Sounded:
        return "sounded";
    case JournalEvent::Alerted:
        return "alerted";
    case JournalEvent::Haptic:
        return "haptic";
    case JournalEvent::Volume:
        return "volume";
    case JournalEvent::VolumeHUD:
        return "volume HUD";
    case JournalEvent::Brightness:
        return "brightness";
    case JournalEvent::IdleTimer:
        return "idle timer";
    case JournalEvent::IconAccessory:
        return "icon accessory";
    case JournalEvent::Note:
        return "note";
    }
    return "";
}

std::string levelText(double level)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", level);
    return text;
}

std::string journalText(const std::vector<JournalEntry>& entries)
{
    std::string text;
    for (const JournalEntry& entry : entries) {
        if (entry.event == JournalEvent::Sent || entry.event == JournalEvent::Ran)
            continue;
        if (!text.empty())
            text += " | ";
        text.append(journalEventName(entry.event)).append(" ").append(entry.subject);
        if (!entry.detail.empty())
            text.append(": ").append(entry.detail);
    }
    return text;
}

std::string heldUpAt(const std::vector<JournalEntry>& entries)
{
    for (auto sent = entries.begin(); sent != entries.end(); ++sent)
        if (sent->event == JournalEvent::Sent && std::none_of(sent, entries.end(), [&](const JournalEntry& entry) {
                return entry.event == JournalEvent::Ran && entry.subject == sent->subject;
            }))
            return sent->subject;
    return {};
}

} // namespace phone
