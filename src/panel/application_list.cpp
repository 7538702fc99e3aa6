#include "panel/application_list.h"

#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <algorithm>
#include <set>

namespace appledger {

using namespace platform;

std::string lowerCase(const id& text)
{
    const auto lower = asString(askObject<"lowercaseString">(text));
    return lower ? lower->text() : "";
}

std::vector<ListedApplication> listedApplications(const id& records)
{
    std::vector<ListedApplication> applications;
    for (const id& record : itemsOf(records)) {
        const id identifier = askObject<"bundleIdentifier">(record);
        const auto text = asString(identifier);
        if (!text || text->empty())
            continue;
        id name = askObject<"localizedName">(record);
        if (!asString(name))
            name = identifier;
        applications.push_back({ record, identifier, name, lowerCase(name), lowerCase(identifier) });
    }
    return applications;
}

void sortBySelectionAndName(std::vector<ListedApplication>& applications, const id& selectedIdentifiers)
{
    std::set<std::string, std::less<>> selected;
    for (const id& identifier : itemsOf(selectedIdentifiers))
        if (const auto text = asString(identifier))
            selected.insert(text->text());
    std::ranges::stable_sort(applications, [](const ListedApplication& left, const ListedApplication& right) {
        return send<"localizedCaseInsensitiveCompare:", NSInteger>(left.name, right.name) < 0;
    });
    std::ranges::stable_partition(applications, [&](const ListedApplication& application) {
        return selected.contains(asString(application.identifier)->view());
    });
}

id recordsContaining(const std::vector<ListedApplication>& applications, std::string_view lowerText)
{
    std::vector<id> records;
    for (const ListedApplication& application : applications)
        if (application.lowerName.find(lowerText) != std::string::npos
            || application.lowerIdentifier.find(lowerText) != std::string::npos)
            records.push_back(application.record);
    return array(std::move(records));
}

} // namespace appledger
