#pragma once

#include "phone/process/class_list.h"

namespace phone {

ClassList appStoreDaemonClasses() noexcept;

} // namespace phone
