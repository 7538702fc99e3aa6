#pragma once

#include "platform/dispatch/activity.h"

#include <string>
#include <string_view>
#include <vector>

/// What happens in this process while it answers one request: the system classes write it, the answer and
/// the tests read it. Each request has a journal of its own, in which stands what is done for its activity: what
/// happens beside it, and what comes of it when its journal is closed, doesn't.

namespace phone {

enum class JournalEvent {
    Sent, ///< a message that starts or continues a launch is about to be sent: "SBIconView _handleTap"
    Ran, ///< the system's own body of that method runs
    Opened, ///< an application came to front
    OpenedInBackground,
    Declined, ///< a transition request was declined; the detail is the reason that it was given, or ""
    Prompt, ///< the owner is asked to authenticate, by the process that is the subject; the detail is the reason
    Installed, ///< the store installed the application, or its update
    Published, ///< a notification of the application that is the subject went into the notification centre
    Sounded, ///< and its sound was played
    Alerted, ///< and the screen lit up for it
    Haptic, ///< "impact", "selection", "success", "error"
    Volume, ///< someone set the volume of the category that is the subject; the detail is the level
    VolumeHUD, ///< the volume's display appeared with the level that is the subject
    Brightness, ///< who set the screen's brightness; the detail is the level as it was given
    IdleTimer, ///< an assertion against it is "held" or "released"; the detail is its reason
    IconAccessory, ///< the icon of that application, or of a "folder", asks anew for its label accessory
    Note, ///< anything else that a person would want to know
};

struct JournalEntry {
    JournalEvent event;
    std::string subject;
    std::string detail {};
};

/// Into the journal of the calling thread's activity, if it is open. That of no activity is always open, and keeps its
/// latest 1,000 entries. Any thread.
void journal(JournalEvent event, std::string_view subject, std::string_view detail = {});

/// What was written into the journal of the calling thread's activity since the last call.
std::vector<JournalEntry> takeJournal();

/// A journal is open for as long as this lives.
class OpenJournal {
public:
    explicit OpenJournal(platform::Activity activity);
    ~OpenJournal();
    OpenJournal(const OpenJournal&) = delete;
    OpenJournal& operator=(const OpenJournal&) = delete;

private:
    const platform::Activity activity_;
};

/// One line for tests, without what was sent and ran: "haptic impact | declined com.example.a: reason".
std::string journalText(const std::vector<JournalEntry>& entries);

std::string_view journalEventName(JournalEvent event) noexcept;

/// A level from 0 to 1, as the journal writes it: "0.30".
std::string levelText(double level);

/// The first method that was sent and whose body never ran: where a request was held up. "" for none.
std::string heldUpAt(const std::vector<JournalEntry>& entries);

} // namespace phone
