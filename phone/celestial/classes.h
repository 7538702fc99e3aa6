#pragma once

#include "phone/process/class_list.h"

namespace phone {

ClassList celestialClasses() noexcept;

} // namespace phone
