#include "serial/unsentoutput.h"

#include "stopsource.h"

#include <algorithm>
#include <sys/ioctl.h>
#include <termios.h>

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using std::chrono::steady_clock;

constexpr int bitsPerByte = 11;
// What is sent may pause for so long before the line counts as stuck.
constexpr milliseconds longestPause { 1000 };
constexpr seconds longestSending { 30 }; // as long as the system waits when a line is closed
constexpr milliseconds drainSlice { 20 };

int bytesLeft(int descriptor)
{
    int bytes = 0;
    return descriptor >= 0 && ioctl(descriptor, TIOCOUTQ, &bytes) == 0 ? bytes : 0;
}

} // namespace

void UnsentOutput::noteWritten(int bytes, qint64 baud)
{
    const auto now = steady_clock::now();
    const auto sentBy = std::max(m_sentBy, now + longestPause) + timeFor(bytes, baud);
    m_sentBy = std::min(sentBy, now + longestSending);
}

bool UnsentOutput::isGoingOut(int descriptor) const
{
    return steady_clock::now() < m_sentBy && bytesLeft(descriptor) > 0;
}

void UnsentOutput::finish(int descriptor)
{
    // The queue is the terminal's: without bytes of ours in it, what it has is another program's.
    if (m_sentBy == steady_clock::time_point())
        return;
    while (isGoingOut(descriptor)
           && StopSource::waitFor(-1, 0, drainSlice) == StopSource::Wait::TimedOut) { }
    m_sentBy = {};
    drop(descriptor);
}

// Only what is held back: a pseudo-terminal would drop what its reader has not read yet.
void UnsentOutput::drop(int descriptor)
{
    if (bytesLeft(descriptor) > 0)
        tcflush(descriptor, TCOFLUSH);
}

milliseconds UnsentOutput::timeFor(int bytes, qint64 baud)
{
    return milliseconds(1000LL * bytes * bitsPerByte / baud);
}
