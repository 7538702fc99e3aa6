#include "phone/supervisor/phone_directory.h"

#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace phone {

int PhoneDirectory::supervisorProcess() const
{
    const int descriptor = ::open(lockFile().c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return 0;
    int process = 0;
    if (::flock(descriptor, LOCK_SH | LOCK_NB) != 0) {
        char text[32] {};
        if (::read(descriptor, text, sizeof text - 1) > 0)
            process = std::atoi(text);
    }
    ::close(descriptor);
    return process;
}

} // namespace phone
