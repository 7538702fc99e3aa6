#pragma once

#include "platform/runtime/association.h"

namespace platform {

/// The fields that a class adds to a superclass whose C++ class it doesn't know: a plain structure, made when it is
/// first asked for and gone with the object, after its `dealloc`. The object isn't nil.
///
///     struct ToastFields { id titleLabel; };
///     getter<"titleLabel", &ToastFields::titleLabel>()
template <class T> T& fieldsOf(const id& object)
{
    struct Box final : NSObject {
        T fields;
    };
    static const char key = 0;
    id box = objc_getAssociatedObject(object, &key);
    if (!box) {
        box = id::adopt(new Box);
        objc_setAssociatedObject(object, &key, box, AssociationPolicy::Retain);
    }
    return static_cast<Box&>(*box).fields;
}

} // namespace platform
