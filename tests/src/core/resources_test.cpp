#include "core/resources.h"

#include "core/settings.h"
#include "platform/dispatch/clock.h"
#include "platform/dispatch/run_loop.h"
#include "platform/foundation/block.h"
#include "platform/foundation/classes.h"
#include "platform/foundation/url.h"
#include "platform/runtime/message.h"
#include "support/temporary_device.h"

#include <gtest/gtest.h>

namespace appledger {

using namespace platform;

namespace {

/// What was asked of the system, and the schemes that somebody takes.
std::string asked;
std::vector<std::string> installed;
bool opensUnasked = false;

std::string schemeOf(const id& url)
{
    return asUrl(url)->scheme;
}

bool canOpen(const id&, SEL, const id& url)
{
    return std::ranges::find(installed, schemeOf(url)) != installed.end();
}

void open(const id&, SEL, const id& url, const id& options, const id& completion)
{
    asked += describe(send<"absoluteString">(url)) + describe(options) + (completion ? " and tell; " : "; ");
    if (completion)
        callBlock(completion, opensUnasked);
}

id sharedApplication(const id& self, SEL)
{
    static NSObject* const application = send<"new">(self).leak();
    return application;
}

constexpr MethodDefinition applicationMethods[] {
    method<"canOpenURL:", &canOpen>(),
    method<"openURL:options:completionHandler:", &open>(),
    classMethod<"sharedApplication", &sharedApplication>(),
};
const ClassDefinition Application_class { .name = "UIApplication", .methods = applicationMethods };

id alertWithTitle(const id&, SEL, const id& title, const id& message, NSInteger style)
{
    asked += "alert " + describe(title) + " " + describe(message) + " style " + std::to_string(style);
    return mutableArray();
}

void addObject(const id&, SEL, const id&) { }

constexpr MethodDefinition alertMethods[] {
    classMethod<"alertControllerWithTitle:message:preferredStyle:", &alertWithTitle>(),
    method<"addAction:", &addObject>(),
};
const ClassDefinition Alert_class { .name = "UIAlertController", .methods = alertMethods };

/// As much of a view controller as presents.
class Controller : public NSObject {
public:
    static const ClassDefinition definition;
    void present(const id&, bool animated, const id& completion)
    {
        asked += std::string(animated ? " presented" : " put up") + (completion ? " with a completion; " : "; ");
    }
};
constexpr MethodDefinition controllerMethods[] {
    method<"presentViewController:animated:completion:", &Controller::present>(),
};
const ClassDefinition Controller::definition { .name = "Controller", .methods = controllerMethods };

class Resources : public testing::Test {
protected:
    Resources()
    {
        holdClock();
        device_.writeDomain({});
        for (const ClassDefinition* definition : foundationClasses())
            registerClass(*definition);
        registerClass(Application_class);
        registerClass(Alert_class);
    }

    /// What comes of opening a folder with that choice.
    static std::string openFolder(const char* choice, std::vector<std::string> schemes, const id& url)
    {
        installed = std::move(schemes);
        ALSettings::setDirectoryOpener(string(choice));
        ALHelper::openDirectoryAtURL(url, make<Controller>());
        std::string sent = std::exchange(asked, "");
        runUntilIdle();
        return asked.empty() ? sent : sent + "later " + std::exchange(asked, "");
    }

    const support::TemporaryDevice device_;
};

TEST_F(Resources, OpenAFolderInTheFirstFileManagerThatThereIs)
{
    const id folder = fileURL("/a b/ü");
    const std::string path = "/a%20b/%C3%BC";
    const auto plain = [&](const std::string& prefix) { return "\"" + prefix + path + "\"{}; "; };
    const struct {
        const char* choice;
        std::vector<std::string> schemes;
        std::string opened;
    } cases[] = {
        { "filza", { "filza", "fila", "ifile" }, plain("filza://view") },
        { "fila", { "filza", "fila", "ifile" }, plain("fila://view") },
        { "filza", { "fila", "ifile" }, plain("fila://view") },
        { "fila", { "filza" }, plain("filza://view") },
        { "unknown", { "filza", "fila" }, plain("filza://view") },
        { "fila", { "ifile" }, plain("ifile://file://") },
    };
    for (const auto& [choice, schemes, opened] : cases)
        EXPECT_EQ(openFolder(choice, schemes, folder), opened) << choice;
}

TEST_F(Resources, TryTheChosenFileManagerAllTheSameAndSayThatItIsMissing)
{
    const auto alert = [](const char* name) {
        return "later alert \"AppLedger\" \"Install " + std::string(name)
            + " app to open the selected directory\" style 1 presented; ";
    };
    EXPECT_EQ(openFolder("fila", {}, fileURL("/a")), "\"fila://view/a\"{} and tell; " + alert("Fila"));
    EXPECT_EQ(openFolder("filza", {}, fileURL("/a")), "\"filza://view/a\"{} and tell; " + alert("Filza"));
    opensUnasked = true;
    EXPECT_EQ(openFolder("filza", {}, fileURL("/a")), "\"filza://view/a\"{} and tell; ") << "it opened";
    opensUnasked = false;
    EXPECT_EQ(openFolder("filza", { "filza" }, nil), "\"filza://view\"{}; ");
}

TEST_F(Resources, AreNilWithoutABundle)
{
    EXPECT_EQ(ALHelper::sharedInstance().resoucesBundle, nil);
    EXPECT_EQ(ALHelper::imageNamed(string("ChevronRight")), nil);
}

TEST_F(Resources, AreOfTheBundleWhereTheLibraryLies)
{
    device_.put("/Library/Application Support/AppLedger/Resources.bundle/Info.plist", "");
    EXPECT_EQ(describe(send<"bundlePath">(ALHelper::sharedInstance().resoucesBundle)),
        "\"/Library/Application Support/AppLedger/Resources.bundle\"");
    device_.put("/var/jb/Library/Application Support/AppLedger/Resources.bundle/Info.plist", "");
    EXPECT_EQ(describe(send<"bundlePath">(ALHelper::sharedInstance().resoucesBundle)),
        "\"/Library/Application Support/AppLedger/Resources.bundle\"")
        << "looked for once";
}

} // namespace

} // namespace appledger
