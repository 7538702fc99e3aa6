#pragma once

#include "phone/process/class_list.h"

namespace phone {

ClassList springBoardClasses() noexcept;

} // namespace phone
