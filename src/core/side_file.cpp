#include "core/side_file.h"

#include "platform/foundation/files.h"

#include <cstring>

namespace appledger {

using namespace platform;

WriteOutcome openedToEveryWriter(const std::string& path, WriteOutcome outcome)
{
    if (!outcome.isDone())
        return outcome;
    outcome.error = setFileMode(path, 0777);
    if (!outcome.isDone())
        outcome.problem = path + " is written, but can't be opened to other writers: " + std::strerror(outcome.error);
    return outcome;
}

} // namespace appledger
