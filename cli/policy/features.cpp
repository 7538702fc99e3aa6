#include "cli/policy/features.h"

#include <algorithm>

namespace cli {

namespace {

constexpr const Feature* all[] { &feature::block, &feature::lock, &feature::hide, &feature::protect, &feature::freeze,
    &feature::silence, &feature::hush, &feature::mute, &feature::clean, &feature::keepAwake, &feature::keepAlive,
    &feature::hold, &feature::push, &feature::confine, &feature::shield, &feature::noStore, &feature::noSafari,
    &feature::lenient, &feature::pretend };

} // namespace

std::span<const Feature* const> features() noexcept
{
    return all;
}

const Feature* featureOf(std::string_view key) noexcept
{
    const auto found = std::ranges::find(all, key, &Feature::key);
    return found == std::end(all) ? nullptr : *found;
}

ValueName Feature::valueName(const std::string& application) const
{
    switch (kind) {
    case Kind::MuteFile:
        return ValueName::muteList();
    case Kind::Flag:
        return ValueName::ofKey(std::string(key) + application);
    case Kind::List:
        break;
    }
    return ValueName::ofKey(key);
}

} // namespace cli
