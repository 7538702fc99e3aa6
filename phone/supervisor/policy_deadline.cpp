#include "phone/supervisor/policy_deadline.h"

#include "platform/foundation/descriptor.h"

#include <charconv>
#include <cmath>
#include <fcntl.h>
#include <unistd.h>

namespace phone {

namespace {

constexpr const char* deadlineName = "policy-deadline";

} // namespace

std::optional<double> readPolicyDeadline(const PhoneDirectory& directory)
{
    const platform::detail::Descriptor file(directory.openRunFile(deadlineName, O_RDONLY));
    char text[64];
    const ssize_t count = file ? ::read(file.get(), text, sizeof text) : 0;
    double seconds = 0;
    const auto [end, error] = std::from_chars(text, text + std::max<ssize_t>(count, 0), seconds);
    return count > 0 && error == std::errc() && std::isfinite(seconds) ? std::optional(seconds) : std::nullopt;
}

int writePolicyDeadline(const PhoneDirectory& directory, std::optional<double> deadline)
{
    if (!deadline)
        return directory.removeRunFile(deadlineName);
    char text[64];
    const auto written = std::to_chars(text, text + sizeof text - 1, *deadline);
    *written.ptr = '\n';
    return directory.replaceRunFile(deadlineName, { text, static_cast<std::size_t>(written.ptr + 1 - text) });
}

} // namespace phone
