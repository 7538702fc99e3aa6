#include "phone/system/journal.h"

#include <algorithm>
#include <cstdio>
#include <mutex>
#include <utility>

namespace phone {

namespace {

struct Journal {
    std::mutex mutex;
    std::vector<JournalEntry> entries;
};

Journal& shared()
{
    static auto* const journal = new Journal;
    return *journal;
}

} // namespace

void journal(JournalEvent event, std::string_view subject, std::string_view detail)
{
    const std::lock_guard lock(shared().mutex);
    shared().entries.push_back({ event, std::string(subject), std::string(detail) });
}

std::vector<JournalEntry> takeJournal()
{
    const std::lock_guard lock(shared().mutex);
    return std::exchange(shared().entries, {});
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
