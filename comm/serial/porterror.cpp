#include "serial/porterror.h"

#include <algorithm>
#include <cerrno>
#include <iterator>

namespace {

struct ErrorRow
{
    unsigned long error;
    PortError::Code code;
};

constexpr ErrorRow errorRows[] = {
    { EBADF, PortError::BadDescriptor },
    { ENOTTY, PortError::BadDescriptor },
    { ENOMEM, PortError::OutOfMemory },
    { EINTR, PortError::CaughtSignal },
};

} // namespace

unsigned long PortError::codeOf(unsigned long error)
{
    const auto *const row = std::find_if(std::begin(errorRows), std::end(errorRows),
                                         [error](const ErrorRow &r) { return r.error == error; });
    return row == std::end(errorRows) ? error : row->code;
}
