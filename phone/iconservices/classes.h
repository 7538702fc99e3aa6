#pragma once

#include "phone/system/class_list.h"

namespace phone {

/// Where icons of applications come from. Its category of UIImage needs the view framework.
ClassList iconServicesClasses() noexcept;

} // namespace phone
