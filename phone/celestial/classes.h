#pragma once

#include "phone/system/class_list.h"

namespace phone {

ClassList celestialClasses() noexcept;

} // namespace phone
