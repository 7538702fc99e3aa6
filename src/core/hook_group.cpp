#include "core/hook_group.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace appledger {

using namespace platform;

namespace {

Class targetClass(const HookRow& row)
{
    const Class cls = objc_getClass(row.className);
    return row.kind == HookKind::ReplaceClassMethod ? object_getClass(cls) : cls;
}

bool typesMatch(const HookRow& row, Class cls, SEL selector)
{
    const auto present = class_getMethodTypes(cls, selector);
    if (!present || *present == row.types)
        return true;
    if constexpr (PLATFORM_CHECKS_ENCODINGS) {
        std::fprintf(stderr, "%.*s %.*s: the method is \"%s\", its replacement \"%s\"\n",
            static_cast<int>(row.className.size()), row.className.data(), static_cast<int>(row.selector.size()),
            row.selector.data(), present->data(), row.types);
        std::abort();
    }
    return false;
}

void addProperty(const HookRow& row, Class cls)
{
    const objc_property_attribute_t attributes[] { { "T", std::string(row.propertyType) }, { "&", "" }, { "N", "" } };
    class_addProperty(cls, row.selector, attributes);
    class_addMethod(cls, sel_registerName(row.selector), row.implementation(), row.types);
    class_addMethod(cls, sel_registerName(row.setter), row.setterImplementation(), methodEncoding<void, const id&>);
}

void install(const HookRow& row)
{
    const Class cls = targetClass(row);
    const SEL selector = sel_registerName(row.selector);
    switch (row.kind) {
    case HookKind::ReplaceInstanceMethod:
    case HookKind::ReplaceClassMethod:
        if (typesMatch(row, cls, selector))
            MSHookMessageEx(cls, selector, row.implementation(), row.original);
        break;
    case HookKind::AddMethod:
        class_addMethod(cls, selector, row.implementation(), row.types);
        break;
    case HookKind::AddProperty:
        addProperty(row, cls);
        break;
    }
}

} // namespace

void installHookGroup(const HookGroup& group)
{
    group.forEachRow(install);
}

bool hookTargetExists(const HookRow& row)
{
    const Class cls = targetClass(row);
    switch (row.kind) {
    case HookKind::ReplaceInstanceMethod:
    case HookKind::ReplaceClassMethod:
        return class_respondsToSelector(cls, sel_registerName(row.selector));
    case HookKind::AddMethod:
    case HookKind::AddProperty:
        break;
    }
    return cls != nullptr;
}

} // namespace appledger
