#pragma once

#include "phone/system/class_list.h"

namespace phone {

ClassList localAuthenticationClasses() noexcept;

} // namespace phone
