#include "phone/device/staging.h"

#include "platform/foundation/files.h"

#include <cstring>
#include <random>

namespace phone {

using namespace platform;

std::string newContainerName()
{
    static std::random_device source;
    std::string name;
    for (std::size_t index = 0; index < 32; ++index) {
        if (index == 8 || index == 12 || index == 16 || index == 20)
            name += '-';
        name += "0123456789ABCDEF"[source() % 16];
    }
    return name;
}

StagedContainer::StagedContainer()
    : path_(pathByAppending(stagingPlace, newContainerName()))
{
    if (const int error = createDirectories(path_))
        problem_ = "can't make " + path_ + ": " + std::strerror(error);
}

StagedContainer::~StagedContainer()
{
    static_cast<void>(removeTree(path_)); // what stays is removed when the phone comes up
}

void clearStaging()
{
    for (const std::string& name : directoryEntries(stagingPlace))
        static_cast<void>(removeTree(pathByAppending(stagingPlace, name))); // harmless where it stays
}

} // namespace phone
