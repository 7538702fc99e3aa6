#include "phone/control/answers.h"
#include "phone/control/authentication.h"
#include "phone/control/request_rows.h"
#include "phone/search/search_screen.h"
#include "phone/search/spotlight.h"

namespace phone {

namespace {

/// "open": one of "applications" by a "road" of Spotlight's.
Json openFromSpotlight(const Json& request)
{
    const std::vector<std::string> identifiers = strings(request, "applications");
    const std::string road = text(request, "road");
    if (identifiers.empty())
        return failure("no application is named");
    if (!openSearchResult(road, identifiers.front()))
        return failure("Spotlight has no road called " + road);
    const std::vector<JournalEntry> entries = takeJournal();
    nameApplicationOfPrompt(entries, identifiers);
    return launchReport(entries);
}

/// "search": shows the applications whose names hold "text".
Json search(const Json& request)
{
    const std::string wanted = text(request, "text");
    const std::vector<SearchResult> results = searchApplications(wanted);
    showSearch(wanted, results);
    Json list = Json::array();
    for (const SearchResult& result : results)
        list.push_back({ { "application", result.bundleIdentifier }, { "name", result.name } });
    return { { "ok", true }, { "results", list } };
}

constexpr RequestRow rows[] {
    { "open", openFromSpotlight },
    { "search", search },
};

} // namespace

extern const RequestRows searchRequests { rows };

} // namespace phone
