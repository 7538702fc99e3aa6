#include "phone/system/journal.h"
#include "phone/system/text.h"
#include "platform/foundation/block.h"
#include "platform/foundation/property_list_file.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

#include <memory>
#include <set>

namespace phone {

using namespace platform;

namespace {

constexpr std::string_view file = "/var/mobile/Library/BulletinBoard/bulletins.plist";
constexpr std::size_t mostBulletins = 1000;

struct SavedField {
    std::string_view name;
    id (*get)(const id& bulletin);
    void (*set)(const id& bulletin, const id& value);
    bool (*isValid)(const id& value);
};

template <Name Getter, Name Setter, bool (*IsValid)(const id&)> constexpr SavedField savedField()
{
    return { Getter.view(), [](const id& bulletin) { return send<Getter>(bulletin); },
        [](const id& bulletin, const id& value) { send<Setter, void>(bulletin, value); }, IsValid };
}

bool isText(const id& value)
{
    const auto text = asString(value);
    return text && text->view().find('\0') == std::string_view::npos; // a property list holds none
}

bool isBadge(const id& value)
{
    return asInteger(value) || isText(value);
}

constexpr SavedField savedFields[] {
    savedField<"sectionID", "setSectionID:", isText>(),
    savedField<"title", "setTitle:", isText>(),
    savedField<"message", "setMessage:", isText>(),
    savedField<"sound", "setSound:", isText>(),
    savedField<"badge", "setBadge:", isBadge>(),
};

id toPropertyList(const id& bulletin)
{
    std::vector<std::pair<id, id>> pairs;
    for (const SavedField& field : savedFields)
        if (const id value = field.get(bulletin); field.isValid(value))
            pairs.emplace_back(string(field.name), value);
    return dictionary(std::move(pairs));
}

id toBulletin(const id& saved)
{
    id bulletin = send<"new">(id(classNamed<"BBBulletin">()));
    for (const SavedField& field : savedFields)
        if (const id value = pairsOf(saved)[field.name]; field.isValid(value))
            field.set(bulletin, value);
    return bulletin;
}

/// Nil when it isn't installed.
id applicationOfSection(const id& section)
{
    const id applications = send<"sharedInstance">(id(classNamed<"SBApplicationController">()));
    return send<"applicationWithBundleIdentifier:">(applications, section);
}

/// Whether the server for notifications leaves it to the application, which it is asked where it holds the
/// application to be in front.
bool isLeftToApplication(const id& bulletin)
{
    constexpr unsigned foreground = 8; // as the system numbers it
    const id section = send<"sectionID">(bulletin);
    const id server = askObject<"sharedInstance">(id(classNamed<"UNSUserNotificationServer">()));
    if (ask<"_applicationStateForBundleIdentifier:", unsigned>(server, section) != foreground)
        return false;
    const auto isShown = std::make_shared<bool>(true);
    ask<"willPresentNotification:forBundleIdentifier:withCompletionHandler:", void>(
        server, bulletin, section, block([isShown](bool shown) { *isShown = shown; }));
    return !*isShown;
}

/// Publishes bulletins: into the notification centre, onto the icon's badge, and to who alerts. What the centre holds
/// outlives the process.
class BBServer : public NSObject {
public:
    /// What the notification centre holds, the oldest first.
    id bulletins() const { return array(bulletins_); }

    void publishBulletin(const id& bulletin, NSUInteger)
    {
        journal(JournalEvent::Ran, "BBServer publishBulletin:destinations:");
        publish(bulletin);
    }

    void publishBulletinRequest(const id& request, NSUInteger destinations)
    {
        journal(JournalEvent::Ran, "BBServer publishBulletinRequest:destinations:");
        const id section = send<"sectionID">(askObject<"bulletin">(request));
        send<"_publishBulletinRequest:forSectionID:forDestinations:", void>(id(this), request, section, destinations);
    }

    void publishBulletinRequestForSection(const id& request, const id& section, NSUInteger)
    {
        journal(JournalEvent::Ran, "BBServer _publishBulletinRequest:forSectionID:forDestinations:");
        const id bulletin = askObject<"bulletin">(request);
        if (bulletin && !send<"sectionID">(bulletin))
            send<"setSectionID:", void>(bulletin, section);
        publish(bulletin);
    }

    void clearSection(const id& section)
    {
        const auto identifier = asString(section);
        const auto isOfSection
            = [&](const id& bulletin) { return asString(send<"sectionID">(bulletin)) == identifier; };
        if (identifier && std::erase_if(bulletins_, isOfSection) > 0)
            save();
    }

    /// Once, at SpringBoard's start.
    void loadBulletins()
    {
        const id stored = arrayWithContentsOfFile(file);
        for (const id& saved : itemsOf(stored)) {
            id bulletin = toBulletin(saved);
            if (applicationOfSection(send<"sectionID">(bulletin)))
                bulletins_.push_back(std::move(bulletin));
        }
        showLastBadges();
    }

private:
    void publish(const id& bulletin)
    {
        const auto section = asString(askObject<"sectionID">(bulletin));
        if (!section || isLeftToApplication(bulletin))
            return;
        bulletins_.push_back(bulletin);
        if (bulletins_.size() > mostBulletins)
            bulletins_.erase(bulletins_.begin(), bulletins_.end() - mostBulletins);
        save();
        journal(JournalEvent::Published, *section);
        if (send<"sound">(bulletin))
            journal(JournalEvent::Sounded, *section);
        showBadge(bulletin);
        present(bulletin);
    }

    static void showBadge(const id& bulletin)
    {
        const id badge = send<"badge">(bulletin);
        if (!badge)
            return;
        const id application = applicationOfSection(send<"sectionID">(bulletin));
        if (!ask<"setBadgeValue:", void>(application, badge))
            ask<"setBadgeNumberOrString:", void>(application, badge);
    }

    /// Each application's once: whoever listens to badges may do much for each.
    void showLastBadges() const
    {
        std::set<std::string> shown;
        for (auto bulletin = bulletins_.rbegin(); bulletin != bulletins_.rend(); ++bulletin)
            if (send<"badge">(*bulletin) && shown.insert(textOf(send<"sectionID">(*bulletin))).second)
                showBadge(*bulletin);
    }

    void save() const
    {
        std::vector<id> saved;
        for (const id& bulletin : bulletins_)
            saved.push_back(toPropertyList(bulletin));
        constexpr PropertyListFileKind kind { PropertyListRoot::Array, PropertyListFormat::Binary, 0600 };
        const WriteOutcome outcome
            = changePropertyListFile(std::string(file), kind, [&saved](const id&) { return array(std::move(saved)); });
        if (!outcome.isDone())
            journal(JournalEvent::Note, "the notifications aren't kept: " + outcome.problem);
    }

    static void present(const id& bulletin)
    {
        const id request = send<"new">(id(classNamed<"NCNotificationRequest">()));
        send<"setSectionIdentifier:", void>(request, send<"sectionID">(bulletin));
        send<"setBulletin:", void>(request, bulletin);
        const id controller = send<"sharedInstance">(id(classNamed<"SBNCAlertingController">()));
        send<"alertOnPresentationForNotificationRequest:presentingDestination:", void>(controller, request, nil);
        const id banners = askObject<"sharedInstance">(id(classNamed<"SBNotificationBannerDestination">()));
        ask<"postNotificationRequest:", void>(banners, request);
    }

    std::vector<id> bulletins_;
};

id sharedServer(const id& self, SEL)
{
    static NSObject* const server = send<"new">(self).leak();
    return server;
}

constexpr MethodDefinition methods[] {
    method<"_clearSection:", &BBServer::clearSection>(),
    method<"_loadBulletins", &BBServer::loadBulletins>(),
    method<"_publishBulletinRequest:forSectionID:forDestinations:", &BBServer::publishBulletinRequestForSection>(),
    method<"bulletins", &BBServer::bulletins>(),
    method<"publishBulletin:destinations:", &BBServer::publishBulletin>(),
    method<"publishBulletinRequest:destinations:", &BBServer::publishBulletinRequest>(),
    classMethod<"sharedServer", &sharedServer>(),
};

} // namespace

extern const ClassDefinition BBServer_class { .name = "BBServer", .allocate = allocate<BBServer>, .methods = methods };

} // namespace phone
