#pragma once

#include "platform/runtime/object.h"
#include "platform/runtime/selector.h"

#include <array>
#include <cstddef>
#include <initializer_list>
#include <string_view>
#include <type_traits>

namespace platform {

using NSInteger = long;
using NSUInteger = unsigned long;

/// The encoding of one type in a method's type string, in the letters of the Objective-C runtime
/// ("B" for bool, "@" for an object, "d" for double, …). A structure that methods take or return
/// specializes this beside its own definition.
template <class T> inline constexpr std::string_view typeEncoding = typeEncoding<std::underlying_type_t<T>>;

template <> inline constexpr std::string_view typeEncoding<void> = "v";
template <> inline constexpr std::string_view typeEncoding<bool> = "B";
template <> inline constexpr std::string_view typeEncoding<char> = "c";
template <> inline constexpr std::string_view typeEncoding<unsigned char> = "C";
template <> inline constexpr std::string_view typeEncoding<short> = "s";
template <> inline constexpr std::string_view typeEncoding<unsigned short> = "S";
template <> inline constexpr std::string_view typeEncoding<int> = "i";
template <> inline constexpr std::string_view typeEncoding<unsigned> = "I";
template <> inline constexpr std::string_view typeEncoding<long> = "q";
template <> inline constexpr std::string_view typeEncoding<unsigned long> = "Q";
template <> inline constexpr std::string_view typeEncoding<long long> = "q";
template <> inline constexpr std::string_view typeEncoding<unsigned long long> = "Q";
template <> inline constexpr std::string_view typeEncoding<float> = "f";
template <> inline constexpr std::string_view typeEncoding<double> = "d";
template <> inline constexpr std::string_view typeEncoding<SEL> = ":";
template <> inline constexpr std::string_view typeEncoding<Class> = "#";
template <> inline constexpr std::string_view typeEncoding<float*> = "^f";
template <> inline constexpr std::string_view typeEncoding<void*> = "^v";
template <> inline constexpr std::string_view typeEncoding<double*> = "^d";
template <> inline constexpr std::string_view typeEncoding<unsigned long*> = "^Q";
template <> inline constexpr std::string_view typeEncoding<void (*)()> = "^?";
template <> inline constexpr std::string_view typeEncoding<id> = "@";
template <> inline constexpr std::string_view typeEncoding<const id&> = "@";
template <> inline constexpr std::string_view typeEncoding<id*> = "^@";

namespace detail {

template <class T>
concept ObjectArgument = std::is_convertible_v<const T&, id> && !std::is_same_v<T, Class>;

template <class T> struct Argument {
    using Type = T;
};
template <ObjectArgument T> struct Argument<T> {
    using Type = const id&;
};
template <class T>
requires std::is_enum_v<T>
struct Argument<T> {
    using Type = std::underlying_type_t<T>;
};

/// How an argument travels: every object as `const id&`, an enumeration as its number, a scalar as it is.
template <class T> using ArgumentType = typename Argument<std::remove_cvref_t<T>>::Type;

consteval auto concatenated(std::initializer_list<std::string_view> parts)
{
    std::array<char, 160> text {};
    std::size_t length = 0;
    for (const std::string_view part : parts)
        for (const char c : part)
            text.at(length++) = c;
    return text;
}

template <class R, class... A> inline constexpr auto methodEncodingText
    = concatenated({ typeEncoding<R>, "@:", typeEncoding<A>... });
template <class R, class... A> inline constexpr auto blockEncodingText
    = concatenated({ typeEncoding<R>, "@?", typeEncoding<A>... });

} // namespace detail

/// "B@:@@" for a method that takes two objects and returns a bool.
template <class R, class... A> inline constexpr const char* methodEncoding = detail::methodEncodingText<R, A...>.data();

/// "v@?B" for a block that takes a bool and returns nothing.
template <class R, class... A> inline constexpr const char* blockEncoding = detail::blockEncodingText<R, A...>.data();

} // namespace platform
