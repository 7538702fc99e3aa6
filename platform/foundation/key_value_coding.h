#pragma once

#include "platform/runtime/object.h"

#include <string_view>

namespace platform {

/// `valueForKey:`: the answer of the first of `get<Key>`, `<key>`, `is<Key>`, `_<key>` that the object
/// answers without arguments, a scalar boxed as a number; else the instance variable `_<key>`, `_is<Key>`,
/// `<key>` or `is<Key>`; for a dictionary, its entry. Nil for nil. Raises NSUndefinedKeyException when
/// there is none.
id valueForKey(const id& object, std::string_view key);

/// `setValue:forKey:`: `set<Key>:` or `_set<Key>:`, a scalar unboxed from a number; else the instance
/// variable as above; for a mutable dictionary, its entry, which a nil value removes. Nothing for nil. Raises
/// NSUndefinedKeyException when there is none, and NSInvalidArgumentException when a scalar is wanted and the value
/// isn't a number.
void setValueForKey(const id& object, const id& value, std::string_view key);

} // namespace platform
