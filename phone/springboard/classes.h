#pragma once

#include "phone/system/class_list.h"

namespace phone {

ClassList springBoardClasses() noexcept;

} // namespace phone
