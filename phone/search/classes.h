#pragma once

#include "phone/system/class_list.h"

namespace phone {

ClassList searchUIClasses() noexcept;

} // namespace phone
