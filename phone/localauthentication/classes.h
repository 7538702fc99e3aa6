#pragma once

#include "phone/process/class_list.h"

namespace phone {

ClassList localAuthenticationClasses() noexcept;

} // namespace phone
