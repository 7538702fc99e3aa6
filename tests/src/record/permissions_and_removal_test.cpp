#include "phone/device/decisions.h"
#include "phone/springboard/applications/applications.h"
#include "phone/springboard/applications/termination_assertion.h"
#include "platform/dispatch/clock.h"
#include "platform/dispatch/run_loop.h"
#include "platform/foundation/block.h"
#include "platform/runtime/message.h"
#include "record/app_ledger.h"
#include "support/phone_fixture.h"

#include "core/late_bound_functions.h"
#include "phone/process/system_images.h"

#include <gtest/gtest.h>

namespace appledger {

using namespace platform;
using phone::DecisionKind;

namespace {

const std::string notes = "com.example.notes";
const std::string mail = "com.example.mail";

/// Applications of the owner's, in containers.
class Operations : public testing::TestWithParam<const char*> {
protected:
    Operations()
        : phone_("SpringBoard", GetParam())
    {
        phone_.device.writeDomain({});
        for (const std::string& identifier : { notes, mail }) {
            const std::string bundle = "/var/containers/Bundle/Application/" + identifier + "/A.app";
            phone_.device.write(bundle + "/Info.plist", dictionary({ { "CFBundleIdentifier", string(identifier) } }));
            phone_.device.put(bundle + "/content/picture", "x");
            phone_.device.put("/var/mobile/Containers/Data/Application/" + identifier + "/Documents/kept", "x");
            phone_.device.write("/var/mobile/Containers/Data/Application/" + identifier
                    + "/.com.apple.mobile_container_manager.metadata.plist",
                dictionary({ { "MCMMetadataIdentifier", string(identifier) } }));
        }
        phone::declareSystemImages(parseSystemVersion(GetParam()).value());
        phone_.inject().start();
        holdClock();
    }

    static void bind()
    {
        bindTerminationAssertionFunctions();
        bindTCCFunctions();
    }

    static Ref<ALAppLedger> record(const std::string& identifier = notes)
    {
        return ALAppLedger::forBundleIdentifier(string(identifier), nil);
    }

    bool exists(const std::string& path) const { return std::filesystem::exists(phone_.device.at(path)); }

    support::Phone phone_;
};

INSTANTIATE_TEST_SUITE_P(Versions, Operations, testing::Values("12.4", "16.0"),
    [](const auto& version) { return "iOS" + std::string(version.param, 2); });

TEST_P(Operations, OnPermissionsDoNothingWhereTheSystemLacksTheFunctions)
{
    ASSERT_TRUE(decide(DecisionKind::Access, notes, "kTCCServiceCamera", 1));
    ASSERT_TRUE(decide(DecisionKind::Location, notes, "Authorization", 3));
    EXPECT_EQ(record()->getPermissions(), nil);
    record()->resetAllAppPermissions();
    EXPECT_EQ(decisionsAbout(DecisionKind::Access, notes).size(), 1U);
    EXPECT_TRUE(decisionsAbout(DecisionKind::Location, notes).empty()) << "the place is asked for elsewhere";
}

TEST_P(Operations, OnPermissionsAreOfOneApplication)
{
    bind();
    for (const std::string& identifier : { notes, mail }) {
        ASSERT_TRUE(decide(DecisionKind::Access, identifier, "kTCCServiceCamera", 1));
        ASSERT_TRUE(decide(DecisionKind::Access, identifier, "kTCCServicePhotos", 0));
    }
    EXPECT_EQ(describe(record()->getPermissions()),
        R"([{"kTCCInfoService": "kTCCServiceCamera", "kTCCInfoGranted": true}, )"
        R"({"kTCCInfoService": "kTCCServicePhotos", "kTCCInfoGranted": false}])");
    phone_.enter("tap", { notes });
    phone_.journal();
    record()->resetAllAppPermissions();
    const std::string journal = phone_.journal();
    EXPECT_EQ(describe(record()->getPermissions()), "[]");
    EXPECT_EQ(itemsOf(record(mail)->getPermissions()).size(), 2U);
    const auto at = [&](const char* what) {
        EXPECT_NE(journal.find(what), std::string::npos) << what;
        return journal.find(what);
    };
    EXPECT_LT(at("is held down"), at("access of")) << journal;
    EXPECT_LT(at("access of"), at("location of")) << journal;
    EXPECT_LT(at("location of"), at("is let go")) << journal;
    EXPECT_EQ(ALAppLedger::forProxy(string("clip"), nil)->getPermissions(), nil) << "without a bundle";
}

TEST_P(Operations, KeepAnApplicationDownForAsLongAsSomebodyWantsIt)
{
    bind();
    phone_.enter("tap", { notes });
    void* const first = SBSApplicationTerminationAssertionCreateWithError(nullptr, string(notes), 1, nullptr);
    void* const second = SBSApplicationTerminationAssertionCreateWithError(nullptr, string(notes), 1, nullptr);
    EXPECT_NE(phone_.enter("tap", { notes }).find("declined com.example.notes"), std::string::npos);
    EXPECT_EQ(phone_.enter("tap", { mail }), "opened com.example.mail");
    SBSApplicationTerminationAssertionInvalidate(first);
    EXPECT_NE(phone_.enter("tap", { notes }).find("declined com.example.notes"), std::string::npos);
    SBSApplicationTerminationAssertionInvalidate(second);
    EXPECT_EQ(phone_.enter("tap", { notes }), "opened com.example.notes");
}

TEST_P(Operations, OnTheDataOfWhatIsNoApplicationLeavePermissionsAlone)
{
    bind();
    ASSERT_TRUE(decide(DecisionKind::Access, notes, "kTCCServiceCamera", 1));
    const auto reset = [](const Ref<ALAppLedger>& of) {
        of->resetDiskContentWithCompletion(block([] {}));
        runUntilIdle();
        return decisionsAbout(DecisionKind::Access, notes).size();
    };
    EXPECT_EQ(reset(ALAppLedger::forProxy(string(notes), record()->appProxy)), 1U);
    EXPECT_EQ(reset(record()), 0U);
}

std::string outcomeOf(const std::function<void(const id& completion)>& operation)
{
    std::string outcome = "no completion";
    operation(block([&outcome](bool isDone) { outcome = isDone ? "done" : "not done"; }));
    EXPECT_EQ(outcome, "no completion") << "it comes later";
    runUntilIdle();
    return outcome;
}

TEST_P(Operations, UninstallWithTheDataAndTheIcon)
{
    const auto uninstall = [](const std::string& identifier) {
        return outcomeOf([&](const id& completion) { record(identifier)->uninstallAppWithCompletion(completion); });
    };
    phone_.enter("tap", { notes });
    EXPECT_EQ(uninstall(notes), "done");
    EXPECT_EQ(phone::applicationNamed(notes), nil);
    EXPECT_FALSE(exists("/var/mobile/Containers/Data/Application/" + notes));
    EXPECT_TRUE(exists("/var/mobile/Containers/Data/Application/" + mail + "/Documents/kept"));
    EXPECT_EQ(uninstall(notes), "not done") << "it is gone";
    EXPECT_EQ(uninstall("never there"), "not done");
    record(mail)->uninstallAppWithCompletion(nil);
    runUntilIdle();
    EXPECT_EQ(phone::applicationNamed(mail), nil) << "nobody waits for it";
}

TEST_P(Operations, OffloadAndKeepTheData)
{
    const bool isOffered = std::string_view(GetParam()) != "12.4";
    const auto offload = [](const std::string& identifier) {
        return outcomeOf([&](const id& completion) { ALAppLedger::offload(string(identifier), completion); });
    };
    EXPECT_EQ(offload("never there"), "not done");
    EXPECT_EQ(offload(notes), isOffered ? "done" : "not done");
    const std::string bundle = "/var/containers/Bundle/Application/" + notes + "/A.app";
    EXPECT_EQ(exists(bundle + "/content/picture"), !isOffered);
    EXPECT_TRUE(exists(bundle + "/Info.plist"));
    EXPECT_TRUE(exists("/var/mobile/Containers/Data/Application/" + notes + "/Documents/kept"));
    const std::string tapped = phone_.enter("tap", { notes });
    EXPECT_EQ(tapped.starts_with("declined"), isOffered) << tapped;
    ALAppLedger::offload(string(mail), nil);
    runUntilIdle();
}

/// A workspace that offers neither way.
TEST(OperationsWithoutTheSystem, AreNotDone)
{
    const support::TemporaryDevice device;
    holdClock();
    const auto record = ALAppLedger::forProxy(string("a"), nil);
    EXPECT_EQ(outcomeOf([&](const id& completion) { record->uninstallAppWithCompletion(completion); }), "not done");
    EXPECT_EQ(outcomeOf([&](const id& completion) { ALAppLedger::offload(string("a"), completion); }), "not done");
}

} // namespace

} // namespace appledger
