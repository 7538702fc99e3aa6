#pragma once

#include "panel/window/presentation_configuration.h"

namespace appledger {

/// The panel's transitioning delegate: hands out its presentation controller and its animators, all with the one
/// configuration. Main thread.
class ALDataPresentationManager final : public platform::NSObject {
public:
    static const platform::ClassDefinition definition;

    platform::Ref<ALDataPresentationConfiguration> configuration = configurationOrDefault(platform::nil);
};

} // namespace appledger
