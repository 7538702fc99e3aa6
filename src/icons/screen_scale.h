#pragma once

#include "platform/runtime/message.h"

namespace appledger {

/// Pixels a point on the main screen; 1 where there is none.
inline double mainScreenScale()
{
    using namespace platform;
    return ask<"scale", double>(askObject<"mainScreen">(id(classNamed<"UIScreen">()))).value_or(1);
}

} // namespace appledger
