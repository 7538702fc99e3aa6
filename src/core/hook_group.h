#pragma once

#include "platform/runtime/association.h"
#include "platform/runtime/class.h"
#include "platform/runtime/encoding.h"
#include "platform/runtime/hook.h"
#include "platform/runtime/selector.h"

#include <span>
#include <string_view>
#include <type_traits>

/// How a hook is declared: the typed original, the body, and one row in its group's table.
///
///     Original<void()> original_handleTap;
///
///     void SBIconView_handleTap(const id& self, SEL cmd) { … original_handleTap(self, cmd); }
///
///     constexpr HookRow rows[] {
///         replace<&SBIconView_handleTap>("SBIconView", "_handleTap", original_handleTap),
///     };
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

template <auto Function> struct HookSignature;
template <class R, class... A, R (*Function)(const platform::id&, platform::SEL, A...)> struct HookSignature<Function> {
    static constexpr const char* types = platform::methodEncoding<R, A...>;
    template <class O> static constexpr bool matches = std::is_same_v<typename O::Function, decltype(Function)>;
};

} // namespace detail

/// Replaces an instance method.
template <auto Function, class R, class... A>
constexpr HookRow replace(std::string_view className, std::string_view selector, platform::Original<R(A...)>& original)
{
    static_assert(detail::HookSignature<Function>::template matches<platform::Original<R(A...)>>,
        "the replacement and its original have different signatures");
    return { HookKind::ReplaceInstanceMethod, className, selector, &detail::implementationOf<Function>,
        detail::HookSignature<Function>::types, &original.implementation };
}

/// Replaces a class method: the hook is placed on the metaclass.
template <auto Function, class R, class... A> constexpr HookRow replaceClassMethod(
    std::string_view className, std::string_view selector, platform::Original<R(A...)>& original)
{
    HookRow row = replace<Function>(className, selector, original);
    row.kind = HookKind::ReplaceClassMethod;
    return row;
}

/// Replaces an instance method whose former code nobody calls.
template <auto Function> constexpr HookRow replaceWhole(std::string_view className, std::string_view selector)
{
    return { HookKind::ReplaceInstanceMethod, className, selector, &detail::implementationOf<Function>,
        detail::HookSignature<Function>::types };
}

/// Adds an instance method.
template <auto Function> constexpr HookRow add(std::string_view className, std::string_view selector)
{
    return { HookKind::AddMethod, className, selector, &detail::implementationOf<Function>,
        detail::HookSignature<Function>::types };
}

/// An object-valued property that the library adds to a system class: its value is associated with the
/// object under the address of the getter, and retained.
template <platform::Name Property> struct AddedProperty {
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

/// Adds a property with its getter and setter. `typeAttribute` names its class: "@\"UIView\"".
template <platform::Name Property>
constexpr HookRow addProperty(std::string_view className, std::string_view setter, std::string_view typeAttribute)
{
    return { HookKind::AddProperty, className, Property.view(),
        &detail::implementationOf<&AddedProperty<Property>::get>, platform::methodEncoding<platform::id>, nullptr,
        setter, &detail::implementationOf<&AddedProperty<Property>::set>, typeAttribute };
}

} // namespace appledger
