#include "phone/control/answers.h"

#include "platform/dispatch/activity.h"
#include "platform/dispatch/run_loop.h"

#include <chrono>

namespace phone {

using namespace platform;

namespace {

constexpr JournalEvent everyEvent[] { JournalEvent::Sent, JournalEvent::Ran, JournalEvent::Opened,
    JournalEvent::OpenedInBackground, JournalEvent::Declined, JournalEvent::Prompt, JournalEvent::Installed,
    JournalEvent::Published, JournalEvent::Sounded, JournalEvent::Alerted, JournalEvent::Haptic, JournalEvent::Volume,
    JournalEvent::VolumeHUD, JournalEvent::Brightness, JournalEvent::IdleTimer, JournalEvent::IconAccessory,
    JournalEvent::Note };

constexpr std::chrono::seconds patience { 1 };

} // namespace

Json subjects(const std::vector<JournalEntry>& entries, JournalEvent event)
{
    Json found = Json::array();
    for (const JournalEntry& entry : entries)
        if (entry.event == event)
            found.push_back(entry.subject);
    return found;
}

Json failure(std::string_view error)
{
    return { { "ok", false }, { "error", error } };
}

void send(const BusReply& reply, const Json& answer)
{
    reply(answer.dump(-1, ' ', false, Json::error_handler_t::replace));
}

std::vector<std::string> strings(const Json& request, std::string_view key)
{
    std::vector<std::string> found;
    const auto value = request.find(key);
    if (value != request.end() && value->is_array())
        for (const Json& item : *value)
            if (item.is_string())
                found.push_back(item.get<std::string>());
    return found;
}

std::string text(const Json& request, std::string_view key)
{
    const auto value = request.find(key);
    return value != request.end() && value->is_string() ? value->get<std::string>() : "";
}

void settle()
{
    runUntilIdle(patience);
}

void settleEverywhere()
{
    settle();
    const Activity activity = currentActivity();
    runUntil([activity] { return !isWorkInHand(activity); }, patience);
}

Json launchReport(const std::vector<JournalEntry>& entries)
{
    Json declined = Json::array();
    for (const JournalEntry& entry : entries)
        if (entry.event == JournalEvent::Declined)
            declined.push_back({ { "application", entry.subject },
                { "reason", entry.detail.empty() ? Json(nullptr) : Json(entry.detail) } });
    Json prompts = Json::array();
    for (const JournalEntry& entry : entries)
        if (entry.event == JournalEvent::Prompt)
            prompts.push_back({ { "process", entry.subject }, { "reason", entry.detail } });
    const Json opened = subjects(entries, JournalEvent::Opened);
    const std::string heldUp = heldUpAt(entries);
    return { { "ok", true }, { "opened", opened },
        { "background", subjects(entries, JournalEvent::OpenedInBackground) }, { "declined", declined },
        { "prompts", prompts }, { "stoppedAt", heldUp.empty() ? Json(nullptr) : Json(heldUp) },
        { "haptics", subjects(entries, JournalEvent::Haptic) }, { "notes", subjects(entries, JournalEvent::Note) },
        { "journal", toJson(entries) } };
}

Json toJson(const std::vector<JournalEntry>& entries)
{
    Json list = Json::array();
    for (const JournalEntry& entry : entries)
        list.push_back(
            { { "event", journalEventName(entry.event) }, { "subject", entry.subject }, { "detail", entry.detail } });
    return list;
}

std::vector<JournalEntry> journalFromJson(const Json& entries)
{
    std::vector<JournalEntry> found;
    if (!entries.is_array())
        return found;
    for (const Json& entry : entries)
        for (const JournalEvent event : everyEvent)
            if (entry.is_object() && text(entry, "event") == journalEventName(event))
                found.push_back({ event, text(entry, "subject"), text(entry, "detail") });
    return found;
}

} // namespace phone
