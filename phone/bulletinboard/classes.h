#pragma once

#include "phone/process/class_list.h"

namespace phone {

ClassList bulletinBoardClasses() noexcept;

} // namespace phone
