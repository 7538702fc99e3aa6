#pragma once

#include "phone/system/class_list.h"

namespace phone {

/// The view framework's classes, which this loads, and the system's own actions.
ClassList uiKitClasses() noexcept;

} // namespace phone
