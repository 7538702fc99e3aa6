#pragma once

#include "phone/process/class_list.h"

namespace phone {

ClassList storeKitUIClasses() noexcept;

} // namespace phone
