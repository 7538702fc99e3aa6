#include "platform/foundation/utf8.h"
#include "platform/foundation/value_objects.h"

#include <algorithm>
#include <charconv>
#include <clocale>
#include <cstdlib>
#include <cwctype>
#include <limits>
#include <wctype.h>

namespace platform {

using detail::String;

id string(std::string_view text)
{
    return make<String>(detail::wellFormedUtf8(text));
}

std::optional<StringValue> asString(const id& object)
{
    if (const auto* const found = detail::exactly<String>(object))
        return StringValue(object, found->text);
    return std::nullopt;
}

std::optional<StringValue> asString(const std::optional<id>& object)
{
    return object ? asString(*object) : std::nullopt;
}

namespace detail {

namespace {

constexpr std::string_view whiteSpace = " \t\n\v\f\r";

std::string_view withoutLeadingSpace(std::string_view text) noexcept
{
    return text.substr(std::min(text.find_first_not_of(whiteSpace), text.size()));
}

/// The text from its minus sign or its first digit on.
std::string_view numberStart(std::string_view text) noexcept
{
    text = withoutLeadingSpace(text);
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
        if (!text.empty() && text.front() == '-')
            return {};
    }
    return text;
}

const String& stringOf(const id& self)
{
    return static_cast<const String&>(*self);
}

id String_self(const id& self, SEL)
{
    return self;
}

NSUInteger String_length(const id& self, SEL)
{
    return utf16Length(stringOf(self).text);
}

bool String_isEqualToString(const id& self, SEL, const id& other)
{
    return other && self->isEqualTo(*other);
}

bool String_hasPrefix(const id& self, SEL, const id& prefix)
{
    const auto text = asString(prefix);
    return text && stringOf(self).text.starts_with(text->view());
}

bool String_hasSuffix(const id& self, SEL, const id& suffix)
{
    const auto text = asString(suffix);
    return text && stringOf(self).text.ends_with(text->view());
}

bool String_containsString(const id& self, SEL, const id& part)
{
    const auto text = asString(part);
    return text && stringOf(self).text.find(text->view()) != std::string::npos;
}

/// The text as a device in English sorts it: by its letters whatever their case, then by their code.
std::wstring foldedText(std::string_view text)
{
    static const locale_t locale = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    std::wstring folded;
    for (std::size_t at = 0; at < text.size();) {
        const auto first = static_cast<unsigned char>(text[at]);
        const std::size_t length = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
        wchar_t code = length == 1 ? first : first & (0x7F >> length);
        for (const char following : text.substr(at + 1, length - 1))
            code = code << 6 | (following & 0x3F);
        folded += static_cast<wchar_t>(locale ? ::towlower_l(static_cast<wint_t>(code), locale) : code);
        at += length;
    }
    return folded;
}

void appendUtf8(std::string& text, wchar_t character)
{
    const auto code = static_cast<std::uint32_t>(character);
    const auto append = [&text](std::uint32_t byte) { text += static_cast<char>(byte); };
    const auto continuation = [&](int shift) { append(0x80 | (code >> shift & 0x3F)); };
    if (code < 0x80) {
        append(code);
    } else if (code < 0x800) {
        append(0xC0 | code >> 6);
        continuation(0);
    } else if (code < 0x10000) {
        append(0xE0 | code >> 12);
        continuation(6);
        continuation(0);
    } else {
        append(0xF0 | code >> 18);
        continuation(12);
        continuation(6);
        continuation(0);
    }
}

id String_lowercaseString(const id& self, SEL)
{
    std::string lower;
    for (const wchar_t character : foldedText(stringOf(self).text))
        appendUtf8(lower, character);
    return string(lower);
}

NSInteger String_localizedCaseInsensitiveCompare(const id& self, SEL, const id& other)
{
    const auto text = asString(other);
    const int order = foldedText(stringOf(self).text).compare(text ? foldedText(*text) : std::wstring());
    return order < 0 ? -1 : order > 0;
}

id String_percentEncoded(const id& self, SEL, const id& allowed)
{
    return percentEncoded(stringOf(self).text, allowed);
}

id String_stringByAppendingString(const id& self, SEL, const id& tail)
{
    requireObject(tail, "stringByAppendingString:");
    const auto text = asString(tail);
    return text ? string(stringOf(self).text + text->text()) : self;
}

bool String_boolValue(const id& self, SEL)
{
    return boolValue(self);
}

int String_intValue(const id& self, SEL)
{
    const std::int64_t value = integerFromText(stringOf(self).text);
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(std::clamp<std::int64_t>(value, Limits::min(), Limits::max()));
}

NSInteger String_integerValue(const id& self, SEL)
{
    return integerFromText(stringOf(self).text);
}

double String_doubleValue(const id& self, SEL)
{
    return doubleFromText(stringOf(self).text);
}

float String_floatValue(const id& self, SEL)
{
    return static_cast<float>(doubleFromText(stringOf(self).text));
}

constexpr MethodDefinition methods[] {
    method<"boolValue", &String_boolValue>(),
    method<"containsString:", &String_containsString>(),
    method<"copy", &String_self>(),
    method<"description", &String_self>(),
    method<"doubleValue", &String_doubleValue>(),
    method<"floatValue", &String_floatValue>(),
    method<"hasPrefix:", &String_hasPrefix>(),
    method<"hasSuffix:", &String_hasSuffix>(),
    method<"intValue", &String_intValue>(),
    method<"integerValue", &String_integerValue>(),
    method<"isEqualToString:", &String_isEqualToString>(),
    method<"length", &String_length>(),
    method<"localizedCaseInsensitiveCompare:", &String_localizedCaseInsensitiveCompare>(),
    method<"longLongValue", &String_integerValue>(),
    method<"lowercaseString", &String_lowercaseString>(),
    method<"stringByAddingPercentEncodingWithAllowedCharacters:", &String_percentEncoded>(),
    method<"stringByAppendingString:", &String_stringByAppendingString>(),
};

} // namespace

const ClassDefinition String::definition { .name = "NSString", .allocate = allocate<String>, .methods = methods };

bool String::isEqualTo(const NSObject& other) const noexcept
{
    return typeid(other) == typeid(String) && static_cast<const String&>(other).text == text;
}

std::int64_t integerFromText(std::string_view text)
{
    text = numberStart(text);
    std::int64_t value = 0;
    const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), value);
    using Limits = std::numeric_limits<std::int64_t>;
    if (problem == std::errc::result_out_of_range)
        return text.front() == '-' ? Limits::min() : Limits::max();
    return value;
}

double doubleFromText(std::string_view text)
{
    text = numberStart(text);
    // The names of infinity and of no number are words here.
    const std::size_t first = text.find_first_not_of('-');
    if (first == std::string_view::npos || std::string_view("0123456789.").find(text[first]) == std::string_view::npos)
        return 0;
    double value = 0;
    const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (problem == std::errc::result_out_of_range)
        return std::strtod(std::string(text.data(), end).c_str(), nullptr);
    return value;
}

} // namespace detail

bool boolValue(const id& object)
{
    if (const auto value = asBool(object))
        return *value;
    const auto found = asString(object);
    if (!found)
        return false;
    std::string_view text = detail::withoutLeadingSpace(found->view());
    if (!text.empty() && (text.front() == '+' || text.front() == '-'))
        text.remove_prefix(1);
    const std::size_t decisive = text.find_first_not_of('0');
    return decisive != std::string_view::npos
        && std::string_view("123456789YyTt").find(text[decisive]) != std::string_view::npos;
}

} // namespace platform
