#pragma once

#include "phone/system/class_list.h"

namespace phone {

ClassList installCoordinationClasses() noexcept;

} // namespace phone
