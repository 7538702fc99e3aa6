#pragma once

#include "core/policies.h"
#include "entry/load_time_initialisers.h"
#include "launch/authentication_gate.h"
#include "phone/frontboard/open_request.h"
#include "phone/process/process_definition.h"
#include "phone/search/spotlight.h"
#include "phone/springboard/roads.h"
#include "phone/system/journal.h"
#include "platform/darwin/notify.h"
#include "platform/dispatch/run_loop.h"
#include "support/temporary_device.h"

#include <string>
#include <string_view>
#include <vector>

namespace support {

/// What the owner has decided, and the application that has just been authenticated ("": none).
struct Policies {
    std::vector<std::string> requireAuth {};
    std::vector<std::string> blocked {};
    std::vector<std::string> hidden {};
    std::string authenticated {};
};

/// One process of a phone in the test's own process: a device with applications, the process's classes, and
/// the library's load if `inject()` is called before `start()`.
///
///     Phone phone("SpringBoard", "16.0");
///     phone.with({ "com.example.notes" }).wanting({ .blocked = { "com.example.notes" } }).inject().start();
///     EXPECT_EQ(phone.enter("tap", { "com.example.notes" }), "haptic impact");
class Phone {
public:
    Phone(std::string_view processName, std::string_view version, std::vector<std::string> absentClasses = {})
        : definition_(*phone::processDefinition(processName))
    {
        const platform::SystemVersion parsed = platform::parseSystemVersion(version).value();
        platform::setProcessFacts({ std::string(definition_.bundleIdentifier), std::string(processName), parsed });
        phone::registerClassesOfProcess(processName, definition_.bundleIdentifier, parsed, absentClasses);
    }

    Phone& with(const std::vector<std::string>& applications)
    {
        for (const std::string& identifier : applications)
            device.installApplication(identifier);
        return *this;
    }

    /// Writes the policies and tells nobody.
    Phone& wanting(const Policies& policies)
    {
        device.writeDomain({ { "ALRequireAuthApps", list(policies.requireAuth) },
            { "ALBlockedLaunchApps", list(policies.blocked) }, { "ALHiddenApps", list(policies.hidden) } });
        appledger::g_authBypassAppId.assign(
            policies.authenticated.empty() ? nullptr : new std::string(policies.authenticated));
        return *this;
    }

    /// Lets every process of the phone hear of the policies.
    Phone& notify()
    {
        for (const char* const name : { "launch_blocked_changed", "requireauth_changed", "hidden_changed" })
            platform::CFNotificationCenterPostNotification(std::string("com.orbelix.appledger.") + name);
        platform::runUntilIdle();
        return *this;
    }

    Phone& inject()
    {
        appledger::initializeLibrary();
        return *this;
    }

    Phone& start()
    {
        definition_.start();
        phone::takeJournal();
        return *this;
    }

    /// What came of opening the application (the card of several, for the switcher) on that road.
    std::string enter(std::string_view road, const std::vector<std::string>& identifiers)
    {
        phone::takeJournal();
        if (definition_.name == "SpringBoard")
            EXPECT_EQ(phone::enterRoad(road, identifiers), phone::RoadOutcome::Entered) << road;
        else
            EXPECT_TRUE(phone::openSearchResult(road, identifiers.front())) << road;
        return journal();
    }

    /// What happened since the last look.
    std::string journal()
    {
        const auto entries = phone::takeJournal();
        heldUpAt_ = phone::heldUpAt(entries);
        return phone::journalText(entries);
    }

    /// The method at which the last journal's request was held up; "" when it went through.
    const std::string& heldUpAt() const noexcept { return heldUpAt_; }

    const TemporaryDevice device;

private:
    static platform::id list(const std::vector<std::string>& texts)
    {
        std::vector<platform::id> items;
        for (const std::string& text : texts)
            items.push_back(platform::string(text));
        return platform::array(std::move(items));
    }

    const phone::ProcessDefinition& definition_;
    std::string heldUpAt_;
};

} // namespace support
