#pragma once

#include "phone/process/class_list.h"

namespace phone {

ClassList frontBoardClasses() noexcept;

} // namespace phone
