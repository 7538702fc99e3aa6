#pragma once

#include "phone/process/class_list.h"

namespace phone {

ClassList launchServicesClasses() noexcept;

} // namespace phone
