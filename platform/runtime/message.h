#pragma once

#include "platform/runtime/class.h"
#include "platform/runtime/encoding.h"
#include "platform/runtime/object.h"
#include "platform/runtime/selector.h"

#include <optional>
#include <type_traits>

namespace platform {

#ifndef PLATFORM_CHECKS_ENCODINGS
#error "PLATFORM_CHECKS_ENCODINGS must be 0 (release) or 1"
#endif

namespace detail {

/// Raises NSInvalidArgumentException.
[[noreturn]] void raiseUnrecognizedSelector(const id& receiver, SEL selector);

/// Ends the process with class, selector and both signatures on standard error when they differ.
void checkEncoding(Class cls, SEL selector, const char* callerTypes);

template <class R, class... A> R invoke(IMP implementation, const id& receiver, SEL selector, const A&... arguments)
{
    using Function = R (*)(const id&, SEL, ArgumentType<A>...);
    return reinterpret_cast<Function>(implementation)(receiver, selector, static_cast<ArgumentType<A>>(arguments)...);
}

template <Name S> constexpr std::uint32_t hashOf = selectorHash(S.view());

} // namespace detail

/// One message. A nil receiver answers nil, zero or false. A receiver that doesn't answer the selector
/// raises NSInvalidArgumentException.
///
/// `R` and the arguments' types must be those of the method, to the letter of the encoding: pass an
/// NSUInteger where one is taken, not an int. Every build but the release build checks that.
template <Name S, class R = id, class... A> R send(const id& receiver, const A&... arguments)
{
    if (!receiver)
        return R();
    const SEL name = selector<S>();
    const Class cls = receiver->isa();
    const IMP implementation = cls->implementation(name, detail::hashOf<S>);
    if (!implementation) [[unlikely]]
        detail::raiseUnrecognizedSelector(receiver, name);
    if constexpr (PLATFORM_CHECKS_ENCODINGS)
        detail::checkEncoding(cls, name, methodEncoding<R, detail::ArgumentType<A>...>);
    return detail::invoke<R>(implementation, receiver, name, arguments...);
}

/// The answer to a probe: an optional result; for a method that returns nothing, whether it was called.
template <class R> using Answer = std::conditional_t<std::is_void_v<R>, bool, std::optional<R>>;

/// The probe, `respondsToSelector:` and the call in one. Empty (false) when the receiver is nil or does
/// not answer.
template <Name S, class R = id, class... A> Answer<R> ask(const id& receiver, const A&... arguments)
{
    if (!receiver)
        return {};
    const SEL name = selector<S>();
    const Class cls = receiver->isa();
    const IMP implementation = cls->implementation(name, detail::hashOf<S>);
    if (!implementation)
        return {};
    if constexpr (PLATFORM_CHECKS_ENCODINGS)
        detail::checkEncoding(cls, name, methodEncoding<R, detail::ArgumentType<A>...>);
    if constexpr (std::is_void_v<R>) {
        detail::invoke<R>(implementation, receiver, name, arguments...);
        return true;
    } else {
        return detail::invoke<R>(implementation, receiver, name, arguments...);
    }
}

/// ask() for a link of a chain: nil when there is no answer.
template <Name S, class... A> id askObject(const id& receiver, const A&... arguments)
{
    return ask<S>(receiver, arguments...).value_or(nil);
}

/// send() with a selector that is known only when the program runs.
template <class R = id, class... A> R sendSelector(const id& receiver, SEL name, const A&... arguments)
{
    if (!receiver || !name)
        return R();
    const Class cls = receiver->isa();
    const IMP implementation = cls->implementation(name, name->hash);
    if (!implementation) [[unlikely]]
        detail::raiseUnrecognizedSelector(receiver, name);
    if constexpr (PLATFORM_CHECKS_ENCODINGS)
        detail::checkEncoding(cls, name, methodEncoding<R, detail::ArgumentType<A>...>);
    return detail::invoke<R>(implementation, receiver, name, arguments...);
}

/// One message, answered as instances of `superclass` answer it: how an overriding method calls the one that it
/// overrides. Nothing, and nil, zero or false, for a nil receiver and for a superclass without the method.
template <Name S, class R = id, class... A> R sendSuper(Class superclass, const id& receiver, const A&... arguments)
{
    const SEL name = selector<S>();
    const IMP implementation = receiver && superclass ? superclass->implementation(name, detail::hashOf<S>) : nullptr;
    if (!implementation)
        return R();
    if constexpr (PLATFORM_CHECKS_ENCODINGS)
        detail::checkEncoding(superclass, name, methodEncoding<R, detail::ArgumentType<A>...>);
    return detail::invoke<R>(implementation, receiver, name, arguments...);
}

template <Name S> bool respondsTo(const id& receiver) noexcept
{
    return receiver && receiver->isa()->implementation(selector<S>(), detail::hashOf<S>);
}

inline bool respondsToSelector(const id& receiver, SEL name) noexcept
{
    return receiver && class_respondsToSelector(receiver->isa(), name);
}

} // namespace platform
