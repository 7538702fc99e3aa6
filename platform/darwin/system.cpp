#include "platform/darwin/system.h"

#include <array>
#include <charconv>
#include <unistd.h>
#include <utility>

namespace platform {

namespace {

ProcessFacts& facts() noexcept
{
    static auto* const shared = new ProcessFacts;
    return *shared;
}

} // namespace

std::string SystemVersion::text() const
{
    std::string text = std::to_string(major) + '.' + std::to_string(minor);
    if (patch != 0)
        text += '.' + std::to_string(patch);
    return text;
}

std::optional<SystemVersion> parseSystemVersion(std::string_view text)
{
    std::array<int, 3> numbers {};
    const char* position = text.data();
    const char* const end = position + text.size();
    for (int& number : numbers) {
        if (position == end || *position == '-')
            return std::nullopt;
        const auto [after, failure] = std::from_chars(position, end, number);
        if (failure != std::errc {})
            return std::nullopt;
        if (after == end)
            return SystemVersion { numbers[0], numbers[1], numbers[2] };
        if (*after != '.')
            return std::nullopt;
        position = after + 1;
    }
    return std::nullopt;
}

void setProcessFacts(ProcessFacts newFacts)
{
    facts() = std::move(newFacts);
}

const ProcessFacts& processFacts() noexcept
{
    return facts();
}

int processIdentifier() noexcept
{
    return getpid();
}

bool isOperatingSystemAtLeastVersion(int major, int minor, int patch) noexcept
{
    return facts().version >= SystemVersion { major, minor, patch };
}

} // namespace platform
