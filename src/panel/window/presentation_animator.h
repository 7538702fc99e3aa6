#pragma once

#include "panel/window/presentation_configuration.h"

namespace appledger {

/// Moves the panel's sheet in from its edge, or out again. Main thread.
class ALDataPresentationAnimator final : public platform::NSObject {
public:
    static const platform::ClassDefinition definition;

    platform::Ref<ALDataPresentationConfiguration> configuration = configurationOrDefault(platform::nil);
    bool isPresentation = false;
};

} // namespace appledger
