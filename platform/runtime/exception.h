#pragma once

#include <exception>
#include <string>

namespace platform {

/// What the system raises. `name` is one of the system's exception names ("NSInvalidArgumentException",
/// …), `reason` a sentence for the developer.
class NSException final : public std::exception {
public:
    NSException(std::string name, std::string reason);
    NSException(const NSException&) = default;
    ~NSException() override;

    const std::string& name() const noexcept { return name_; }
    const std::string& reason() const noexcept { return reason_; }
    const char* what() const noexcept override { return description_.c_str(); }

private:
    std::string name_;
    std::string reason_;
    std::string description_;
};

} // namespace platform
