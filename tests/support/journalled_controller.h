#pragma once

#include "platform/dispatch/clock.h"
#include "platform/dispatch/run_loop.h"
#include "platform/foundation/values.h"
#include "platform/graphics/geometry.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

#include <chrono>
#include <cmath>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

namespace support {

/// What controllers of the class JournalledController have heard, as "TITLE MESSAGE FLAGS", in its order.
inline std::string& controllerJournal()
{
    static std::string journal;
    return journal;
}

inline void note(const std::string& line)
{
    controllerJournal() += (controllerJournal().empty() ? "" : ", ") + line;
}

inline std::string takeJournal()
{
    return std::exchange(controllerJournal(), {});
}

/// What has been heard since the last time, once all has come to rest, without the layouts.
inline std::string settled()
{
    platform::advanceClock(std::chrono::seconds(2));
    platform::runUntilIdle();
    std::string text;
    std::string line;
    std::istringstream journal(takeJournal() + ", ");
    while (std::getline(journal, line, ','))
        if (line.find("ayout") == std::string::npos && line.find("safeArea") == std::string::npos && line != " ")
            text += (text.empty() ? "" : ",") + line;
    return text.starts_with(' ') ? text.substr(1) : text;
}

inline std::string titleOf(const platform::id& controller)
{
    const auto title = platform::asString(platform::askObject<"title">(controller));
    return title ? title->text() : "nil";
}

namespace journalled {

using namespace platform;

inline Class base()
{
    return classNamed<"UIViewController">();
}

inline std::string flags(const id& self, bool animated)
{
    std::string text = animated ? " animated" : "";
    text += send<"isBeingPresented", bool>(self) ? " presented" : "";
    text += send<"isBeingDismissed", bool>(self) ? " dismissed" : "";
    text += send<"isMovingToParentViewController", bool>(self) ? " moving" : "";
    text += send<"isMovingFromParentViewController", bool>(self) ? " leaving" : "";
    return text;
}

template <Name S> constexpr std::string_view word()
{
    const std::string_view name = S.view();
    return name.ends_with(':') ? name.substr(0, name.size() - 1) : name;
}

template <Name S> void appearance(const id& self, SEL, bool animated)
{
    sendSuper<S, void>(base(), self, animated);
    note(titleOf(self) + " " + std::string(word<S>()) + flags(self, animated));
}

template <Name S, Name Word> void plain(const id& self, SEL)
{
    note(titleOf(self) + " " + std::string(Word.view()));
    sendSuper<S, void>(base(), self);
}

template <Name S, Name Word> void parent(const id& self, SEL, const id& parent)
{
    note(titleOf(self) + " " + std::string(Word.view()) + " " + titleOf(parent));
    sendSuper<S, void>(base(), self, parent);
}

inline void transition(const id& self, SEL, CGSize size, const id& coordinator)
{
    note(titleOf(self) + " size " + std::to_string(std::lround(size.width)) + "x"
        + std::to_string(std::lround(size.height)));
    sendSuper<"viewWillTransitionToSize:withTransitionCoordinator:", void>(base(), self, size, coordinator);
}

inline void traits(const id& self, SEL, const id& former)
{
    note(titleOf(self) + " traits" + (former ? " from " : "")
        + (former ? std::to_string(send<"userInterfaceStyle", NSInteger>(former)) : ""));
}

inline constexpr MethodDefinition methods[] {
    method<"didMoveToParentViewController:", &parent<"didMoveToParentViewController:", "didMove">>(),
    method<"loadView", &plain<"loadView", "loadView">>(),
    method<"traitCollectionDidChange:", &traits>(),
    method<"viewDidAppear:", &appearance<"viewDidAppear:">>(),
    method<"viewDidDisappear:", &appearance<"viewDidDisappear:">>(),
    method<"viewDidLayoutSubviews", &plain<"viewDidLayoutSubviews", "didLayout">>(),
    method<"viewDidLoad", &plain<"viewDidLoad", "viewDidLoad">>(),
    method<"viewSafeAreaInsetsDidChange", &plain<"viewSafeAreaInsetsDidChange", "safeArea">>(),
    method<"viewWillAppear:", &appearance<"viewWillAppear:">>(),
    method<"viewWillDisappear:", &appearance<"viewWillDisappear:">>(),
    method<"viewWillLayoutSubviews", &plain<"viewWillLayoutSubviews", "willLayout">>(),
    method<"viewWillTransitionToSize:withTransitionCoordinator:", &transition>(),
    method<"willMoveToParentViewController:", &parent<"willMoveToParentViewController:", "willMove">>(),
};

} // namespace journalled

inline const platform::ClassDefinition JournalledController_class {
    .name = "JournalledController", .superclassName = "UIViewController", .methods = journalled::methods
};

} // namespace support
