#include "support/phone_fixture.h"

#include "phone/appstoredaemon/store_roads.h"
#include "platform/foundation/block.h"
#include "platform/runtime/exception.h"
#include "platform/runtime/message.h"

#include <gtest/gtest.h>

#include <utility>

using namespace platform;
using support::Phone;

namespace {

const std::string notes = "com.example.notes";
const std::string mail = "com.example.mail";

/// Something to buy that raises when it is first asked what it is.
class Touchy : public NSObject {
public:
    id valueForProperty(const id&)
    {
        if (!std::exchange(asked, true))
            throw NSException("NSInternalInconsistencyException", "not now");
        return nil;
    }
    bool asked = false;
};

constexpr MethodDefinition touchyMethods[] { method<"valueForProperty:", &Touchy::valueForProperty>() };

constexpr ClassDefinition Touchy_class { .name = "Touchy", .allocate = allocate<Touchy>, .methods = touchyMethods };

/// Options whose purchases raise, and options whose purchases are no array.
class OddOptions : public NSObject {
public:
    static id raise(const id&, SEL) { throw NSException("NSInternalInconsistencyException", "not now"); }
    static id text(const id&, SEL) { return string("com.example.notes"); }
};

constexpr MethodDefinition raisingMethods[] { method<"purchases", &OddOptions::raise>() };
constexpr MethodDefinition textMethods[] { method<"purchases", &OddOptions::text>() };
constexpr ClassDefinition RaisingOptions_class {
    .name = "RaisingOptions", .allocate = allocate<OddOptions>, .methods = raisingMethods
};
constexpr ClassDefinition TextOptions_class {
    .name = "TextOptions", .allocate = allocate<OddOptions>, .methods = textMethods
};

id made(const ClassDefinition& definition)
{
    registerClass(definition);
    return send<"new">(id(objc_getClass(definition.name)));
}

id purchase(const std::string& identifier)
{
    id made = send<"new">(id(objc_getClass("ASDPurchase")));
    send<"setBundleID:", void>(made, string(identifier));
    return made;
}

std::string describeCall(const std::vector<id>& arguments)
{
    std::string text = "(";
    for (const id& argument : arguments) {
        text += text.size() > 1 ? ", " : "";
        if (const auto code = ask<"code", NSInteger>(argument))
            text += asString(send<"domain">(argument)).value().text() + " " + std::to_string(*code) + " "
                + describe(send<"userInfo">(argument));
        else
            text += asArray(argument) ? std::to_string(itemsOf(argument).size()) : describe(argument);
    }
    return text + ")";
}

/// "installed … | completion (…)"
std::string buy(Phone& phone, std::string_view road, const std::vector<std::string>& identifiers)
{
    phone::takeJournal();
    const phone::StoreReceipt receipt = phone::buy(*phone::storeRoadNamed(road), identifiers);
    std::string text = phone.journal();
    if (!receipt.requestExists)
        text += "no request";
    for (const auto& call : receipt.completions)
        text += (text.empty() ? "" : " | ") + describeCall(call);
    return text;
}

id blocking(const std::vector<std::string>& identifiers)
{
    std::vector<id> items;
    for (const std::string& identifier : identifiers)
        items.push_back(string(identifier));
    return array(std::move(items));
}

void setBlocked(const Phone& phone, const id& value)
{
    phone.device.writeDomain({ { "ALBlockedUpdateApps", value } });
}

const std::string blockedError = R"(ASDErrorDomain 500 {"NSLocalizedDescription": "Blocked by AppLedger"})";

TEST(Store, EachRoadKeepsWhatIsNotBlockedAndRefusesTheRest)
{
    Phone phone("AppStore", "16.0");
    setBlocked(phone, blocking({ notes }));
    const struct {
        const char* road;
        std::string stockCompletion; ///< of two
        std::string keptCompletion; ///< of the one that is left
        std::string refused;
    } cases[] = {
        { "request", "(true, nil)", "(true, nil)", "no request" },
        { "jobs", "(true, nil)", "(true, nil)", "(false, " + blockedError + ")" },
        { "software", "(2)", "(1)", "(nil)" },
        { "purchases", "(2)", "(1)", "(nil)" },
    };
    const std::string both = "installed com.example.notes | installed com.example.mail | ";
    for (const auto& [road, stock, kept, refused] : cases)
        EXPECT_EQ(buy(phone, road, { notes, mail }), both + stock) << road << ", stock";
    EXPECT_EQ(buy(phone, "purchase", { notes }), "installed com.example.notes | (<ASDPurchase>, nil)");

    phone.inject().start();
    for (const auto& [road, stock, kept, refused] : cases) {
        EXPECT_EQ(buy(phone, road, { notes, mail }), "installed com.example.mail | " + kept) << road;
        EXPECT_EQ(phone.heldUpAt(), "") << road;
        EXPECT_EQ(buy(phone, road, { notes, notes }), refused) << road;
        EXPECT_EQ(phone.heldUpAt(), phone::storeRoadNamed(road)->method);
    }
    EXPECT_EQ(buy(phone, "purchase", { notes }), "(nil, " + blockedError + ")");
    EXPECT_EQ(buy(phone, "purchase", { mail }), "installed com.example.mail | (<ASDPurchase>, nil)");

    // Every call reads the domain: no notification was posted.
    setBlocked(phone, blocking({ mail }));
    for (const auto& [road, stock, kept, refused] : cases)
        EXPECT_EQ(buy(phone, road, { notes, mail }), "installed com.example.notes | " + kept) << road;
    for (const id& harmless : { string(notes), array({}), dictionary({ { notes, boolean(true) } }) }) {
        setBlocked(phone, harmless);
        for (const auto& [road, stock, kept, refused] : cases)
            EXPECT_EQ(buy(phone, road, { notes, mail }), both + stock) << road << " " << describe(harmless);
    }
}

TEST(Store, OlderOptionsAreShrunkInTheirInstanceVariable)
{
    Phone phone("AppStore", "14.0");
    setBlocked(phone, blocking({ notes }));
    phone.inject().start();
    ASSERT_FALSE(
        class_respondsToSelector(objc_getClass("ASDPurchaseRequestOptions"), sel_registerName("setPurchases:")));
    EXPECT_EQ(buy(phone, "request", { notes, mail }), "installed com.example.mail | (true, nil)");
}

TEST(Store, ShowsNoUpdateOfABlockedApplication)
{
    Phone phone("appstored", "16.0");
    for (const std::string& identifier : { notes, mail })
        phone.device.write("/var/containers/Bundle/Application/" + identifier + "/A.app/Info.plist",
            dictionary(
                { { "CFBundleIdentifier", string(identifier) }, { "CFBundleShortVersionString", string("1.9") } }));
    setBlocked(phone, blocking({ notes }));
    const auto shown = [] {
        std::string text;
        for (const phone::ShownUpdate& update : phone::shownUpdates())
            text += update.bundleIdentifier + (update.isUpdateAvailable ? " is" : " isn't")
                + (update.updateAvailable ? " available " : " there ") + update.newestVersion + "; ";
        return text;
    };
    EXPECT_EQ(shown(), "com.example.mail is available 1.10; com.example.notes is available 1.10; ");
    phone.inject();
    EXPECT_EQ(shown(), "com.example.mail is available 1.10; com.example.notes isn't there ; ");
}

class StoreShapes : public testing::Test {
protected:
    StoreShapes()
    {
        setBlocked(phone_, blocking({ notes }));
        phone_.inject().start();
    }

    static id completion(std::string& seen)
    {
        return block(
            [&seen](bool success, const id& failure) { seen += success ? "done" : describeCall({ failure }); });
    }

    std::string addJobs(const id& jobs)
    {
        std::string seen;
        phone::takeJournal();
        send<"addJobs:withCompletionBlock:", void>(
            send<"defaultManager">(id(objc_getClass("ASDJobManager"))), jobs, completion(seen));
        return phone_.journal() + (seen.empty() ? "" : " | " + seen);
    }

    std::string perform(const id& purchases)
    {
        std::string seen;
        phone::takeJournal();
        send<"_performSoftwarePurchases:withClientContext:completionBlock:", void>(
            send<"defaultCenter">(id(objc_getClass("SKUIItemStateCenter"))), purchases, nil,
            block([&seen](const id& result) { seen = describeCall({ result }); }));
        return phone_.journal() + " | " + seen;
    }

    Phone phone_ { "AppStore", "16.0" };
};

TEST_F(StoreShapes, WhatHasNoIdentifierIsKeptAndWhatIsNoListPasses)
{
    const std::string nameless = "installed something without an identifier";
    EXPECT_EQ(addJobs(array({ purchase(notes), string("bare") })), nameless + " | done");
    EXPECT_EQ(addJobs(set({ purchase(notes) })), "installed com.example.notes | done");
    EXPECT_EQ(addJobs(nil), " | done");
    EXPECT_EQ(addJobs(array({})), " | done");
    EXPECT_EQ(addJobs(mutableArray({ purchase(notes), purchase(mail) })), "installed com.example.mail | done");
}

TEST_F(StoreShapes, AskItemsForTheirPropertyOnlyInTheStoresViews)
{
    id item = send<"new">(id(objc_getClass("SKUIItem")));
    send<"setProperties:", void>(item, dictionary({ { "softwareInfo/bundleId", string(notes) } }));
    EXPECT_EQ(perform(array({ item, purchase(mail) })), "installed com.example.mail | (1)");
    EXPECT_EQ(perform(array({ item, purchase(notes) })), " | (nil)");
    EXPECT_EQ(addJobs(array({ item })), "installed com.example.notes | done") << "a job has no properties";
}

TEST_F(StoreShapes, AFilterThatRaisesLetsThePurchaseGoOn)
{
    EXPECT_THROW(send<"purchases">(made(RaisingOptions_class)), NSException);
    EXPECT_THROW(send<"valueForProperty:">(made(Touchy_class), string("")), NSException);

    const auto requestWith = [](const id& options) {
        phone::takeJournal();
        const id request = send<"initWithOptions:">(send<"alloc">(id(objc_getClass("ASDPurchaseRequest"))), options);
        return request && !phone::takeJournal().empty();
    };
    EXPECT_TRUE(requestWith(made(RaisingOptions_class)));
    EXPECT_TRUE(requestWith(made(TextOptions_class))) << "purchases that are no array";
    EXPECT_TRUE(requestWith(nil));

    const std::string untouched = "installed something without an identifier | installed com.example.notes";
    EXPECT_EQ(perform(array({ made(Touchy_class), purchase(notes) })), untouched + " | (2)");
}

TEST_F(StoreShapes, ARefusalWithoutACompletionCallsNothing)
{
    const auto nobody = [] { return nil; };
    phone::takeJournal();
    send<"addJobs:withCompletionBlock:", void>(
        send<"defaultManager">(id(objc_getClass("ASDJobManager"))), array({ purchase(notes) }), nobody());
    send<"startPurchase:withResultHandler:", void>(
        send<"sharedManager">(id(objc_getClass("ASDPurchaseManager"))), purchase(notes), nobody());
    const id center = send<"defaultCenter">(id(objc_getClass("SKUIItemStateCenter")));
    send<"_performSoftwarePurchases:withClientContext:completionBlock:", void>(
        center, array({ purchase(notes) }), nil, nobody());
    send<"_performPurchases:hasBundlePurchase:withClientContext:completionBlock:", void>(
        center, array({ purchase(notes) }), true, nil, nobody());
    EXPECT_EQ(phone_.journal(), "");
    EXPECT_TRUE(phone::takeJournal().empty());
}

} // namespace
