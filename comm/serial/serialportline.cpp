// How a SerialPort sets its line.
#include "serial/serialport.h"

#include <QDebug>
#include <QFile>
#include <sys/ioctl.h>

namespace {

constexpr tcflag_t sizeFlags[] = { CS5, CS6, CS7, CS8 }; // by DataBitsType
constexpr tcflag_t softwareFlow = IXON | IXOFF | IXANY;

struct LineBit
{
    int modem;
    LineStatus status;
};

constexpr LineBit lineBits[] = {
    { TIOCM_CTS, LineCTS }, { TIOCM_DSR, LineDSR }, { TIOCM_CD, LineDCD }, { TIOCM_RI, LineRI },
    { TIOCM_RTS, LineRTS }, { TIOCM_DTR, LineDTR }, { TIOCM_ST, LineST },  { TIOCM_SR, LineSR },
};

void setFlags(tcflag_t &flags, tcflag_t mask, tcflag_t value)
{
    flags = (flags & ~mask) | value;
}

} // namespace

void SerialPort::applyTermios()
{
    tcsetattr(descriptor(), TCSAFLUSH, &termios);
}

void SerialPort::setBaudRate(BaudRateType rate)
{
    const BaudRow *row = baudRow(rate);
    if (!row)
        return;
    for (const char *warning : row->warnings) {
        if (warning)
            qWarning("%s", warning);
    }
    currentSettings.BaudRate = row->stored;
    if (!isOpen() || row->speed == B0)
        return;
    cfsetispeed(&termios, row->speed);
    cfsetospeed(&termios, row->speed);
    applyTermios();
}

void SerialPort::setDataBits(DataBitsType bits)
{
    if (bits < Data5 || bits > Data8)
        return;
    if (bits == Data5 && currentSettings.StopBits == Stop2) {
        qWarning("Posix_QextSerialPort: 5 Data bits cannot be used with 2 stop bits.");
        return;
    }
    if (bits != Data5 && currentSettings.StopBits == Stop1_5) {
        qWarning("Posix_QextSerialPort: %d Data bits cannot be used with 1.5 stop bits.", bits + 5);
        return;
    }
    currentSettings.DataBits = bits;
    if (!isOpen())
        return;
    setFlags(termios.c_cflag, CSIZE, sizeFlags[bits]);
    applyTermios();
}

void SerialPort::setParity(ParityType parity)
{
    if (parity < ParityNone || parity > ParityMark)
        return;
    if (parity == ParityMark) {
        qWarning("Posix_QextSerialPort: Mark parity is not supported by POSIX.");
        return;
    }
    if (parity == ParitySpace && currentSettings.DataBits == Data8) {
        qWarning("Posix_QextSerialPort:  Space parity is only supported in POSIX with 7 or fewer "
                 "data bits");
        return;
    }
    currentSettings.Parity = parity;
    if (!isOpen())
        return;
    constexpr tcflag_t flags[] = { 0, PARENB | PARODD, PARENB, 0 }; // by ParityType
    // Without parity, PARODD is kept as it is.
    setFlags(termios.c_cflag,
             parity == ParityOdd || parity == ParityEven ? PARENB | PARODD : PARENB, flags[parity]);
    // The space is one more data bit, always 0.
    if (parity == ParitySpace)
        setFlags(termios.c_cflag, CSIZE, sizeFlags[currentSettings.DataBits + 1]);
    applyTermios();
}

void SerialPort::setStopBits(StopBitsType bits)
{
    if (bits < Stop1 || bits > Stop1_5)
        return;
    if (bits == Stop2 && currentSettings.DataBits == Data5) {
        qWarning("Posix_QextSerialPort: 2 stop bits cannot be used with 5 data bits");
        return;
    }
    currentSettings.StopBits = bits;
    if (bits == Stop1_5) {
        qWarning("Posix_QextSerialPort: 1.5 stop bit operation is not supported by POSIX.");
        return;
    }
    if (!isOpen())
        return;
    setFlags(termios.c_cflag, CSTOPB, bits == Stop2 ? CSTOPB : 0);
    applyTermios();
}

void SerialPort::setFlowControl(FlowType flow)
{
    if (flow < FlowOff || flow > FlowXonXoff)
        return;
    currentSettings.FlowControl = flow;
    if (!isOpen())
        return;
    setFlags(termios.c_cflag, CRTSCTS, flow == FlowHardware ? CRTSCTS : 0);
    setFlags(termios.c_iflag, softwareFlow, flow == FlowXonXoff ? softwareFlow : 0);
    applyTermios();
}

void SerialPort::setTimeout(long ms)
{
    currentSettings.Timeout = ms;
    selectTimeout = { ms / 1000, ms % 1000 };
    if (!isOpen())
        return;
    termios.c_cc[VTIME] = static_cast<cc_t>(ms / 100);
    applyTermios();
}

void SerialPort::setDtr(bool on)
{
    setModemLine(TIOCM_DTR, on);
}

void SerialPort::setRts(bool on)
{
    setModemLine(TIOCM_RTS, on);
}

// Lines without modem signals, such as pseudo-terminals, refuse both calls; that is no failure.
void SerialPort::setModemLine(int line, bool on)
{
    int lines = 0;
    if (!isOpen() || ioctl(descriptor(), TIOCMGET, &lines) != 0)
        return;
    lines = on ? lines | line : lines & ~line;
    ioctl(descriptor(), TIOCMSET, &lines);
}

unsigned long SerialPort::lineStatus()
{
    int lines = 0;
    if (!isOpen() || ioctl(descriptor(), TIOCMGET, &lines) != 0)
        return 0;
    unsigned long status = 0;
    for (const LineBit &bit : lineBits) {
        if (lines & bit.modem)
            status |= bit.status;
    }
    return status;
}

void SerialPort::flush()
{
    if (isOpen())
        file->flush();
}

void SerialPort::ungetChar(char)
{
    qWarning("Posix_QextSerialPort: ungetChar() called on an unbuffered sequential device - "
             "operation is meaningless");
}
