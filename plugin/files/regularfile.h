#pragma once

/** What opening gave: a descriptor or the reason why there is none. */
struct OpenedFile
{
    int descriptor = -1;           ///< the caller's to close; -1 for none
    const char *failure = nullptr; ///< null for none
    bool isMissing = false;        ///< nothing has that name
    bool isOther = false;          ///< what has that name is no regular file
};

/** Opens a file by its name without ever waiting for it: a FIFO that somebody put in its place, or
 *  a device, is refused.
 *
 *  @param flags  of open(); O_CLOEXEC is added */
[[nodiscard]] OpenedFile openRegularFile(const char *name, int flags);
