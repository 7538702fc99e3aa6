#include "platform/runtime/exception.h"

#include <utility>

namespace platform {

NSException::NSException(std::string name, std::string reason)
    : name_(std::move(name))
    , reason_(std::move(reason))
    , description_(name_ + ": " + reason_)
{
}

NSException::~NSException() = default;

} // namespace platform
