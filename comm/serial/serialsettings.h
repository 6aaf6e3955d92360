#pragma once

#include <optional>
#include <QString>
#include <termios.h>

// The values of these enumerations stand in settings texts of the form "12#3#0#0".

enum BaudRateType : int {
    Baud50,
    Baud75,
    Baud110,
    Baud134,
    Baud150,
    Baud200,
    Baud300,
    Baud600,
    Baud1200,
    Baud1800,
    Baud2400,
    Baud4800,
    Baud9600,
    Baud14400,
    Baud19200,
    Baud38400,
    Baud56000,
    Baud57600,
    Baud76800,
    Baud115200,
    Baud128000,
    Baud256000,
};

enum DataBitsType : int { Data5, Data6, Data7, Data8 };

enum ParityType : int { ParityNone, ParityOdd, ParityEven, ParitySpace, ParityMark };

enum StopBitsType : int { Stop1, Stop2, Stop1_5 };

enum FlowType : int { FlowOff, FlowHardware, FlowXonXoff };

/** Bits of SerialPort::lineStatus(). */
enum LineStatus : unsigned long {
    LineCTS = 1,
    LineDSR = 2,
    LineDCD = 4,
    LineRI = 8,
    LineRTS = 16,
    LineDTR = 32,
    LineST = 64,
    LineSR = 128,
};

/** How long SerialPort::bytesAvailable() waits. */
struct SelectTimeout
{
    long seconds = 0;
    long remainder = 0; ///< ms, but counted as microseconds: intended
};

/** How a serial line is set; the defaults are those of a new port. */
struct PortSettings
{
    BaudRateType BaudRate = Baud115200;
    DataBitsType DataBits = Data8;
    ParityType Parity = ParityNone;
    StopBitsType StopBits = Stop1;
    FlowType FlowControl = FlowHardware;
    long Timeout = 500; ///< ms
};

/** The part of the settings that a settings text gives. */
struct LineSettings
{
    BaudRateType BaudRate = Baud115200;
    DataBitsType DataBits = Data8;
    ParityType Parity = ParityNone;
    StopBitsType StopBits = Stop1;
};

/** A rate of `s_UnixBaudList`. */
struct BaudListRow
{
    qint64 type; ///< BaudRateType
    qint64 rate; ///< baud
};

/** All rates in the order of BaudRateType, closed by a row of zeros. */
extern const BaudListRow s_UnixBaudList[23];

/** What the terminal driver is asked for instead of a rate, and what is said about it. */
struct BaudRow
{
    BaudRateType stored;     ///< what counts as set
    speed_t speed;           ///< B0 leaves the speed as it is
    const char *warnings[2]; ///< null where there is nothing to say
};

/** The row of a rate; null for a number that is no BaudRateType. */
const BaudRow *baudRow(BaudRateType type);

/** Reads "9600,n,8,1" (rate, parity, data bits, stop bits) or "12#3#0#0" (numbers of rate, data
 *  bits, parity, stop bits). A rate in the first form that is not in the list stands for 50 baud.
 *  @param caller  function named in the log
 *  @return nothing, with a debug line that tells why, when the text is neither */
std::optional<LineSettings> parseLineSettings(const char *caller, const QString &text);

/** What whoever wrote the settings text ought to know: what is set instead, or what is allowed;
 *  empty when it is set as it stands. */
QString remarkOnSettings(const QString &text);
