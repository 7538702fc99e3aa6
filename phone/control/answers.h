#pragma once

#include "phone/system/journal.h"
#include "platform/darwin/bus.h"

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

/// What answers are made of.

namespace phone {

using Json = nlohmann::json;

/// "ok" is false, and an error for people.
Json failure(std::string_view error);

void send(const platform::BusReply& reply, const Json& answer);

/// The strings of an array in the request; none when it isn't one.
std::vector<std::string> strings(const Json& request, std::string_view key);
std::string text(const Json& request, std::string_view key);

/// Runs what the request has brought about until nothing is left to run, a second at most.
void settle();

/// The same, and then until the work is done that the request has queued for other threads.
void settleEverywhere();

/// "ok" and what the journal holds of an attempt to open something.
Json launchReport(const std::vector<JournalEntry>& entries);

/// The subjects of all entries of one kind, in order.
Json subjects(const std::vector<JournalEntry>& entries, JournalEvent event);

Json toJson(const std::vector<JournalEntry>& entries);
std::vector<JournalEntry> journalFromJson(const Json& entries);

} // namespace phone
