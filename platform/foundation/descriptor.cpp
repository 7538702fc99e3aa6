#include "platform/foundation/descriptor.h"

#include <unistd.h>

namespace platform::detail {

Descriptor::~Descriptor()
{
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

} // namespace platform::detail
