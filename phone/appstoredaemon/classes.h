#pragma once

#include "phone/system/class_list.h"

namespace phone {

ClassList appStoreDaemonClasses() noexcept;

} // namespace phone
