#pragma once

/** What went wrong with a serial port, as its errorCode tells. */
namespace PortError {

/** Other values are values of errno. */
enum Code : unsigned long {
    NoError = 0,
    BadDescriptor = 1,
    OutOfMemory = 2,
    CaughtSignal = 3,
    TimedOut = 4,
    ReadFailed = 13,
    WriteFailed = 14,
};

/** The code that a value of errno stands for; that value where it has none. */
unsigned long codeOf(unsigned long error);

} // namespace PortError
