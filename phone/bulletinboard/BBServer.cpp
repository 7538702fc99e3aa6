#include "phone/system/journal.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// Publishes bulletins: into the notification centre, onto the icon's badge, and to who alerts.
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

private:
    void publish(const id& bulletin)
    {
        const auto section = asString(askObject<"sectionID">(bulletin));
        if (!section)
            return;
        bulletins_.push_back(bulletin);
        journal(JournalEvent::Published, *section);
        if (send<"sound">(bulletin))
            journal(JournalEvent::Sounded, *section);
        if (const id badge = send<"badge">(bulletin)) {
            const id applications = send<"sharedInstance">(id(classNamed<"SBApplicationController">()));
            const id application = send<"applicationWithBundleIdentifier:">(applications, section->object());
            send<"setBadgeValue:", void>(application, badge);
        }
        present(bulletin);
    }

    static void present(const id& bulletin)
    {
        const id request = send<"new">(id(classNamed<"NCNotificationRequest">()));
        send<"setSectionIdentifier:", void>(request, send<"sectionID">(bulletin));
        send<"setBulletin:", void>(request, bulletin);
        const id controller = send<"sharedInstance">(id(classNamed<"SBNCAlertingController">()));
        send<"alertOnPresentationForNotificationRequest:presentingDestination:", void>(controller, request, nil);
    }

    std::vector<id> bulletins_;
};

id sharedServer(const id& self, SEL)
{
    static NSObject* const server = send<"new">(self).leak();
    return server;
}

constexpr MethodDefinition methods[] {
    method<"_publishBulletinRequest:forSectionID:forDestinations:", &BBServer::publishBulletinRequestForSection>(),
    method<"bulletins", &BBServer::bulletins>(),
    method<"publishBulletin:destinations:", &BBServer::publishBulletin>(),
    method<"publishBulletinRequest:destinations:", &BBServer::publishBulletinRequest>(),
    classMethod<"sharedServer", &sharedServer>(),
};

} // namespace

extern const ClassDefinition BBServer_class { .name = "BBServer", .allocate = allocate<BBServer>, .methods = methods };

} // namespace phone
