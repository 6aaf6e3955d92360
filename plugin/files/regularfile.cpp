#include "regularfile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

OpenedFile openRegularFile(const char *name, int flags)
{
    constexpr const char *noRegularFile = "not a regular file";
    const int descriptor = open(name, flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0666);
    if (descriptor < 0) {
        const int error = errno;
        // So does a FIFO refuse to be written that nobody reads.
        return { -1, error == ENXIO ? noRegularFile : strerror(error), error == ENOENT, false };
    }
    struct stat status = {};
    if (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode))
        return { descriptor, nullptr, false, false };
    close(descriptor);
    return { -1, noRegularFile, false, true };
}
