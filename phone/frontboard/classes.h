#pragma once

#include "phone/system/class_list.h"

namespace phone {

ClassList frontBoardClasses() noexcept;

} // namespace phone
