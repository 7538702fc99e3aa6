#pragma once

#include "platform/runtime/class_definition.h"

#include <span>

/// The classes of one framework: a sorted list of their names gives the declarations of the definitions
/// and the array that a process registers.
///
///     #define CLASSES(X) X(SBAppLayout) X(SBApplication)
///     PHONE_CLASS_LIST(springBoardClasses, CLASSES)

namespace phone {

using ClassList = std::span<const platform::ClassDefinition* const>;

} // namespace phone

#define PHONE_DECLARE_CLASS(name) extern const platform::ClassDefinition name##_class;
#define PHONE_CLASS_ADDRESS(name) &name##_class,
#define PHONE_CLASS_LIST(function, list)                                                                               \
    namespace phone {                                                                                                  \
    list(PHONE_DECLARE_CLASS) ClassList function() noexcept                                                            \
    {                                                                                                                  \
        static constexpr const platform::ClassDefinition* classes[] { list(PHONE_CLASS_ADDRESS) };                     \
        return classes;                                                                                                \
    }                                                                                                                  \
    }
