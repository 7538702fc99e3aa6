#pragma once

#include "platform/uikit/view.h"

namespace platform {

extern const ClassDefinition UIImageView_class;
extern const ClassDefinition UILabel_class;
extern const ClassDefinition UIResponder_class;
extern const ClassDefinition UIStackView_class;

} // namespace platform
