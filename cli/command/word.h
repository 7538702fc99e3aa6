#pragma once

#include <concepts>
#include <string>
#include <string_view>
#include <utility>

namespace cli {

/// A word of the command line that the phone is to hear. Words may be any bytes; this is text, as the phone's strings
/// are: what isn't UTF-8 is repaired.
class Word {
public:
    Word() = default;
    template <std::convertible_to<std::string_view> Bytes> Word(const Bytes& bytes)
        : Word(std::in_place, bytes)
    {
    }

    const std::string& text() const noexcept { return text_; }
    operator const std::string&() const noexcept { return text_; }
    bool empty() const noexcept { return text_.empty(); }

private:
    Word(std::in_place_t, std::string_view bytes);

    std::string text_;
};

} // namespace cli
