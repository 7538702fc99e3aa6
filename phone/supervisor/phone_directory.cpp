#include "phone/supervisor/phone_directory.h"

#include <fcntl.h>
#include <unistd.h>

namespace phone {

int PhoneDirectory::supervisorProcess() const
{
    const int descriptor = ::open(lockFile().c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
    if (descriptor < 0)
        return 0;
    struct flock lock { };
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    const bool isHeld = ::fcntl(descriptor, F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
    ::close(descriptor);
    return isHeld ? lock.l_pid : 0;
}

} // namespace phone
