#include "platform/runtime/class.h"

#include "platform/runtime/class_storage.h"

#include <algorithm>
#include <bit>
#include <shared_mutex>
#include <string>
#include <unordered_set>

namespace platform {

namespace {

constexpr std::uint32_t smallestTable = 16;

struct ClassRegistry {
    std::shared_mutex mutex;
    std::unordered_map<std::string_view, Class> classes;
};

ClassRegistry& registry()
{
    // Never destroyed: classes are read until the last thread ends.
    static auto* const shared = new ClassRegistry;
    return *shared;
}

std::recursive_mutex& writersMutex()
{
    static auto* const shared = new std::recursive_mutex;
    return *shared;
}

const char* internedTypes(const char* types)
{
    static auto* const interned = new std::unordered_set<std::string>;
    return interned->insert(types).first->c_str();
}

} // namespace

ClassObject::ClassObject(std::string name, Class superclass, bool isMetaclass)
    : name_(std::move(name))
    , superclass_(superclass)
    , isMetaclass_(isMetaclass)
    , storage_(std::make_unique<ClassStorage>())
{
    makeImmortal();
    storage_->tables.push_back(superclass ? superclass->table_.load(std::memory_order_relaxed)
                                                ->copy(superclass->table_.load(std::memory_order_relaxed)->capacity())
                                          : DispatchTable::make(smallestTable));
    table_.store(storage_->tables.back().get(), std::memory_order_release);
    if (superclass)
        superclass->storage_->subclasses.push_back(this);
}

ClassObject::~ClassObject() = default;

bool ClassObject::isSubclassOf(Class other) const noexcept
{
    for (const ClassObject* cls = this; cls; cls = cls->superclass())
        if (cls == other)
            return true;
    return false;
}

NSObject* ClassObject::allocate()
{
    Class declaring = this;
    while (declaring->superclass_ && !(declaring->storage_->definition && declaring->storage_->definition->allocate))
        declaring = declaring->superclass_;
    NSObject* const object = declaring->storage_->definition->allocate();
    setClass(*object, this);
    return object;
}

ClassWriter::ClassWriter()
    : lock_(writersMutex())
{
}

ClassStorage& ClassWriter::storage(Class cls) const
{
    return *cls->storage_;
}

Class ClassWriter::registerClass(const ClassDefinition& definition, int majorVersion)
{
    const Class present = objc_getClass(definition.name);
    if (present && !definition.isCategory)
        return storage(present).definition == &definition ? present : nullptr;
    if (majorVersion != INT_MAX && !definition.versions.contains(majorVersion))
        return nullptr;
    if (definition.isCategory) {
        if (present)
            addCategory(present, definition, majorVersion);
        return present;
    }
    Class superclass = nullptr;
    if (&definition != &NSObject_class) {
        superclass = !definition.superclass && !definition.superclassName.empty()
            ? objc_getClass(definition.superclassName)
            : registerClass(definition.superclass ? *definition.superclass : NSObject_class, majorVersion);
        if (!superclass)
            return nullptr;
    }
    const Class cls = makeClassPair(definition, superclass);
    setMethods(cls, definition, majorVersion);

    ClassRegistry& classes = registry();
    const std::unique_lock lock(classes.mutex);
    classes.classes.emplace(cls->name(), cls);
    return cls;
}

void ClassWriter::addCategory(Class cls, const ClassDefinition& category, int majorVersion)
{
    // Once: what has been hooked since then stays hooked.
    auto& added = storage(cls).categories;
    if (std::ranges::find(added, &category) != added.end())
        return;
    added.push_back(&category);
    setMethods(cls, category, majorVersion);
}

void ClassWriter::setMethods(Class cls, const ClassDefinition& definition, int majorVersion)
{
    for (const MethodDefinition& method : definition.methods)
        if (majorVersion == INT_MAX || method.versions.contains(majorVersion))
            setMethod(method.kind == MethodKind::ClassMethod ? cls->isa() : cls, sel_registerName(method.selector),
                method.implementation(), method.types);
}

Class ClassWriter::makeClassPair(const ClassDefinition& definition, Class superclass)
{
    // A metaclass inherits from the superclass's metaclass, and the root's metaclass from the root class,
    // so that every class object answers the root class's instance methods.
    const std::string name(definition.name);
    Class cls = nullptr;
    Class metaclass = nullptr;
    if (superclass) {
        metaclass = new ClassObject(name, superclass->isa(), true);
        cls = new ClassObject(name, superclass, false);
    } else {
        cls = new ClassObject(name, nullptr, false);
        metaclass = new ClassObject(name, cls, true);
    }
    setClass(*cls, metaclass);
    setClass(*metaclass, superclass ? superclass->isa()->isa() : metaclass);
    ClassStorage& stored = storage(cls);
    stored.definition = &definition;
    stored.instanceVariables.assign(definition.instanceVariables.begin(), definition.instanceVariables.end());
    return cls;
}

void ClassWriter::setMethod(Class cls, SEL selector, IMP implementation, const char* types)
{
    const ClassStorage::Method method { implementation, types };
    storage(cls).ownMethods.insert_or_assign(selector, method);
    propagate(cls, selector, method);
}

void ClassWriter::propagate(Class cls, SEL selector, const ClassStorage::Method& method)
{
    ClassStorage& stored = storage(cls);
    DispatchTable* const table = stored.tables.back().get();
    if (!table->set(selector, method.implementation, method.types)) {
        std::unique_ptr<DispatchTable> larger = table->copy(2 * table->capacity());
        while (!larger->set(selector, method.implementation, method.types))
            larger = larger->copy(2 * larger->capacity());
        cls->table_.store(larger.get(), std::memory_order_release);
        stored.tables.push_back(std::move(larger));
    }
    for (const Class subclass : stored.subclasses)
        if (!storage(subclass).ownMethods.contains(selector))
            propagate(subclass, selector, method);
}

Class registerClass(const ClassDefinition& definition, int majorVersion)
{
    return ClassWriter().registerClass(definition, majorVersion);
}

Class objc_getClass(std::string_view name) noexcept
{
    ClassRegistry& classes = registry();
    const std::shared_lock lock(classes.mutex);
    const auto found = classes.classes.find(name);
    return found == classes.classes.end() ? nullptr : found->second;
}

std::string_view class_getName(Class cls) noexcept
{
    return cls ? cls->name() : "";
}

bool class_respondsToSelector(Class cls, SEL selector) noexcept
{
    return cls && selector && cls->implementation(selector, selector->hash);
}

std::optional<std::string_view> class_getMethodTypes(Class cls, SEL selector) noexcept
{
    const char* const types = cls && selector ? cls->types(selector) : nullptr;
    return types ? std::optional<std::string_view>(types) : std::nullopt;
}

bool class_addMethod(Class cls, SEL selector, IMP implementation, const char* types)
{
    if (!cls || !selector || !implementation)
        return false;
    ClassWriter writer;
    if (writer.storage(cls).ownMethods.contains(selector))
        return false;
    writer.setMethod(cls, selector, implementation, internedTypes(types ? types : ""));
    return true;
}

bool class_addProperty(Class cls, std::string_view name, std::span<const objc_property_attribute_t> attributes)
{
    if (!cls || name.empty())
        return false;
    const ClassWriter writer;
    std::vector<Property>& properties = writer.storage(cls).properties;
    if (std::ranges::find(properties, name, &Property::name) != properties.end())
        return false;
    properties.push_back({ std::string(name), { attributes.begin(), attributes.end() } });
    return true;
}

std::optional<Property> class_getProperty(Class cls, std::string_view name)
{
    const ClassWriter writer;
    for (; cls; cls = cls->superclass()) {
        const std::vector<Property>& properties = writer.storage(cls).properties;
        if (const auto found = std::ranges::find(properties, name, &Property::name); found != properties.end())
            return *found;
    }
    return std::nullopt;
}

namespace {

const InstanceVariableDefinition* findInstanceVariable(const id& object, std::string_view name)
{
    const ClassWriter writer;
    for (Class cls = object_getClass(object); cls; cls = cls->superclass()) {
        const auto& variables = writer.storage(cls).instanceVariables;
        if (const auto found = std::ranges::find(variables, name, &InstanceVariableDefinition::name);
            found != variables.end())
            return &*found;
    }
    return nullptr;
}

} // namespace

std::optional<id> object_getInstanceVariable(const id& object, std::string_view name)
{
    const InstanceVariableDefinition* const variable = findInstanceVariable(object, name);
    return variable ? std::optional<id>(variable->get(*object)) : std::nullopt;
}

bool object_setInstanceVariable(const id& object, std::string_view name, const id& value)
{
    const InstanceVariableDefinition* const variable = findInstanceVariable(object, name);
    if (variable)
        variable->set(*object, value);
    return variable != nullptr;
}

bool isKindOfClass(const id& object, Class cls) noexcept
{
    return object && cls && object->isa()->isSubclassOf(cls);
}

} // namespace platform
