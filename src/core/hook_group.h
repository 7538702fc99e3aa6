#pragma once

#include "platform/runtime/association.h"
#include "platform/runtime/class.h"
#include "platform/runtime/encoding.h"
#include "platform/runtime/hook.h"
#include "platform/runtime/selector.h"

#include <algorithm>
#include <array>
#include <concepts>
#include <span>
#include <string_view>
#include <type_traits>

/// How a hook is declared: one struct, named in its group's table. Its original is its own, and nobody else can
/// call it.
///
///     struct HandleTap : Hook<HandleTap, "SBIconView", "_handleTap", void()> {
///         static void replacement(const id& self, SEL cmd) { … original(self, cmd); }
///     };
///
///     constexpr HookRow rows[] { HandleTap::row(), … }; // in install order
///
///     const HookGroup BlockLaunchHooks { "BlockLaunchHooks", rows };

namespace appledger {

enum class HookKind { ReplaceInstanceMethod, ReplaceClassMethod, AddMethod, AddProperty };

struct HookRow {
    HookKind kind;
    std::string_view className;
    std::string_view selector; ///< for a property its getter, which bears the property's name
    platform::IMP (*implementation)();
    const char* types; ///< the method's type encoding
    platform::IMP* original = nullptr; ///< where the replaced method goes
    std::string_view setter {}; ///< of a property, from here on
    platform::IMP (*setterImplementation)() = nullptr;
    std::string_view propertyType {}; ///< the value of the attribute "T"
};

using HookRows = std::span<const HookRow>;

/// A group of one subject has its rows in its own table. One that several subjects share names their tables,
/// which follow one another.
struct HookGroup {
    std::string_view name;
    HookRows rows {};
    std::span<const HookRows* const> tables {};

    /// Every row, in install order.
    template <class Function> void forEachRow(Function function) const
    {
        for (const HookRow& row : rows)
            function(row);
        for (const HookRows* const table : tables)
            for (const HookRow& row : *table)
                function(row);
    }
};

/// Carries out the rows in order. A class or selector that doesn't exist here leaves its row without
/// effect, and so does a method whose type isn't the one that the replacement was written for (every build
/// but the release build ends the process then, and says which).
void installHookGroup(const HookGroup& group);

/// Whether installing the row would have an effect in this process: the method that it replaces exists, or
/// the class that it adds to does.
bool hookTargetExists(const HookRow& row);

namespace detail {

template <auto Function> platform::IMP implementationOf()
{
    return reinterpret_cast<platform::IMP>(Function);
}

template <class Signature> struct MethodTypes;
template <class R, class... A> struct MethodTypes<R(A...)> {
    using Function = typename platform::Original<R(A...)>::Function;
    static constexpr const char* encoding = platform::methodEncoding<R, A...>;
};

/// Whether the function is one that stands for a method of that signature.
template <auto Function, class Signature>
concept Implements = std::is_same_v<decltype(Function), typename MethodTypes<Signature>::Function>;

/// What Hook and ClassHook share. `Self` is the struct that is derived from it: a row can't be made of another's
/// replacement, nor of one with another signature.
template <HookKind Kind, class Self, platform::Name ClassName, platform::Name Selector, class Signature>
class Replacement {
public:
    // A template, so that it is looked at when the derived struct is complete.
    template <class Derived = Self>
    requires std::derived_from<Derived, Replacement> && Implements<&Derived::replacement, Signature>
    static constexpr HookRow row()
    {
        return { Kind, ClassName.view(), Selector.view(), &implementationOf<&Derived::replacement>,
            MethodTypes<Signature>::encoding, &original.implementation };
    }

protected:
    /// The method that was replaced. Callable as soon as the replacement runs.
    static inline platform::Original<Signature> original;
};

/// "setName:" for "name".
template <platform::Name Property> struct SetterName {
    static constexpr auto text = [] {
        constexpr std::string_view property = Property.view();
        constexpr std::string_view prefix = "set";
        std::array<char, prefix.size() + property.size() + 1> name {};
        std::ranges::copy(property, std::ranges::copy(prefix, name.begin()).out);
        char& initial = name[prefix.size()];
        initial = static_cast<char>(initial >= 'a' && initial <= 'z' ? initial - 'a' + 'A' : initial);
        name.back() = ':';
        return name;
    }();
    static constexpr std::string_view view { text.data(), text.size() };
};

} // namespace detail

/// Replaces an instance method by `Self::replacement`.
template <class Self, platform::Name ClassName, platform::Name Selector, class Signature> using Hook
    = detail::Replacement<HookKind::ReplaceInstanceMethod, Self, ClassName, Selector, Signature>;

/// Replaces a class method: the hook is placed on the metaclass.
template <class Self, platform::Name ClassName, platform::Name Selector, class Signature> using ClassHook
    = detail::Replacement<HookKind::ReplaceClassMethod, Self, ClassName, Selector, Signature>;

/// Adds the instance method `Self::implementation`.
template <class Self, platform::Name ClassName, platform::Name Selector, class Signature> struct AddedMethod {
    template <class Derived = Self>
    requires std::derived_from<Derived, AddedMethod> && detail::Implements<&Derived::implementation, Signature>
    static constexpr HookRow row()
    {
        return { HookKind::AddMethod, ClassName.view(), Selector.view(),
            &detail::implementationOf<&Derived::implementation>, detail::MethodTypes<Signature>::encoding };
    }
};

/// An object-valued property that the library adds to a system class, with its getter and setter: its value is
/// associated with the object under the address of the getter, and retained. `Type` is its attribute "T", `@"UIView"`.
template <platform::Name ClassName, platform::Name Property, platform::Name Type> struct AddedProperty {
    static constexpr HookRow row()
    {
        return { HookKind::AddProperty, ClassName.view(), Property.view(),
            &detail::implementationOf<&AddedProperty::get>, platform::methodEncoding<platform::id>, nullptr,
            detail::SetterName<Property>::view, &detail::implementationOf<&AddedProperty::set>, Type.view() };
    }

    static platform::id get(const platform::id& self, platform::SEL = nullptr)
    {
        return platform::objc_getAssociatedObject(self, key());
    }

    static void set(const platform::id& self, platform::SEL, const platform::id& value)
    {
        platform::objc_setAssociatedObject(self, key(), value, platform::AssociationPolicy::RetainNonatomic);
    }

private:
    static const void* key() noexcept { return reinterpret_cast<const void*>(&AddedProperty::get); }
};

} // namespace appledger
