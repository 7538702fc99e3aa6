#pragma once

#include "platform/uikit/responders.h"
#include "platform/uikit/view.h"

namespace platform {

extern const ClassDefinition UIActivityIndicatorView_class;
extern const ClassDefinition UIImageView_class;
extern const ClassDefinition UILabel_class;
extern const ClassDefinition UIStackView_class;
extern const ClassDefinition UITraitCollection_class;

} // namespace platform
