#include "phone/control/answers.h"
#include "phone/control/device.h"
#include "phone/control/request_rows.h"
#include "phone/control/screen_search.h"
#include "phone/springboard/roads.h"
#include "platform/dispatch/run_loop.h"
#include "platform/screen/framework.h"

#include <algorithm>
#include <chrono>
#include <cmath>

/// One finger on the screen, in the screen's own time: what it does comes in at the application, from the top, with the
/// phases and the samples that a finger has.

namespace phone {

using namespace platform;
using namespace std::chrono_literals;

namespace {

/// A screen looks for fingers so often.
constexpr std::chrono::microseconds sample { 16667 };

void letPass(std::chrono::duration<double> time)
{
    const auto end = std::chrono::steady_clock::now() + time;
    while (true) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        if (left <= 0ms)
            return;
        runUntil([] { return false; }, left);
    }
}

/// From there to there at that many points a second, in equal steps.
void moveFinger(CGPoint from, CGPoint to, double speed)
{
    const double distance = std::hypot(to.x - from.x, to.y - from.y);
    const double seconds = std::chrono::duration<double>(sample).count();
    const int steps = std::max(1, static_cast<int>(std::lround(distance / (speed * seconds))));
    for (int step = 1; step <= steps; ++step) {
        letPass(sample);
        const double part = static_cast<double>(step) / steps;
        touchScreenAt({ from.x + (to.x - from.x) * part, from.y + (to.y - from.y) * part }, TouchKind::Moved);
    }
}

Json pointJson(CGPoint point)
{
    return Json::array({ point.x, point.y });
}

/// What the finger has brought about.
Json fingerReport(CGPoint from, CGPoint to, Json touched)
{
    settle();
    Json report = launchReport(takeJournal());
    report["from"] = pointJson(from);
    report["to"] = pointJson(to);
    report["touched"] = std::move(touched);
    report["front"] = frontmostApplication();
    report["device"] = deviceState();
    return report;
}

double numberIn(const Json& request, std::string_view key, double usual, double most)
{
    const auto found = request.find(key);
    return found != request.end() && found->is_number() ? std::clamp(found->get<double>(), 0.0, most) : usual;
}

constexpr double longestTouch = 60; ///< seconds

/// "touch": the finger comes down on "from", stays for "seconds" (0), and lifts.
Json touch(const Json& request)
{
    const auto place = placeOnScreen(request.value("from", Json()));
    if (!place.point)
        return failure(place.error);
    const CGPoint point = *place.point;
    Json touched = elementAt(point);
    touchScreenAt(point, TouchKind::Began);
    letPass(std::chrono::duration<double>(numberIn(request, "seconds", 0, longestTouch)));
    touchScreenAt(point, TouchKind::Ended);
    return fingerReport(point, point, std::move(touched));
}

struct Direction {
    std::string_view name;
    CGPoint step;
};

constexpr Direction directions[] { { "up", { 0, -1 } }, { "down", { 0, 1 } }, { "left", { -1, 0 } },
    { "right", { 1, 0 } } };

/// "drag": from "from" to "to", which may be a direction: 200 points that way. "speed" in points a second (1000);
/// "hold": for so many seconds it rests at the end before it lifts.
Json drag(const Json& request)
{
    const auto from = placeOnScreen(request.value("from", Json()));
    if (!from.point)
        return failure(from.error);
    const std::string towards = text(request, "to");
    constexpr double length = 200;
    CGPoint end {};
    if (const auto known = std::ranges::find(directions, towards, &Direction::name); known != std::end(directions)) {
        end = { from.point->x + known->step.x * length, from.point->y + known->step.y * length };
    } else {
        const auto to = placeOnScreen(request.value("to", Json()));
        if (!to.point)
            return failure(to.error);
        end = *to.point;
    }
    constexpr double usualSpeed = 1000;
    constexpr double most = 100'000;
    Json touched = elementAt(*from.point);
    touchScreenAt(*from.point, TouchKind::Began);
    moveFinger(*from.point, end, std::max(1.0, numberIn(request, "speed", usualSpeed, most)));
    if (const double seconds = numberIn(request, "hold", 0, longestTouch); seconds > 0)
        letPass(std::chrono::duration<double>(seconds));
    touchScreenAt(end, TouchKind::Ended);
    return fingerReport(*from.point, end, std::move(touched));
}

/// "wait": until "for", a view or a text, can be seen, or with "gone" can't, for "within" seconds (5) at most.
Json waitForView(const Json& request)
{
    const std::string wanted = text(request, "for");
    const bool isGone = request.value("gone", false);
    const auto limit = std::chrono::duration<double>(numberIn(request, "within", 5, longestTouch));
    const auto start = std::chrono::steady_clock::now();
    const auto isSo = [&] { return isSeen(wanted) != isGone; };
    bool holds = isSo();
    while (!holds && std::chrono::steady_clock::now() - start < limit) {
        letPass(sample);
        holds = isSo();
    }
    if (!holds)
        return failure(isGone ? wanted + " is still there" : wanted + " didn't come");
    const auto waited = std::chrono::steady_clock::now() - start;
    return { { "ok", true },
        { "milliseconds", std::chrono::duration_cast<std::chrono::milliseconds>(waited).count() } };
}

constexpr std::string_view nothingEdited = "nothing on the screen is being edited";

/// What the keyboard has brought about.
Json keyboardReport(const std::string& entered)
{
    settle();
    Json report = launchReport(takeJournal());
    report["entered"] = entered;
    report["front"] = frontmostApplication();
    report["device"] = deviceState();
    return report;
}

/// "type": enters "text" at the keyboard.
Json type(const Json& request)
{
    const std::string typed = text(request, "text");
    if (!typeOnKeyboard(typed))
        return failure(nothingEdited);
    return keyboardReport(typed);
}

/// "key": presses the key "name".
Json key(const Json& request)
{
    const std::string name = text(request, "name");
    if (!pressKey(name))
        return failure(nothingEdited);
    return keyboardReport(name);
}

constexpr RequestRow rows[] {
    { "touch", touch },
    { "drag", drag },
    { "type", type },
    { "key", key },
    { "wait", waitForView },
};

} // namespace

extern const RequestRows fingerRequests { rows };

} // namespace phone
