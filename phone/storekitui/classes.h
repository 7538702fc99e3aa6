#pragma once

#include "phone/system/class_list.h"

namespace phone {

ClassList storeKitUIClasses() noexcept;

} // namespace phone
