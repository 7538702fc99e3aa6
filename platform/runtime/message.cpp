#include "platform/runtime/message.h"

#include "platform/runtime/exception.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace platform::detail {

void raiseUnrecognizedSelector(const id& receiver, SEL selector)
{
    const bool isClass = receiver->isa()->isMetaclass();
    throw NSException("NSInvalidArgumentException",
        (isClass ? "+[" : "-[") + std::string(class_getName(receiver->isa())) + " " + selector->name
            + "]: unrecognized selector sent to " + (isClass ? "class" : "instance"));
}

void checkEncoding(Class cls, SEL selector, const char* callerTypes)
{
    const char* const types = cls->types(selector);
    if (types == callerTypes || std::strcmp(types, callerTypes) == 0)
        return;
    std::fprintf(stderr, "%c[%.*s %s]: the method is \"%s\", the caller sends \"%s\"\n", cls->isMetaclass() ? '+' : '-',
        static_cast<int>(cls->name().size()), cls->name().data(), selector->name.c_str(), types, callerTypes);
    std::abort();
}

} // namespace platform::detail
