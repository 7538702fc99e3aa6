#include "platform/runtime/hook.h"

#include "platform/runtime/class_storage.h"

namespace platform {

void MSHookMessageEx(Class cls, SEL selector, IMP replacement, IMP* original)
{
    if (!cls || !selector || !replacement)
        return;
    ClassWriter writer;
    const IMP present = cls->implementation(selector, selector->hash);
    if (!present)
        return;
    if (original)
        *original = present;
    writer.setMethod(cls, selector, replacement, cls->types(selector));
}

} // namespace platform
