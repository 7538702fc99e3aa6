#include "phone/process/system_images.h"

#include "phone/backboard/brightness.h"
#include "phone/springboard/applications/termination_assertion.h"
#include "phone/system/journal.h"
#include "phone/tcc/access.h"
#include "platform/darwin/images.h"
#include "platform/foundation/values.h"

#include <cstddef>
#include <cstdint>

namespace phone {

using namespace platform;

namespace {

int memorystatusControl(std::uint32_t command, int, std::uint32_t, void*, std::size_t)
{
    constexpr std::uint32_t setJetsamTaskLimit = 6;
    if (command != setJetsamTaskLimit)
        return -1;
    journal(JournalEvent::Note, "memory limit lifted");
    return 0;
}

void setDisplayBrightness(float level, int transition)
{
    setBrightness("BKSDisplayBrightnessSet", level, std::to_string(transition));
}

template <class Function> IMP address(Function* function)
{
    return reinterpret_cast<IMP>(function);
}

} // namespace

void declareSystemImages(const SystemVersion& version)
{
    const ImageSymbol assertions[] {
        { "SBSApplicationTerminationAssertionCreateWithError", address(createTerminationAssertion) },
        { "SBSApplicationTerminationAssertionInvalidate", address(invalidateTerminationAssertion) },
    };
    declareImage(version.major >= 13
            ? "/System/Library/PrivateFrameworks/SpringBoard.framework/SpringBoard"
            : "/System/Library/PrivateFrameworks/SpringBoardServices.framework/SpringBoardServices",
        assertions);
    const ImageSymbol tcc[] {
        { "TCCAccessCopyInformationForBundle", address(TCCAccessCopyInformationForBundle) },
        { "TCCAccessResetForBundle", address(TCCAccessResetForBundle) },
    };
    declareImage("/System/Library/PrivateFrameworks/TCC.framework/TCC", tcc);
    if (version.major >= 13)
        declareImage("/System/Library/PrivateFrameworks/InstallCoordination.framework/InstallCoordination", {});
    const ImageSymbol backBoardServices[] { { "BKSDisplayBrightnessSet", address(setDisplayBrightness) } };
    declareImage("/System/Library/PrivateFrameworks/BackBoardServices.framework/BackBoardServices", backBoardServices);
    const ImageSymbol libSystem[] { { "memorystatus_control", address(memorystatusControl) } };
    declareImage("/usr/lib/libSystem.B.dylib", libSystem);
}

} // namespace phone
