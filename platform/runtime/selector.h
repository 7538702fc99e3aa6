#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

/// FNV-1a over the bytes of a selector's name (offset basis and prime of its 32-bit form), so that a
/// send with a constant selector carries its hash as an immediate operand.
constexpr std::uint32_t selectorHash(std::string_view name) noexcept
{
    std::uint32_t hash = 2166136261U;
    for (const char c : name)
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    return hash ^ (hash >> 15);
}

struct Selector {
    const std::string name;
    const std::uint32_t hash;
};

/// An interned selector: two of the same name are the same pointer. Null is no selector.
using SEL = const Selector*;

/// The selector of that name, made at the first request. Any thread. Never null.
SEL sel_registerName(std::string_view name);

/// Empty for the null selector. Valid for the life of the process.
std::string_view sel_getName(SEL selector) noexcept;

/// A name as a template argument: send<"handleTap">(…).
template <std::size_t Size> struct Name {
    char text[Size] {};

    consteval Name(const char (&literal)[Size]) { std::copy_n(literal, Size, text); }

    constexpr std::string_view view() const noexcept { return { text, Size - 1 }; }
};

/// The selector named by `S`, interned once.
template <Name S> SEL selector() noexcept
{
    static constinit std::atomic<SEL> interned { nullptr };
    SEL selector = interned.load(std::memory_order_acquire);
    if (!selector) [[unlikely]] {
        selector = sel_registerName(S.view());
        interned.store(selector, std::memory_order_release);
    }
    return selector;
}

} // namespace platform
