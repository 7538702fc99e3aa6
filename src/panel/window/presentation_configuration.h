#pragma once

#include "platform/graphics/geometry.h"
#include "platform/runtime/class_definition.h"

namespace appledger {

/// How the panel's sheet comes and goes. It lives with the panel; main thread.
class ALDataPresentationConfiguration final : public platform::NSObject {
public:
    static const platform::ClassDefinition definition;
    ALDataPresentationConfiguration();

    double animationDuration = 0.25; ///< seconds
    platform::id dimmingViewBackgroundColor; ///< black, three tenths opaque
    platform::NSInteger direction = 0; ///< SheetEdge
    platform::CGRect sourceRect {}; ///< when not zero, where the sheet grows from and returns to
    double screenPercentage = 66.66; ///< share of the container along the direction's axis
    bool fadeAnimation = false; ///< its alpha is animated too
    double fadeAnimationAlpha = 0; ///< at the hidden end
    platform::id customFrameHandler {}; ///< a block of the container view that gives the frame, or nil
};

/// The object as a configuration; a new one for anything else.
platform::Ref<ALDataPresentationConfiguration> configurationOrDefault(const platform::id& object);

} // namespace appledger
