#pragma once

#include "phone/system/class_list.h"

namespace phone {

ClassList userNotificationsClasses() noexcept;

} // namespace phone
