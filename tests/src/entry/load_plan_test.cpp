#include "entry/load_plan.h"

#include "entry/process_role.h"
#include "support/golden.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace appledger {

using namespace platform;

namespace {

TEST(ProcessRoles, CompareExactly)
{
    const struct {
        const char* bundleIdentifier;
        const char* processName;
        std::string role; ///< B: SpringBoard, S: Spotlight, A: App Store, a: appstored, i: itunesstored; +: store
    } cases[] = {
        { "com.apple.springboard", "SpringBoard", "B+" },
        { "com.apple.SpringBoard", "SpringBoard", "" },
        { "com.apple.Spotlight", "Spotlight", "S" },
        { "com.apple.spotlight", "Spotlight", "" },
        { "com.apple.AppStore", "AppStore", "A+" },
        { "com.apple.appstore", "AppStore", "" },
        { "com.apple.appstored", "appstored", "a+" },
        { "com.example.anything", "appstored", "a+" },
        { "", "itunesstored", "i+" },
        { "com.apple.springboard", "itunesstored", "Bi+" },
        { "com.apple.Spotlight", "appstored", "Sa+" },
        { "com.apple.appstored", "Appstored", "" },
        { "appstored", "", "" },
        { "com.apple.springboard ", "springboard", "" },
        { "com.example.notes", "Notes", "" },
    };
    for (const auto& [bundleIdentifier, processName, expected] : cases) {
        const ProcessRole role = processRole({ bundleIdentifier, processName, {} });
        std::string text;
        text.append(role.isSpringBoard ? "B" : "")
            .append(role.isSpotlight ? "S" : "")
            .append(role.isAppStore ? "A" : "");
        text.append(role.isAppstored ? "a" : "")
            .append(role.isItunesstored ? "i" : "")
            .append(role.isStore() ? "+" : "");
        EXPECT_EQ(text, expected) << bundleIdentifier << ' ' << processName;
    }
}

std::string text(const HookRow& row)
{
    constexpr std::string_view kinds[] = { "  ", "  class ", "  add ", "  property " };
    return std::string(kinds[static_cast<std::size_t>(row.kind)])
        .append(row.className)
        .append(" ")
        .append(row.selector)
        .append(" ")
        .append(row.setter)
        .append(row.types)
        .append("\n");
}

std::string text(const LoadStep& step)
{
    const std::string name = std::string(step.name) + "\n";
    switch (step.kind) {
    case LoadStepKind::LoadCache:
        return "load " + name;
    case LoadStepKind::CreateSingleton:
        return "create " + name;
    case LoadStepKind::AddObserver:
        return "observe " + std::string(step.notification) + " " + name;
    case LoadStepKind::InstallGroup:
        break;
    }
    std::string lines = "install " + name;
    step.group->forEachRow([&lines](const HookRow& row) { lines += text(row); });
    return lines;
}

using Classes = std::set<std::string, std::less<>>;

std::vector<LoadStep> plan(
    const char* bundleIdentifier, const char* processName, SystemVersion version, const Classes& classes)
{
    return planLoad({ { bundleIdentifier, processName, version },
        [&](std::string_view name) { return classes.contains("every") || classes.contains(name); } });
}

TEST(LoadPlan, OfEachProcessIsItsListOfSteps)
{
    const struct {
        const char* bundleIdentifier;
        const char* processName;
    } processes[] = { { "com.apple.springboard", "SpringBoard" }, { "com.apple.Spotlight", "Spotlight" },
        { "com.apple.AppStore", "AppStore" }, { "com.example.notes", "Notes" } };
    for (const auto& [bundleIdentifier, processName] : processes) {
        std::string lines;
        for (const LoadStep& step : plan(bundleIdentifier, processName, { 16, 0, 0 }, { "every" }))
            lines += text(step);
        EXPECT_GOLDEN(lines, std::string("load-") + processName + ".txt");
    }
}

TEST(LoadPlan, InstallsGroupsWhereTheirClassesAre)
{
    const std::string springBoard = "BaseHooks SHARED_HOOKS IOS13_AND_NEWER_HOOKS IOS12_AND_OLDER_HOOKS "
                                    "BlockLaunchHooks NoRedirectPrimary AutoClearHooks ImmortalizerHooks "
                                    "HiddenAppHooks AppMuteHooks RunningIndicatorHooks ";
    const struct {
        const char* bundleIdentifier;
        const char* processName;
        SystemVersion version;
        Classes classes;
        std::string installed;
    } cases[] = {
        { "com.apple.springboard", "SpringBoard", { 16, 0, 0 }, {}, springBoard },
        { "com.apple.springboard", "SpringBoard", { 12, 0, 0 }, { "SBHIconManager" }, springBoard },
        { "com.apple.Spotlight", "Spotlight", { 16, 0, 0 }, {}, "SpotlightHooks " },
        { "com.apple.AppStore", "AppStore", { 16, 0, 0 }, { "UIImage" }, "GlobalIconHooks " },
        { "com.example.notes", "Notes", { 15, 0, 0 }, { "NCNotificationRequestContentProvider" },
            "NotificationHooks_iOS15 " },
        { "com.example.notes", "Notes", { 14, 8, 1 }, { "NCNotificationRequestContentProvider" }, "" },
        { "com.example.notes", "Notes", { 17, 2, 0 }, { "ASDApp", "SearchUIImageView" }, "" },
        { "com.example.notes", "Notes", {}, { "SBIconImageView" }, "SearchUIHooks " },
        { "com.example.notes", "Notes", {}, { "SearchUIAppIconImage" }, "SearchUIHooks " },
        { "com.example.notes", "Notes", {}, { "SearchUIAppIconImage", "SBIconImageView" }, "SearchUIHooks " },
        { "", "appstored", {}, { "ASDPurchaseRequest" }, "AppStoreUpdateHooks " },
        { "", "appstored", {}, { "ASDJobManager" }, "AppStoreUpdateHooks " },
        { "", "appstored", {}, { "ASDPurchaseManager" }, "AppStoreUpdateHooks " },
        { "", "appstored", {}, { "ASDApp" }, "AppStoreUpdateHooks " },
        { "", "itunesstored", {}, { "SKUIItemStateCenter" }, "AppStoreUpdateHooks " },
        { "", "", {}, {}, "" },
    };
    for (const auto& [bundleIdentifier, processName, version, classes, expected] : cases) {
        std::string installed;
        for (const LoadStep& step : plan(bundleIdentifier, processName, version, classes))
            if (step.kind == LoadStepKind::InstallGroup)
                installed.append(step.name).append(" ");
        EXPECT_EQ(installed, expected) << processName << ' ' << version.text() << ' '
                                       << testing::PrintToString(classes);
    }
}

} // namespace

} // namespace appledger
