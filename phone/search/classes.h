#pragma once

#include "phone/process/class_list.h"

namespace phone {

ClassList searchUIClasses() noexcept;

} // namespace phone
