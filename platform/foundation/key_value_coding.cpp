#include "platform/foundation/key_value_coding.h"

#include "platform/foundation/values.h"
#include "platform/runtime/exception.h"
#include "platform/runtime/message.h"

#include <optional>
#include <string>

namespace platform {

namespace {

using namespace std::string_literals;

std::string capitalized(std::string_view key)
{
    std::string text(key);
    if (!text.empty() && text.front() >= 'a' && text.front() <= 'z')
        text.front() = static_cast<char>(text.front() - 'a' + 'A');
    return text;
}

[[noreturn]] void raiseUndefinedKey(const id& object, std::string_view key)
{
    throw NSException("NSUndefinedKeyException",
        "the class "s + std::string(class_getName(object->isa())) + " has no value for the key " + std::string(key));
}

/// The one type in a method's encoding that varies, or none when the method has another form: what a
/// getter returns ("d@:"), what a setter takes ("v@:d").
std::optional<char> typeBetween(std::string_view types, std::string_view before, std::string_view after)
{
    if (types.size() != before.size() + 1 + after.size() || !types.starts_with(before) || !types.ends_with(after))
        return std::nullopt;
    return types[before.size()];
}

template <class T> id boxedInteger(const id& object, SEL getter)
{
    return number(static_cast<std::int64_t>(sendSelector<T>(object, getter)));
}

/// The boxed answer of a getter; empty when its type can't be boxed.
std::optional<id> boxedAnswer(const id& object, SEL getter, char type)
{
    switch (type) {
    case '@':
        return sendSelector<id>(object, getter);
    case '#':
        return id(sendSelector<Class>(object, getter));
    case 'B':
        return boolean(sendSelector<bool>(object, getter));
    case 'c':
        return boxedInteger<char>(object, getter);
    case 'C':
        return boxedInteger<unsigned char>(object, getter);
    case 's':
        return boxedInteger<short>(object, getter);
    case 'S':
        return boxedInteger<unsigned short>(object, getter);
    case 'i':
        return boxedInteger<int>(object, getter);
    case 'I':
        return boxedInteger<unsigned>(object, getter);
    case 'q':
        return boxedInteger<long>(object, getter);
    case 'Q':
        return boxedInteger<unsigned long>(object, getter);
    case 'f':
        return real(sendSelector<float>(object, getter));
    case 'd':
        return real(sendSelector<double>(object, getter));
    default:
        return std::nullopt;
    }
}

/// Sends the unboxed value; false when the setter's type can't be unboxed.
bool sendUnboxed(const id& object, SEL setter, char type, const id& value)
{
    const std::int64_t integer = asInteger(value).value_or(0);
    const double real = asDouble(value).value_or(0);
    switch (type) {
    case 'B':
        return sendSelector<void>(object, setter, boolValue(value)), true;
    case 'c':
        return sendSelector<void>(object, setter, static_cast<char>(integer)), true;
    case 'C':
        return sendSelector<void>(object, setter, static_cast<unsigned char>(integer)), true;
    case 's':
        return sendSelector<void>(object, setter, static_cast<short>(integer)), true;
    case 'S':
        return sendSelector<void>(object, setter, static_cast<unsigned short>(integer)), true;
    case 'i':
        return sendSelector<void>(object, setter, static_cast<int>(integer)), true;
    case 'I':
        return sendSelector<void>(object, setter, static_cast<unsigned>(integer)), true;
    case 'q':
        return sendSelector<void>(object, setter, static_cast<long>(integer)), true;
    case 'Q':
        return sendSelector<void>(object, setter, static_cast<unsigned long>(integer)), true;
    case 'f':
        return sendSelector<void>(object, setter, static_cast<float>(real)), true;
    case 'd':
        return sendSelector<void>(object, setter, real), true;
    default:
        return false;
    }
}

bool trySetter(const id& object, const std::string& name, const id& value)
{
    const SEL setter = sel_registerName(name);
    const auto types = class_getMethodTypes(object->isa(), setter);
    const auto type = types ? typeBetween(*types, "v@:", "") : std::nullopt;
    if (!type)
        return false;
    if (*type == '@') {
        sendSelector<void>(object, setter, value);
        return true;
    }
    if (!numberKind(value))
        throw NSException("NSInvalidArgumentException", name + " takes a number and was given " + describe(value));
    return sendUnboxed(object, setter, *type, value);
}

} // namespace

id valueForKey(const id& object, std::string_view key)
{
    if (!object)
        return nil;
    if (const auto pairs = asDictionary(object))
        return (*pairs)[key];
    const std::string name(key);
    const std::string capital = capitalized(key);
    for (const std::string& candidate : { "get" + capital, name, "is" + capital, "_" + name }) {
        const SEL getter = sel_registerName(candidate);
        const auto types = class_getMethodTypes(object->isa(), getter);
        if (const auto type = types ? typeBetween(*types, "", "@:") : std::nullopt)
            if (const auto value = boxedAnswer(object, getter, *type))
                return *value;
    }
    for (const std::string& candidate : { "_" + name, "_is" + capital, name, "is" + capital })
        if (const auto value = object_getInstanceVariable(object, candidate))
            return *value;
    raiseUndefinedKey(object, key);
}

void setValueForKey(const id& object, const id& value, std::string_view key)
{
    if (!object)
        return;
    if (respondsTo<"setObject:forKeyedSubscript:">(object)) {
        send<"setObject:forKeyedSubscript:", void>(object, value, string(key));
        return;
    }
    const std::string name(key);
    const std::string capital = capitalized(key);
    for (const std::string& candidate : { "set" + capital + ":", "_set" + capital + ":" })
        if (trySetter(object, candidate, value))
            return;
    for (const std::string& candidate : { "_" + name, "_is" + capital, name, "is" + capital })
        if (object_setInstanceVariable(object, candidate, value))
            return;
    raiseUndefinedKey(object, key);
}

} // namespace platform
