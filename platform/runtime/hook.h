#pragma once

#include "platform/runtime/class.h"
#include "platform/runtime/encoding.h"
#include "platform/runtime/object.h"
#include "platform/runtime/selector.h"

namespace platform {

/// Replaces the method with which instances of `cls` answer the selector, and stores the code that it
/// replaces in `*original` before the replacement can run. A method that the class inherits is replaced
/// for this class and its subclasses only. Does nothing, and leaves `*original` alone, for a nil class, a
/// null selector, and a selector that the class doesn't answer.
///
/// Threads that send meanwhile run either the old code or the new. Replacements stack: the last one runs
/// first.
void MSHookMessageEx(Class cls, SEL selector, IMP replacement, IMP* original);

/// The method that a replacement replaced: Original<bool(id)> stands for bool (*)(const id& self, SEL,
/// const id&). Written once by the hook's installation; never called before it.
template <class Signature> class Original;

template <class R, class... A> class Original<R(A...)> {
public:
    using Function = R (*)(const id&, SEL, detail::ArgumentType<A>...);

    R operator()(const id& self, SEL selector, detail::ArgumentType<A>... arguments) const
    {
        return reinterpret_cast<Function>(implementation)(self, selector, arguments...);
    }

    IMP implementation = nullptr;
};

} // namespace platform
