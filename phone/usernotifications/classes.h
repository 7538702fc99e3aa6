#pragma once

#include "phone/process/class_list.h"

namespace phone {

ClassList userNotificationsClasses() noexcept;

} // namespace phone
