#pragma once

#include "platform/dispatch/clock.h"
#include "platform/dispatch/run_loop.h"
#include "platform/foundation/classes.h"
#include "platform/foundation/index_set.h"
#include "platform/foundation/notification_center.h"
#include "platform/foundation/values.h"
#include "platform/handles/UITextField.h"
#include "platform/handles/UIWindow.h"
#include "platform/runtime/class_definition.h"
#include "support/view_test.h"

/// A field on a screen, with a delegate that writes down what it hears.

namespace support::text_fields {

using namespace platform;
using namespace std::chrono_literals;

inline std::string journal;

inline std::string told()
{
    return std::exchange(journal, {});
}

inline void note(const std::string& line)
{
    journal += (journal.empty() ? "" : ", ") + line;
}

inline std::string textOf(const id& text)
{
    const auto value = asString(text);
    return value ? value->text() : "nil";
}

/// A delegate that writes down what it is asked and told, and refuses what it is told to refuse.
struct Delegate : NSObject {
    static const ClassDefinition definition;
    std::string refused {};

    bool ask(const std::string& question)
    {
        note(question);
        return question.substr(0, question.find(' ')) != refused;
    }
    bool shouldBegin(const id&) { return ask("begin?"); }
    bool shouldEnd(const id&) { return ask("end?"); }
    bool shouldClear(const id&) { return ask("clear?"); }
    bool shouldReturn(const id&) { return ask("return?"); }
    bool shouldChange(const id&, NSRange range, const id& replacement)
    {
        return ask("change? " + std::to_string(range.location) + "+" + std::to_string(range.length) + " '"
            + textOf(replacement) + "'");
    }
    void didBegin(const id&) { note("begun"); }
    void didEnd(const id&) { note("ended"); }
    void action(const id& field) { note("changed '" + textOf(send<"text">(field)) + "'"); }
    void began(const id&) { note("begin event"); }
    void endedEvent(const id&) { note("end event"); }
    void exited(const id&) { note("exit event"); }
    void keyboard(const id& notification)
    {
        const std::string name = textOf(send<"name">(notification));
        constexpr std::size_t prefix = std::string_view("UIKeyboard").size();
        constexpr std::size_t suffix = std::string_view("Notification").size();
        note(name.substr(prefix, name.size() - prefix - suffix));
        lastInfo = send<"userInfo">(notification);
    }
    id lastInfo {};
};

inline constexpr MethodDefinition delegateMethods[] {
    method<"began:", &Delegate::began>(),
    method<"changed:", &Delegate::action>(),
    method<"ended:", &Delegate::endedEvent>(),
    method<"exited:", &Delegate::exited>(),
    method<"keyboard:", &Delegate::keyboard>(),
    method<"textField:shouldChangeCharactersInRange:replacementString:", &Delegate::shouldChange>(),
    method<"textFieldDidBeginEditing:", &Delegate::didBegin>(),
    method<"textFieldDidEndEditing:", &Delegate::didEnd>(),
    method<"textFieldShouldBeginEditing:", &Delegate::shouldBegin>(),
    method<"textFieldShouldClear:", &Delegate::shouldClear>(),
    method<"textFieldShouldEndEditing:", &Delegate::shouldEnd>(),
    method<"textFieldShouldReturn:", &Delegate::shouldReturn>(),
};
inline const ClassDefinition Delegate::definition {
    .name = "FieldDelegate", .allocate = allocate<Delegate>, .methods = delegateMethods
};

class TextField : public ViewTest {
protected:
    TextField()
    {
        for (const ClassDefinition* definition : foundationClasses())
            registerClass(*definition);
        setScreen({ 390, 844 }, 2);
        window.setFrame(CGRectMake(0, 0, 390, 844));
        window.setHidden(false);
        field.setDelegate(delegate);
        window.addSubview(field);
        journal.clear();
    }

    void listenToEvents()
    {
        using enum UIControlEvents;
        field.addTarget(delegate, sel_registerName("began:"), EditingDidBegin);
        field.addTarget(delegate, sel_registerName("changed:"), EditingChanged);
        field.addTarget(delegate, sel_registerName("ended:"), EditingDidEnd);
    }

    void listenToKeyboard()
    {
        const id center = send<"defaultCenter">(id(classNamed<"NSNotificationCenter">()));
        for (const char* const name :
            { "WillShow", "DidShow", "WillHide", "DidHide", "WillChangeFrame", "DidChangeFrame" })
            send<"addObserver:selector:name:object:", void>(center, delegate, sel_registerName("keyboard:"),
                string("UIKeyboard" + std::string(name) + "Notification"), nil);
    }

    static void settle()
    {
        advanceClock(1s);
        runUntilIdle();
    }

    static void tap(CGPoint point)
    {
        advanceClock(1s);
        touchScreenAt(point, TouchKind::Began);
        touchScreenAt(point, TouchKind::Ended);
        runUntilIdle();
    }

    /// The middle of the view of that label; {0, 0} for none.
    static CGPoint middleOf(const id& elements, std::string_view label)
    {
        for (const id& element : itemsOf(elements)) {
            const auto pairs = pairsOf(element);
            if (const auto own = asString(pairs["label"]); own && *own == label) {
                const auto frame = itemsOf(pairs["frame"]);
                return { asDouble(frame[0]).value() + asDouble(frame[2]).value() / 2,
                    asDouble(frame[1]).value() + asDouble(frame[3]).value() / 2 };
            }
            if (const CGPoint inside = middleOf(pairs["children"], label); inside.y > 0)
                return inside;
        }
        return {};
    }
    static void tapKey(std::string_view label) { tap(middleOf(elementsOfScreen(), label)); }
    static bool isKeyThere(std::string_view label) { return middleOf(elementsOfScreen(), label).y > 0; }

    std::string text() const { return textOf(field.text()); }
    static UIWindow keyboardWindow()
    {
        const id windows = send<"windows">(send<"sharedApplication">(id(classNamed<"UIApplication">())));
        for (const id& window : itemsOf(windows))
            if (class_getName(window->isa()) == "UIRemoteKeyboardWindow")
                return UIWindow(window);
        return UIWindow();
    }

    UIWindow window = UIWindow::create();
    UITextField field = UITextField::withFrame(CGRectMake(20, 100, 350, 34));
    Ref<Delegate> delegate = make<Delegate>();
};

} // namespace support::text_fields
