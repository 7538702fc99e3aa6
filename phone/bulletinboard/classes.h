#pragma once

#include "phone/system/class_list.h"

namespace phone {

ClassList bulletinBoardClasses() noexcept;

} // namespace phone
