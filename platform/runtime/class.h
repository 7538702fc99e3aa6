#pragma once

#include "platform/runtime/dispatch_table.h"
#include "platform/runtime/object.h"

#include <atomic>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

struct ClassDefinition;
struct ClassStorage;

/// One attribute of a property: a one-letter name ("T", "&", "N") and its value.
struct objc_property_attribute_t {
    std::string name;
    std::string value;
};

struct Property {
    std::string name;
    std::vector<objc_property_attribute_t> attributes;
};

/// A class or a metaclass. Made by registerClass() alone and never deleted.
class ClassObject final : public NSObject {
public:
    ~ClassObject() override;

    /// The code that answers the selector for instances of this class; null when none does. No lock.
    IMP implementation(SEL selector, std::uint32_t hash) const noexcept
    {
        return table_.load(std::memory_order_acquire)->implementation(selector, hash);
    }

    const char* types(SEL selector) const noexcept { return table_.load(std::memory_order_acquire)->types(selector); }

    std::string_view name() const noexcept { return name_; }
    Class superclass() const noexcept { return superclass_; }
    bool isMetaclass() const noexcept { return isMetaclass_; }
    bool isSubclassOf(Class other) const noexcept;

    /// A new instance, made as the class or the nearest superclass that says how declares it. It starts
    /// with one reference, which the caller owns.
    NSObject* allocate();

private:
    friend class ClassWriter;
    friend struct ClassStorage;

    ClassObject(std::string name, Class superclass, bool isMetaclass);

    std::atomic<DispatchTable*> table_;
    const std::string name_;
    const Class superclass_;
    const bool isMetaclass_;
    const std::unique_ptr<ClassStorage> storage_;
};

/// The class registered under that name, or nil. Any thread.
Class objc_getClass(std::string_view name) noexcept;
inline Class NSClassFromString(std::string_view name) noexcept
{
    return objc_getClass(name);
}

/// The class of an object, the metaclass of a class, nil for nil.
inline Class object_getClass(const id& object) noexcept
{
    return object ? object->isa() : nullptr;
}

/// "" for nil.
std::string_view class_getName(Class cls) noexcept;

bool class_respondsToSelector(Class cls, SEL selector) noexcept;

/// The type encoding of the method that instances of `cls` answer with; empty when there is none.
std::optional<std::string_view> class_getMethodTypes(Class cls, SEL selector) noexcept;

/// Adds a method that the class doesn't define itself (one that it inherits is overridden). False, and
/// nothing done, when it does, and for a nil class, a null selector or a null implementation. `types` is
/// copied.
bool class_addMethod(Class cls, SEL selector, IMP implementation, const char* types);

/// Declares a property. False, and nothing done, when the class has one of that name itself, and for a
/// nil class or an empty name. The accessors are methods of their own.
bool class_addProperty(Class cls, std::string_view name, std::span<const objc_property_attribute_t> attributes);

/// The property of that name of the class or of its superclasses.
std::optional<Property> class_getProperty(Class cls, std::string_view name);

/// Reads or writes an object-valued instance variable. Empty or false when the object is nil or has no
/// variable of that name.
std::optional<id> object_getInstanceVariable(const id& object, std::string_view name);
bool object_setInstanceVariable(const id& object, std::string_view name, const id& value);

bool isKindOfClass(const id& object, Class cls) noexcept;

/// The class of that name, looked up once it exists; nil until then.
template <Name N> Class classNamed() noexcept
{
    static constinit std::atomic<Class> found { nullptr };
    Class cls = found.load(std::memory_order_acquire);
    if (!cls) [[unlikely]] {
        cls = objc_getClass(N.view());
        found.store(cls, std::memory_order_release);
    }
    return cls;
}

} // namespace platform
