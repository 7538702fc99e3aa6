#include "cli/explain/explain_command.h"
#include "cli/phone/device_verbs.h"
#include "cli/phone/icon_verbs.h"
#include "cli/phone/notification_verbs.h"
#include "cli/phone/phone_commands.h"
#include "cli/phone/phone_store.h"
#include "cli/phone/switcher_command.h"
#include "cli/plan/plan_command.h"
#include "cli/policy/policy_commands.h"
#include "cli/policy/side_file_policies.h"
#include "platform/foundation/values.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>

namespace {

using namespace cli;

std::string defaultRoot()
{
    if (const char* const data = std::getenv("XDG_DATA_HOME"); data && *data)
        return std::string(data) + "/appledger/phone";
    const char* const home = std::getenv("HOME");
    return std::string(home && *home ? home : "/tmp") + "/.local/share/appledger/phone";
}

/// The words of the command line, and what they ask for.
class CommandLine {
public:
    CommandLine()
    {
        app_.require_subcommand(1);
        app_.add_option("--root", root_, "directory of the phone (default " + root_ + ")");
        app_.add_flag("--json", json_, "answer with one JSON object");
        app_.fallthrough();
        app_.footer("Exit status: 0 done (a launch that the phone refused is an answer too), 1 refused or not\n"
                    "found, 2 bad usage.");
        addPlan();
        addPhone();
        addPolicy();
        addExplain(app_, explain_, [this](ExplainAction action) { action_ = std::move(action); });
    }

    ExitStatus run(int argumentCount, char** arguments)
    {
        try {
            app_.parse(argumentCount, arguments);
        } catch (const CLI::ParseError& error) {
            return app_.exit(error) == 0 ? ExitStatus::Done : ExitStatus::BadUsage;
        }
        repair();
        setOutputFormat(json_ ? OutputFormat::Json : OutputFormat::Text);
        std::error_code failed;
        const std::filesystem::path absolute = std::filesystem::absolute(root_, failed).lexically_normal();
        const std::string text = absolute.has_filename() ? absolute.string() : absolute.parent_path().string();
        return action_(phone::PhoneDirectory(failed ? root_ : text));
    }

private:
    /// Words may be any bytes; from here on they are text, as the phone's strings are.
    void repair()
    {
        const auto repaired = [](std::string& word) { word = platform::asString(platform::string(word))->text(); };
        for (std::string* const word : { &name_, &key_, &value_ })
            repaired(*word);
        std::ranges::for_each(store_.identifiers, repaired);
        std::ranges::for_each(switcher_.applications, repaired);
        for (std::string* const word : { &device_.identifier, &switcher_.application })
            repaired(*word);
    }

    using Action = std::function<ExitStatus(const phone::PhoneDirectory&)>;

    CLI::App* addVerb(CLI::App* parent, const char* name, const char* description, Action action)
    {
        CLI::App* const verb = parent->add_subcommand(name, description);
        verb->callback([this, action = std::move(action)] { action_ = action; });
        return verb;
    }

    void addVersion(CLI::App* verb)
    {
        verb->add_option_function<std::string>(
                "--ios",
                [this](const std::string& given) {
                    const auto version = platform::parseSystemVersion(given);
                    if (!version || version->major < 12 || version->major > 17)
                        throw CLI::ValidationError("--ios", "a version from 12 to 17, such as 16.0");
                    up_.version = plan_.version = *version;
                },
                "version of the platform, 12 to 17 (default 16.0)")
            ->type_name("VERSION");
    }

    void addPlan()
    {
        CLI::App* const plan = addVerb(&app_, "plan", "print the library's load into a process, step by step",
            [this](const auto&) { return printPlan(plan_); });
        plan->add_option("--bundle", plan_.bundleIdentifier, "bundle identifier of the process")->required();
        plan->add_option("--process", plan_.processName, "name of the process")->required();
        plan->add_option("--absent", plan_.absentClasses, "a class that the system shall not have");
        addVersion(plan);
    }

    void addPhone()
    {
        CLI::App* const phone = app_.add_subcommand("phone", "run a phone and use it");
        phone->require_subcommand(1);
        phone->fallthrough();
        CLI::App* const up
            = addVerb(phone, "up", "start the phone", [this](const auto& root) { return phoneUp(root, up_); });
        addVersion(up);
        up->add_flag("--stock", up_.stock, "without the library");
        up->add_flag("--foreground", up_.foreground, "stay in front until interrupted");
        addVerb(phone, "down", "stop the phone", phoneDown);
        addVerb(phone, "status", "what runs, and what is in front", phoneStatus);
        addVerb(phone, "respring", "restart SpringBoard", phoneRespring);
        addNamed(addVerb(phone, "kill", "kill a process with SIGKILL; the supervisor has it back",
                     [this](const auto& root) { return phoneKill(root, name_); }),
            "PROCESS");
        CLI::App* const authenticate = addVerb(phone, "authenticate", "answer the prompt that is up",
            [this](const auto& root) { return phoneAuthenticate(root, authenticate_); });
        authenticate->add_option("ANSWER", authenticate_.answer, "yes, no or cancel")
            ->required()
            ->check(CLI::IsMember({ "yes", "no", "cancel" }));
        authenticate->add_option("--after", authenticate_.after, "wait so long first")
            ->check(CLI::Range(0.0, 3600.0))
            ->type_name("SECONDS");
        addVerb(phone, "home", "go to the Home Screen", phoneHome);
        addScreen(phone);
        addNamed(addVerb(phone, "exit", "end an application's process",
                     [this](const auto& root) { return phoneExit(root, name_); }),
            "ID");
        const auto chosen = [this](Action action) { action_ = std::move(action); };
        addDeviceVerbs(*phone, device_, chosen);
        addRoad(phone, "tap", "tap an icon", "tap");
        addRoad(phone, "quick-action", "choose from an icon's quick-action menu", "quick-action");
        addRoad(phone, "spotlight", "tap a search result in Spotlight", "spotlight");
        CLI::App* const open = addRoad(phone, "open", "open an application", "service");
        open->add_option("--road", road_, "how the request comes (default service)")->check(CLI::IsMember(roadNames()));
        addTransitionOptions(*open, transition_);
        open->get_option("--road")->excludes(open->get_option("--from"));
        addSwitcher(*phone, switcher_, chosen);
        addNotificationVerbs(*phone, push_, chosen);
        addIconVerbs(*phone, uninstall_, chosen);
        addStore(phone);
    }

    void addScreen(CLI::App* phone)
    {
        CLI::App* const screenshot = addVerb(phone, "screenshot", "write what is on the screen into a PNG file",
            [this](const auto& root) { return phoneScreenshot(root, screenshot_); });
        screenshot->add_option("FILE", screenshot_.file, "the PNG file")->required();
        screenshot->add_option("--scale", screenshot_.scale, "pixels a point (default 3)")
            ->check(CLI::Range(0.1, 10.0));
        addVerb(phone, "describe", "what is on the screen as text, one view a line", phoneDescribe);
        CLI::App* const folder = addVerb(phone, "folder", "open or close a folder of the Home Screen",
            [this](const auto& root) { return phoneFolder(root, key_, name_); });
        folder->add_option("CHANGE", key_, "open or close")->required()->check(CLI::IsMember({ "open", "close" }));
        addNamed(folder, "NAME");
    }

    void addStore(CLI::App* phone)
    {
        CLI::App* const store = phone->add_subcommand("store", "visit the store");
        store->require_subcommand(1);
        store->fallthrough();
        const auto addProcess = [this](CLI::App* verb) {
            verb->add_option("--process", store_.process, "where: AppStore, appstored, itunesstored or SpringBoard");
        };
        addProcess(addVerb(store, "updates", "the updates that the store shows",
            [this](const auto& root) { return phoneStoreUpdates(root, store_); }));
        CLI::App* const buy = addVerb(store, "buy", "buy applications, or their updates",
            [this](const auto& root) { return phoneStoreBuy(root, store_); });
        buy->add_option("ID", store_.identifiers, "bundle identifiers")->required();
        buy->add_option("--road", store_.road, "the method at which it begins (default request)")
            ->check(CLI::IsMember(storeRoadNames()));
        addProcess(buy);
    }

    CLI::App* addRoad(CLI::App* phone, const char* name, const char* description, const char* road)
    {
        CLI::App* const verb = addVerb(phone, name, description, [this, road](const auto& root) {
            return transition_.any() ? phoneOpenFrom(root, transition_, name_)
                                     : phoneOpen(root, road_.empty() ? road : road_, { name_ });
        });
        addNamed(verb, "ID");
        return verb;
    }

    void addNamed(CLI::App* verb, const char* what) { verb->add_option(what, name_)->required(); }

    void addPolicy()
    {
        CLI::App* const policy
            = app_.add_subcommand("policy", "read and change what the phone does for each application");
        policy->require_subcommand(1);
        policy->fallthrough();
        addVerb(policy, "list", "every key that is set", listPolicies);
        addNamed(addVerb(policy, "show", "what holds for one application",
                     [this](const auto& root) { return showPolicies(root, name_); }),
            "ID");
        addListChange(policy, "add", "put an application on a list", ListChange::Add);
        addListChange(policy, "remove", "take an application off a list", ListChange::Remove);
        addListChange(policy, "toggle", "put it on, or take it off", ListChange::Toggle);
        CLI::App* const set
            = addVerb(policy, "set", "set a key", [this](const auto& root) { return setPolicy(root, key_, value_); });
        set->add_option("KEY", key_)->required();
        set->add_option("VALUE", value_)->required();
        addVerb(policy, "unset", "remove a key, so that its default holds",
            [this](const auto& root) { return unsetPolicy(root, key_); })
            ->add_option("KEY", key_)
            ->required();
        addNamed(addVerb(policy, "mute", "take the volume away while an application is in front",
                     [this](const auto& root) { return mutePolicy(root, name_, true); }),
            "ID");
        addNamed(addVerb(policy, "unmute", "leave it the volume",
                     [this](const auto& root) { return mutePolicy(root, name_, false); }),
            "ID");
        CLI::App* const brightness
            = addVerb(policy, "brightness", "give an application a brightness of its own while it is in front",
                [this](const auto& root) { return brightnessPolicy(root, name_, value_); });
        addNamed(brightness, "ID");
        brightness->add_option("VALUE", value_, "from 0 to 1, or off")->required();
    }

    void addListChange(CLI::App* policy, const char* name, const char* description, ListChange change)
    {
        CLI::App* const verb = addVerb(policy, name, description,
            [this, change](const auto& root) { return changePolicyList(root, change, key_, name_); });
        verb->add_option("KEY", key_)->required();
        addNamed(verb, "ID");
    }

    CLI::App app_ { "AppLedger: control, application by application, over what the phone does.", "appledger" };
    std::string root_ = defaultRoot();
    bool json_ = false;
    Action action_;
    DeviceOptions device_;
    ExplainOptions explain_;
    SwitcherOptions switcher_;
    TransitionOptions transition_;
    PushOptions push_;
    UninstallOptions uninstall_;
    StoreOptions store_;
    PlanOptions plan_;
    UpOptions up_;
    AuthenticateOptions authenticate_;
    ScreenshotOptions screenshot_;
    std::string name_;
    std::string road_;
    std::string key_;
    std::string value_;
};

} // namespace

int main(int argumentCount, char** arguments)
{
    return static_cast<int>(CommandLine().run(argumentCount, arguments));
}
