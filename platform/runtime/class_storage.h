#pragma once

#include "platform/runtime/class.h"
#include "platform/runtime/class_definition.h"

#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

namespace platform {

/// The writers' side of a class, guarded by ClassWriter's lock.
struct ClassStorage {
    struct Method {
        IMP implementation;
        const char* types;
    };

    std::unordered_map<SEL, Method> ownMethods;
    std::vector<Class> subclasses; ///< direct ones; the root class counts its metaclass among them
    std::vector<Property> properties;
    std::vector<InstanceVariableDefinition> instanceVariables;
    std::vector<std::unique_ptr<DispatchTable>> tables; ///< the last one is in use
    const ClassDefinition* definition = nullptr;
    std::vector<const ClassDefinition*> categories;
};

/// The one way to change a class. Holds the runtime's lock while it lives; readers don't take it.
class ClassWriter {
public:
    ClassWriter();

    Class registerClass(const ClassDefinition& definition, int majorVersion);

    /// Defines the method on the class itself, and with that for the subclasses that inherit it.
    void setMethod(Class cls, SEL selector, IMP implementation, const char* types);

    ClassStorage& storage(Class cls) const;

private:
    void addCategory(Class cls, const ClassDefinition& category, int majorVersion);
    void setMethods(Class cls, const ClassDefinition& definition, int majorVersion);
    Class makeClassPair(const ClassDefinition& definition, Class superclass);
    void propagate(Class cls, SEL selector, const ClassStorage::Method& method);

    std::unique_lock<std::recursive_mutex> lock_;
};

} // namespace platform
