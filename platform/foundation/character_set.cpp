#include "platform/foundation/value_objects.h"
#include "platform/foundation/values.h"

namespace platform {

namespace {

/// A set of characters of ASCII, by the text that holds them all.
class NSCharacterSet final : public NSObject {
public:
    std::string_view characters;
};

constexpr std::string_view lettersAndDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";

bool contains(const NSCharacterSet& set, char c)
{
    return lettersAndDigits.find(c) != std::string_view::npos || set.characters.find(c) != std::string_view::npos;
}

/// What the query of a URL holds without an escape.
id urlQueryAllowed(const id&, SEL)
{
    static NSObject* const allowed = [] {
        id set = id::adopt(new NSCharacterSet);
        static_cast<NSCharacterSet&>(*set).characters = "-._~!$&'()*+,;=:@/?";
        setClass(*set, classNamed<"NSCharacterSet">());
        return set.leak();
    }();
    return allowed;
}

constexpr MethodDefinition methods[] { classMethod<"URLQueryAllowedCharacterSet", &urlQueryAllowed>() };

} // namespace

const ClassDefinition detail::NSCharacterSet_class { .name = "NSCharacterSet", .methods = methods };

id detail::percentEncoded(std::string_view text, const id& allowed)
{
    const auto* const set = as<NSCharacterSet>(allowed);
    if (!set)
        return nil;
    constexpr std::string_view hexadecimal = "0123456789ABCDEF";
    std::string encoded;
    for (const char c : text) {
        if (contains(*set, c)) {
            encoded += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        encoded += { '%', hexadecimal[byte >> 4], hexadecimal[byte & 0xF] };
    }
    return string(encoded);
}

} // namespace platform
