#pragma once

#include "phone/system/class_list.h"

namespace phone {

ClassList launchServicesClasses() noexcept;

} // namespace phone
