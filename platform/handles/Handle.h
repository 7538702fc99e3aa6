#pragma once

#include "platform/runtime/message.h"

#include <utility>

namespace platform {

/// A reference to an object of a class that public headers declare, with that class's methods: nothing but the
/// reference, and one message a method. The compiler checks what the headers promise; who answers is found at each
/// call, as for any other message, and a nil handle answers nil, zero or false.
///
///     const auto dot = UIView::withFrame(CGRectMake(0, 0, 4, 4));
///     dot.layer().setCornerRadius(2);
///     asView(iconView).addSubview(dot);
///
/// A handle goes wherever an id goes. An id becomes a handle by `to`, which asks for the class, or by the constructor
/// where it is known.
class Handle {
public:
    Handle() noexcept = default;
    Handle(std::nullptr_t) noexcept { }
    explicit Handle(id object) noexcept
        : object_(std::move(object))
    {
    }

    operator const id&() const noexcept { return object_; }
    const id& object() const noexcept { return object_; }
    explicit operator bool() const noexcept { return static_cast<bool>(object_); }
    friend bool operator==(const Handle& left, const Handle& right) noexcept { return left.object_ == right.object_; }

protected:
    /// R is a handle, or what send() may give.
    template <Name S, class R = void, class... A> R call(const A&... arguments) const
    {
        return callOn<S, R>(object_, arguments...);
    }

    template <Name S, class R = void, class... A> static R callOn(const id& receiver, const A&... arguments)
    {
        if constexpr (std::is_base_of_v<Handle, R>)
            return R(send<S>(receiver, arguments...));
        else
            return send<S, R>(receiver, arguments...);
    }

    /// A new object of the handle's class.
    template <class H> static H created() { return H(send<"new">(id(H::classObject()))); }
    /// Of an initialiser's name.
    template <class H, Name S, class... A> static H initialised(const A&... arguments)
    {
        return H(send<S>(send<"alloc">(id(H::classObject())), arguments...));
    }

private:
    id object_ {};
};

/// The object as that kind of handle; a nil one for nil and for an object of another class.
template <class H> H to(const id& object)
{
    return isKindOfClass(object, H::classObject()) ? H(object) : H();
}

} // namespace platform
