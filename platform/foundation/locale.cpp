#include "platform/foundation/locale.h"

#include <utility>

namespace platform {

namespace {

std::vector<std::string>& languages()
{
    static auto* const shared = new std::vector<std::string> { "en" };
    return *shared;
}

} // namespace

const std::vector<std::string>& preferredLanguages() noexcept
{
    return languages();
}

void setPreferredLanguages(std::vector<std::string> newLanguages)
{
    languages() = std::move(newLanguages);
}

} // namespace platform
