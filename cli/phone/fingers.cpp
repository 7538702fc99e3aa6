#include "cli/command/arguments.h"
#include "cli/command/phone_client.h"
#include "cli/command/verb_rows.h"
#include "cli/phone/device.h"
#include "cli/phone/launch.h"
#include "cli/phone/reasons.h"

#include <memory>
#include <nlohmann/json.hpp>

namespace cli {

using Json = nlohmann::json;

namespace {

constexpr const char* placeText = "X,Y in points, or a view: its identifier or label, or an application for its icon";
constexpr double longestTouch = 60; ///< seconds

std::string describeTouched(const Json& touched)
{
    if (!touched.is_object())
        return "nothing";
    for (const char* const key : { "label", "identifier", "class" })
        if (const std::string name = touched.value(key, ""); !name.empty())
            return name;
    return "a view";
}

/// Whether the finger has set a launch going, whatever became of that.
bool hasLaunched(const Json& report)
{
    return !report["opened"].empty() || !report["declined"].empty() || !report["prompts"].empty()
        || report["stoppedAt"].is_string();
}

/// An icon is identified by its application.
void addReasonOfTouched(Json& report, const phone::PhoneDirectory& directory)
{
    if (!hasLaunched(report) || !report["touched"].is_object())
        return;
    report["application"] = report["touched"].value("identifier", "");
    addLaunchReason(report, directory, { report["application"] }, false);
}

ExitStatus tellFinger(const phone::PhoneDirectory& directory, const Json& request, const std::string& did)
{
    return tellAnswer(
        directory, "SpringBoard", request, [&directory](Json& report) { addReasonOfTouched(report, directory); },
        [&did](const Json& report) {
            std::string text = did + " " + describeTouched(report["touched"]) + ".";
            if (hasLaunched(report))
                text += " " + describeLaunch(report, describeTouched(report["touched"]));
            return text + describeDeviceChanges(report);
        });
}

Action touch(Arguments& arguments)
{
    const auto place = std::make_shared<Word>();
    arguments.add("VIEW", *place, placeText).required().example("Scribbles");
    return [place](const phone::PhoneDirectory& directory) {
        return tellFinger(directory, { { "verb", "touch" }, { "from", place->text() } }, "Touched");
    };
}

Action press(Arguments& arguments)
{
    struct Options {
        Word place;
        double seconds = 0.6;
    };
    const auto options = std::make_shared<Options>();
    arguments.add("VIEW", options->place, placeText).required().example("Scribbles");
    arguments.add("--for", options->seconds, "how long the finger stays (default 0.6)")
        .between(0, longestTouch)
        .shownAs("SECONDS");
    return [options](const phone::PhoneDirectory& directory) {
        return tellFinger(directory,
            { { "verb", "touch" }, { "from", options->place.text() }, { "seconds", options->seconds } }, "Pressed");
    };
}

struct DragOptions {
    Word from;
    Word to;
    double speed = 1000;
    double hold = 0;
};

Action moveFinger(Arguments& arguments, const std::shared_ptr<DragOptions>& options, const char* did)
{
    arguments.add("FROM", options->from, placeText).required().example("Scribbles");
    arguments.add("TO", options->to, "up, down, left or right for 200 points that way, or a place like FROM")
        .required()
        .example("up");
    arguments.add("--speed", options->speed, "points a second").between(1, 100'000).shownAs("SPEED");
    return [options, did](const phone::PhoneDirectory& directory) {
        return tellFinger(directory,
            { { "verb", "drag" }, { "from", options->from.text() }, { "to", options->to.text() },
                { "speed", options->speed }, { "hold", options->hold } },
            did);
    };
}

Action swipe(Arguments& arguments)
{
    return moveFinger(arguments, std::make_shared<DragOptions>(), "Swiped from");
}

Action drag(Arguments& arguments)
{
    const auto options = std::make_shared<DragOptions>();
    options->speed = 300;
    options->hold = 0.2;
    Action action = moveFinger(arguments, options, "Dragged from");
    arguments.add("--hold", options->hold, "for so long the finger rests before it lifts (default 0.2)")
        .between(0, longestTouch)
        .shownAs("SECONDS");
    return action;
}

Action wait(Arguments& arguments)
{
    struct Options {
        Word wanted;
        bool isGone = false;
        double within = 5;
    };
    const auto options = std::make_shared<Options>();
    arguments.add("--for", options->wanted, "a view's identifier or label, or a text in one")
        .required()
        .shownAs("VIEW")
        .example("Scribbles");
    arguments.flag("--gone", options->isGone, "until it isn't there any more");
    arguments.add("--within", options->within, "how long at most (default 5)")
        .between(0, longestTouch)
        .shownAs("SECONDS");
    return [options](const phone::PhoneDirectory& directory) {
        return tellAnswer(directory, "SpringBoard",
            { { "verb", "wait" }, { "for", options->wanted.text() }, { "gone", options->isGone },
                { "within", options->within } },
            [&options](
                const Json&) { return options->wanted.text() + (options->isGone ? " is gone." : " is there."); });
    };
}

ExitStatus tellKeyboard(const phone::PhoneDirectory& directory, const Json& request, const std::string& did)
{
    return tellAnswer(directory, "SpringBoard", request, [&did](const Json& report) {
        std::string text = did + ".";
        if (!report["opened"].empty() || !report["declined"].empty() || !report["prompts"].empty())
            text += " " + describeLaunch(report, did);
        return text + describeDeviceChanges(report);
    });
}

Action type(Arguments& arguments)
{
    const auto typed = std::make_shared<Word>();
    arguments.add("TEXT", *typed, "what is typed, where something is being edited").required().example("notes");
    return [typed](const phone::PhoneDirectory& directory) {
        return tellKeyboard(directory, { { "verb", "type" }, { "text", typed->text() } }, "Typed " + typed->text());
    };
}

Action key(Arguments& arguments)
{
    const auto name = std::make_shared<std::string>();
    arguments.add("NAME", *name, "the key, or dismiss, which ends the editing")
        .required()
        .oneOf({ "return", "delete", "space", "left", "right", "dismiss" })
        .example("return");
    return [name](const phone::PhoneDirectory& directory) {
        return tellKeyboard(directory, { { "verb", "key" }, { "name", *name } }, "Pressed " + *name);
    };
}

constexpr VerbRow rows[] {
    { "phone touch", "touch what is on the screen", touch, "touch" },
    { "phone press", "keep a finger on what is on the screen", press, "touch" },
    { "phone swipe", "swipe over the screen", swipe, "drag" },
    { "phone drag", "drag over the screen, slowly, and rest before the finger lifts", drag, "drag" },
    { "phone type", "type where something is being edited", type, "type" },
    { "phone key", "press a key of the keyboard", key, "key" },
    { "phone wait", "wait until something can be seen", wait, "wait" },
};

} // namespace

extern const VerbRows fingerVerbs { rows };

} // namespace cli
