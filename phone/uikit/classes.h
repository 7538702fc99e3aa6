#pragma once

#include "phone/process/class_list.h"

namespace phone {

ClassList uiKitClasses() noexcept;

} // namespace phone
