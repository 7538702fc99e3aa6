#pragma once

#include "platform/runtime/object.h"

namespace platform {

/// How an association holds its value. The numbers are the runtime's own.
enum class AssociationPolicy : unsigned {
    Assign = 0, ///< not held: the value must outlive the association
    RetainNonatomic = 1,
    CopyNonatomic = 3, ///< holds what `copy` answers; the value itself when it doesn't answer
    Retain = 01401,
    Copy = 01403,
};

/// The value associated with the object under that key (an address of the caller's), or nil. Any thread.
id objc_getAssociatedObject(const id& object, const void* key);

/// Associates; a nil value ends the association. Nothing for a nil object. Associations go with the
/// object, after its `dealloc`.
void objc_setAssociatedObject(const id& object, const void* key, const id& value, AssociationPolicy policy);

} // namespace platform
