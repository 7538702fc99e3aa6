#include "panel/redirect_app_selector.h"

#include "core/preference_domain.h"
#include "launch/redirect_rules.h"
#include "panel/application_list.h"
#include "platform/darwin/notify.h"
#include "platform/dispatch/run_loop.h"
#include "platform/foundation/classes.h"
#include "platform/foundation/locale.h"
#include "platform/handles/UINavigationController.h"
#include "platform/handles/UISearchController.h"
#include "platform/handles/UITableViewController.h"
#include "platform/handles/UIWindow.h"
#include "platform/screen/feedback.h"
#include "support/temporary_device.h"
#include "support/view_test.h"

namespace appledger {

using namespace platform;
using namespace std::chrono_literals;

namespace {

/// An application as the system knows it; a nil name is none.
struct Record : NSObject {
    static const ClassDefinition definition;
    id bundleIdentifier {};
    id localizedName {};
    id localizedShortName {};
};
constexpr MethodDefinition recordMethods[] {
    getter<"bundleIdentifier", &Record::bundleIdentifier>(),
    getter<"localizedName", &Record::localizedName>(),
    getter<"localizedShortName", &Record::localizedShortName>(),
};
const ClassDefinition Record::definition {
    .name = "TestApplicationRecord", .allocate = allocate<Record>, .methods = recordMethods
};

id record(const char* identifier, const char* name)
{
    const Ref<Record> made = make<Record>();
    made->bundleIdentifier = identifier ? string(identifier) : nil;
    made->localizedName = name ? string(name) : nil;
    return made;
}

std::vector<id> installed;
std::string felt;
int heard = 0; ///< saved rules

id allInstalled(const id&, SEL)
{
    return array(std::vector<id>(installed));
}
id workspace(const id& self, SEL)
{
    static NSObject* const shared = send<"new">(self).leak();
    return shared;
}
constexpr MethodDefinition workspaceMethods[] {
    method<"allInstalledApplications", &allInstalled>(),
    classMethod<"defaultWorkspace", &workspace>(),
};
const ClassDefinition Workspace_class { .name = "LSApplicationWorkspace", .methods = workspaceMethods };

constexpr const char* key = "CustomBlockedApplications/com.example.source";

class RedirectAppSelector : public support::ViewTest {
protected:
    RedirectAppSelector()
    {
        for (const ClassDefinition* definition : foundationClasses())
            registerClass(*definition);
        registerClass(Workspace_class);
        registerClass(ALRedirectAppSelector_class);
        setFeedbackHandler([](std::string_view kind) { felt += kind; });
        setPreferredLanguages({ "en-GB" });
        setScreen({ 390, 844 }, 2);
        window.setFrame(CGRectMake(0, 0, 390, 844));
        window.setRootViewController(below);
        window.setHidden(false);
        installed = { record("com.example.notes", "Notes"), record("com.example.atlas", "atlas"),
            record("com.example.Clock", "Clock"), record("", "No identifier"), record(nullptr, "None at all"),
            record("com.example.nameless", nullptr) };
        settle();
    }

    void open(const std::vector<std::string>& stored)
    {
        std::vector<id> items;
        for (const std::string& identifier : stored)
            items.push_back(string(identifier));
        if (!stored.empty())
            device_.writeDomain({ { key, array(std::move(items)) } });
        const id selector = send<"initWithStyle:">(
            send<"alloc">(support::classObject<"ALRedirectAppSelector">()), UITableViewStyle::Plain);
        send<"setPreferenceKey:", void>(selector, string(key));
        send<"setAppTitle:", void>(selector, string("Add Block"));
        controller = UITableViewController(selector);
        below.present(UINavigationController::withRootViewController(controller), true);
        settle();
    }

    static void settle()
    {
        advanceClock(2s);
        runUntilIdle();
    }

    static void tap(CGPoint point)
    {
        advanceClock(1s);
        touchScreenAt(point, TouchKind::Began);
        touchScreenAt(point, TouchKind::Ended);
        settle();
    }

    /// The middle of what can be seen of that label, the frontmost; {0, 0} for nothing.
    static CGPoint middleOf(const id& elements, std::string_view label)
    {
        CGPoint found {};
        for (const id& element : itemsOf(elements)) {
            const auto pairs = pairsOf(element);
            if (!boolValue(pairs["visible"]))
                continue;
            if (const auto own = asString(pairs["label"]); own && *own == label) {
                const auto frame = itemsOf(pairs["frame"]);
                found = { asDouble(frame[0]).value() + asDouble(frame[2]).value() / 2,
                    asDouble(frame[1]).value() + asDouble(frame[3]).value() / 2 };
            }
            if (const CGPoint inside = middleOf(pairs["children"], label); inside.y > 0)
                found = inside;
        }
        return found;
    }
    static void tap(std::string_view label)
    {
        const CGPoint middle = middleOf(elementsOfScreen(), label);
        ASSERT_GT(middle.y, 0) << label;
        tap(middle);
    }

    /// The titles of the rows, with a mark behind those that are picked.
    std::string rows() const
    {
        std::string text;
        const UITableView table = controller.tableView();
        const id paths = table.indexPathsForVisibleRows();
        for (const id& path : itemsOf(paths)) {
            const UITableViewCell cell = table.cellForRow(NSIndexPath(path));
            const bool isPicked = cell.accessoryType() == UITableViewCellAccessoryType::Checkmark;
            text += asString(cell.textLabel().text())->text() + (isPicked ? "+ " : " ");
        }
        return text;
    }

    static std::string stored()
    {
        const Ref<NSUserDefaults> preferences = NSUserDefaults::suite(preferenceSuite);
        preferences->synchronize();
        return describe(preferences->objectForKey(key));
    }

    UISearchController search() const { return UISearchController(send<"searchController">(controller)); }

    const support::TemporaryDevice device_;
    const UIWindow window = UIWindow::create();
    const UIViewController below = UIViewController::create();
    UITableViewController controller {};
};

TEST_F(RedirectAppSelector, ListsWhatIsPickedFirstAndThenByName)
{
    open({ "com.example.notes" });
    EXPECT_EQ(rows(), "Notes+ atlas Clock com.example.nameless ");
    EXPECT_GT(middleOf(elementsOfScreen(), "Add Block").y, 0);
    tap("Clock");
    EXPECT_EQ(rows(), "Clock+ Notes+ atlas com.example.nameless ") << "it moves to the top at once";
    tap("Notes");
    EXPECT_EQ(rows(), "Clock+ atlas com.example.nameless Notes ");
    EXPECT_EQ(stored(), "[\"com.example.notes\"]") << "nothing is written yet";
}

TEST_F(RedirectAppSelector, SavesWhatIsPickedAndTellsTheRules)
{
    felt.clear();
    heard = 0;
    CFNotificationCenterAddObserver(
        [] { ++heard; }, "com.orbelix.appledger.redirect_saved", CFNotificationSuspensionBehavior::DeliverImmediately);
    open({ "com.example.gone" });
    tap("atlas");
    tap("Save");
    EXPECT_EQ(stored(), "[\"com.example.gone\", \"com.example.atlas\"]") << "what isn't installed stays picked";
    EXPECT_EQ(felt, "impact");
    EXPECT_EQ(heard, 1);
    EXPECT_FALSE(below.presentedViewController());
    ReloadRedirectPrefs();
    EXPECT_TRUE(gCustomForbiddenMappings.load()->contains(rulePair("com.example.source", "com.example.atlas")));
}

TEST_F(RedirectAppSelector, CancellingLeavesTheKeyAlone)
{
    open({ "com.example.notes" });
    tap("atlas");
    tap("Cancel");
    EXPECT_EQ(stored(), "[\"com.example.notes\"]");
    EXPECT_FALSE(below.presentedViewController());
}

TEST_F(RedirectAppSelector, AnEmptySelectionIsSavedAsOne)
{
    open({ "com.example.notes" });
    tap("Notes");
    tap("Save");
    EXPECT_EQ(stored(), "[]");
    ReloadRedirectPrefs();
    EXPECT_EQ(gCustomForbiddenMappings.load()->size(), 0U);
}

TEST_F(RedirectAppSelector, FindsByNameAndIdentifierInWhateverCase)
{
    open({});
    const struct {
        const char* text;
        const char* rows;
    } cases[] { { "CLO", "Clock " }, { "example.a", "atlas " }, { "a", "atlas Clock com.example.nameless Notes " },
        { "nameless", "com.example.nameless " }, { "zzz", "" } };
    tap("Search");
    EXPECT_TRUE(search().isActive());
    for (const auto& [text, wanted] : cases) {
        while (search().searchBar().searchTextField().hasText())
            pressKey("delete");
        typeOnKeyboard(text);
        settle();
        EXPECT_EQ(rows(), wanted) << text;
    }
    tap("Cancel");
    EXPECT_FALSE(search().isActive());
    EXPECT_EQ(rows(), "atlas Clock com.example.nameless Notes ");
    EXPECT_TRUE(below.presentedViewController()) << "it was the search that was cancelled";
}

TEST_F(RedirectAppSelector, WhatIsPickedDuringASearchKeepsItsPlace)
{
    open({});
    tap("Search");
    typeOnKeyboard("c");
    settle();
    ASSERT_EQ(rows(), "atlas Clock com.example.nameless Notes ");
    tap("Notes");
    EXPECT_EQ(rows(), "atlas Clock com.example.nameless Notes+ ");
    tap("Cancel");
    tap("Save");
    EXPECT_EQ(stored(), "[\"com.example.notes\"]");
}

TEST(ApplicationList, TheShortNameIsShownButNotSortedBy)
{
    const id known = record("com.example.b", nullptr);
    as<Record>(known)->localizedShortName = string("A short one");
    std::vector<ListedApplication> list = listedApplications(array({ known, record("com.example.a", "Beta") }));
    sortBySelectionAndName(list, nil);
    EXPECT_TRUE(as<Record>(list[0].record)->localizedName);
    EXPECT_EQ(itemsOf(recordsContaining(list, "short")).size(), 0U);
    EXPECT_EQ(lowerCase(string("ÄÖ Ünïcode 🙂")), "äö ünïcode 🙂");
}

} // namespace

} // namespace appledger
