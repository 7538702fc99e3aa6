#pragma once

#include "phone/system/class_list.h"

namespace phone {

ClassList coreLocationClasses() noexcept;

} // namespace phone
