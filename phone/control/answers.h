#pragma once

#include "phone/system/journal.h"
#include "platform/darwin/bus.h"

#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace phone {

using Json = nlohmann::json;
using Verb = std::function<Json(const Json& request)>;
using Verbs = std::map<std::string, Verb, std::less<>>;

/// A verb that replies in its own time, on the main thread.
using Reply = std::function<void(const Json& answer)>;
using LateVerb = std::function<void(const Json& request, const Reply& reply)>;
using LateVerbs = std::map<std::string, LateVerb, std::less<>>;

/// Parses the request, finds its verb and replies. A malformed request and an unknown verb get an error.
void answer(
    std::string_view request, const platform::BusReply& reply, const Verbs& verbs, const LateVerbs& lateVerbs = {});

Json failure(std::string_view error);

/// The strings of an array in the request; none when it isn't one.
std::vector<std::string> strings(const Json& request, std::string_view key);
std::string text(const Json& request, std::string_view key);

/// "ok" and the facts of this process: name, pid, version, injected libraries.
Json processStatus(const Json& request);

/// "ok" and what the journal holds of an attempt to open something.
Json launchReport(const std::vector<JournalEntry>& entries);

/// The subjects of all entries of one kind, in order.
Json subjects(const std::vector<JournalEntry>& entries, JournalEvent event);

Json toJson(const std::vector<JournalEntry>& entries);
std::vector<JournalEntry> journalFromJson(const Json& entries);

} // namespace phone
