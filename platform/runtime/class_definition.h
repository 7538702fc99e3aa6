#pragma once

#include "platform/runtime/class.h"
#include "platform/runtime/encoding.h"
#include "platform/runtime/fields.h"
#include "platform/runtime/object.h"

#include <climits>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>

/// How a class is declared: a C++ class with fields, and one table of its selectors.
///
///     class SBIcon final : public NSObject {
///     public:
///         id applicationBundleID;
///         void launch();
///     };
///
///     constexpr MethodDefinition methods[] {
///         getter<"applicationBundleID", &SBIcon::applicationBundleID>(),
///         method<"launch", &SBIcon::launch>(),
///     };
///
///     const ClassDefinition SBIcon_class { .name = "SBIcon", .allocate = allocate<SBIcon>, .methods = methods };
///
/// A definition is constant data; registerClass() makes the class of it.

namespace platform {

/// The versions of the platform on which something exists, by major number, both ends included.
struct VersionRange {
    int first = 0;
    int last = INT_MAX;

    constexpr bool contains(int major) const noexcept { return first <= major && major <= last; }
};

enum class MethodKind { InstanceMethod, ClassMethod };

struct MethodDefinition {
    std::string_view selector;
    IMP (*implementation)();
    const char* types;
    MethodKind kind = MethodKind::InstanceMethod;
    VersionRange versions {};

    constexpr MethodDefinition since(int major) const
    {
        MethodDefinition changed = *this;
        changed.versions.first = major;
        return changed;
    }

    constexpr MethodDefinition until(int major) const
    {
        MethodDefinition changed = *this;
        changed.versions.last = major;
        return changed;
    }
};

struct InstanceVariableDefinition {
    std::string_view name;
    id (*get)(const NSObject& object);
    void (*set)(NSObject& object, const id& value);
};

struct ClassDefinition {
    std::string_view name;
    const ClassDefinition* superclass = nullptr; ///< null: the one named below, or NSObject
    std::string_view superclassName {}; ///< of a class whose definition is another's; it is registered before
    NSObject* (*allocate)() = nullptr; ///< null: as the superclass
    std::span<const MethodDefinition> methods {};
    std::span<const InstanceVariableDefinition> instanceVariables {};
    VersionRange versions {};
    bool isCategory = false; ///< adds its methods to the class of that name, which is another's and registered before
};

/// Makes the class and, before it, its superclasses, with the methods that exist on `majorVersion`.
/// A definition that is registered already is left as it is. Nil when the class or a superclass doesn't
/// exist on that version or yet, or when another definition has taken the name. Of a category: adds the methods, once,
/// in the place of those of the same selectors; the class that has them, or nil when there is none. Any thread.
Class registerClass(const ClassDefinition& definition, int majorVersion = INT_MAX);

template <class T> NSObject* allocate()
{
    return new T;
}

namespace detail {

/// The receiver as the class that declares a field, or the fields that a class has added to it.
template <class C> C& fieldsIn(NSObject& object)
{
    if constexpr (std::is_base_of_v<NSObject, C>)
        return static_cast<C&>(object);
    else
        return fieldsOf<C>(id(&object));
}

template <auto Function> struct MethodAdapter;

/// A free function in the form of a method.
template <class R, class... A, R (*Function)(const id&, SEL, A...)> struct MethodAdapter<Function> {
    static constexpr const char* types = methodEncoding<R, A...>;
    static IMP implementation() { return reinterpret_cast<IMP>(Function); }
};

/// A member function. The receiver is of class C: only C and its subclasses carry the method.
template <class C, class R, class... A, R (C::*Function)(A...)> struct MethodAdapter<Function> {
    static constexpr const char* types = methodEncoding<R, A...>;
    static R call(const id& self, SEL, A... arguments) { return (static_cast<C&>(*self).*Function)(arguments...); }
    static IMP implementation() { return reinterpret_cast<IMP>(&call); }
};

template <class C, class R, class... A, R (C::*Function)(A...) const> struct MethodAdapter<Function> {
    static constexpr const char* types = methodEncoding<R, A...>;
    static R call(const id& self, SEL, A... arguments)
    {
        return (static_cast<const C&>(*self).*Function)(arguments...);
    }
    static IMP implementation() { return reinterpret_cast<IMP>(&call); }
};

template <auto Field> struct FieldAdapter;

template <class C, class T, T C::*Field> struct FieldAdapter<Field> {
    using Parameter = ArgumentType<T>;
    using Result = std::conditional_t<std::is_same_v<Parameter, const id&>, id, Parameter>;

    static Result get(const id& self, SEL) { return static_cast<Result>(fieldsIn<C>(*self).*Field); }
    static void set(const id& self, SEL, Parameter value) { fieldsIn<C>(*self).*Field = static_cast<T>(value); }
    static IMP getter() { return reinterpret_cast<IMP>(&get); }
    static IMP setter() { return reinterpret_cast<IMP>(&set); }
    static id getObject(const NSObject& object) { return fieldsIn<C>(const_cast<NSObject&>(object)).*Field; }
    static void setObject(NSObject& object, const id& value) { fieldsIn<C>(object).*Field = value; }
};

} // namespace detail

/// The row of an instance method: a member function, or a function in the form of a method.
template <Name Selector, auto Function> constexpr MethodDefinition method()
{
    using Adapter = detail::MethodAdapter<Function>;
    return { Selector.view(), &Adapter::implementation, Adapter::types };
}

/// The row of a class method: a function in the form of a method.
template <Name Selector, auto Function> constexpr MethodDefinition classMethod()
{
    MethodDefinition row = method<Selector, Function>();
    row.kind = MethodKind::ClassMethod;
    return row;
}

/// Rows that read and write a field. The field's class must be the one that the table belongs to or a
/// base of it, or a structure of fields that the class adds to its superclass (fields.h).
template <Name Selector, auto Field> constexpr MethodDefinition getter()
{
    using Adapter = detail::FieldAdapter<Field>;
    return { Selector.view(), &Adapter::getter, methodEncoding<typename Adapter::Result> };
}

template <Name Selector, auto Field> constexpr MethodDefinition setter()
{
    using Adapter = detail::FieldAdapter<Field>;
    return { Selector.view(), &Adapter::setter, methodEncoding<void, typename Adapter::Parameter> };
}

/// The row of an instance variable: a field of type id.
template <Name Variable, auto Field> constexpr InstanceVariableDefinition instanceVariable()
{
    using Adapter = detail::FieldAdapter<Field>;
    return { Variable.view(), &Adapter::getObject, &Adapter::setObject };
}

/// A new object of a C++ class that names its definition itself (`static const ClassDefinition
/// definition`), as the values of the platform do; its class is registered at the first request.
template <class T, class... A> Ref<T> make(A&&... arguments)
{
    static const Class isa = registerClass(T::definition);
    auto* const object = new T(std::forward<A>(arguments)...);
    setClass(*object, isa);
    return Ref<T>::adopt(object);
}

extern const ClassDefinition NSObject_class;

} // namespace platform
