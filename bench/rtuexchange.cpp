// One RTU exchange over a pseudo-terminal: 8 bytes out, 255 bytes back.

#include "device.h"
#include "rows.h"

#include "modbus/commio.h"
#include "modbus/driverapi.h"
#include "serial/serialport.h"

#include <QEventLoop>
#include <QModbusReply>
#include <QModbusRtuSerialMaster>
#include <QSerialPort>
#include <QTimer>
#include <QVariant>

#include <chrono>
#include <fcntl.h>
#include <modbus/modbus.h>
#include <termios.h>
#include <unistd.h>

namespace {

constexpr int exchanges = 20; // a round
constexpr int replySize = 255;

class RawSerial
{
public:
    explicit RawSerial(const QString &path)
        : m_descriptor(open(path.toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_CLOEXEC))
    {
        termios raw {};
        cfmakeraw(&raw);
        cfsetspeed(&raw, B9600);
        raw.c_cc[VMIN] = 0;
        raw.c_cc[VTIME] = 10;
        tcsetattr(m_descriptor, TCSANOW, &raw);
    }
    ~RawSerial() { close(m_descriptor); }
    RawSerial(const RawSerial &) = delete;
    RawSerial &operator=(const RawSerial &) = delete;

    int read(char *buffer, int size) { return int(::read(m_descriptor, buffer, size_t(size))); }

    void exchange()
    {
        char buffer[512];
        if (write(m_descriptor, request.constData(), size_t(request.size())) != request.size())
            qFatal("bench: raw write");
        for (int got = 0; got < replySize;) {
            const int n = read(buffer + got, int(sizeof buffer) - got);
            if (n <= 0)
                qFatal("bench: raw read");
            got += n;
        }
    }

    void ask() { (void)!write(m_descriptor, request.constData(), size_t(request.size())); }

private:
    const QByteArray request = rtuRequest();
    int m_descriptor;
};

class OurSerial
{
public:
    explicit OurSerial(const QString &path)
    {
        if (!m_port.CommOpen(path, QStringLiteral("9600,n,8,1"), 1000))
            qFatal("bench: cannot open the port");
    }

    int read(char *buffer, int size) { return CommRead(&m_descriptor, buffer, size); }

    void ask() { CommWrite(&m_descriptor, request.data(), request.size()); }

    void exchange()
    {
        char buffer[512];
        ask();
        for (int got = 0; got < replySize;) {
            const int n = read(buffer + got, int(sizeof buffer) - got);
            if (n <= 0)
                qFatal("bench: port read");
            got += n;
        }
    }

private:
    QByteArray request = rtuRequest();
    SerialPort m_port;
    PortDescriptor m_descriptor { &m_port, CommRead, CommWrite };
};

class QtSerial
{
public:
    explicit QtSerial(const QString &path)
    {
        m_port.setPortName(path);
        if (!m_port.open(QIODevice::ReadWrite))
            qFatal("bench: QSerialPort: %s", qPrintable(m_port.errorString()));
    }

    void exchange()
    {
        m_port.write(request);
        for (int got = 0; got < replySize; got += m_port.readAll().size()) {
            if (!m_port.bytesAvailable() && !m_port.waitForReadyRead(1000))
                qFatal("bench: QSerialPort read");
        }
    }

private:
    const QByteArray request = rtuRequest();
    QSerialPort m_port;
};

class LibmodbusSerial
{
public:
    explicit LibmodbusSerial(const QString &path)
        : m_context(modbus_new_rtu(path.toLocal8Bit().constData(), 9600, 'N', 8, 1))
    {
        modbus_set_slave(m_context, 1);
        if (modbus_connect(m_context) != 0)
            qFatal("bench: libmodbus connect");
    }
    ~LibmodbusSerial()
    {
        modbus_close(m_context);
        modbus_free(m_context);
    }
    LibmodbusSerial(const LibmodbusSerial &) = delete;
    LibmodbusSerial &operator=(const LibmodbusSerial &) = delete;

    void exchange()
    {
        uint16_t values[125];
        if (modbus_read_registers(m_context, 0, 125, values) != 125)
            qFatal("bench: libmodbus read");
    }

private:
    modbus_t *m_context;
};

class QtModbusSerial
{
public:
    explicit QtModbusSerial(const QString &path)
    {
        m_master.setConnectionParameter(QModbusDevice::SerialPortNameParameter, path);
        m_master.setConnectionParameter(QModbusDevice::SerialBaudRateParameter, 115200);
        if (!m_master.connectDevice())
            qFatal("bench: QModbusRtuSerialMaster");
    }

    void exchange()
    {
        QEventLoop loop;
        QModbusReply *reply =
            m_master.sendReadRequest({ QModbusDataUnit::HoldingRegisters, 0, 125 }, 1);
        QObject::connect(reply, &QModbusReply::finished, &loop, &QEventLoop::quit);
        loop.exec();
        if (reply->error() != QModbusDevice::NoError)
            qFatal("bench: QModbusRtuSerialMaster: %s", qPrintable(reply->errorString()));
        delete reply;
    }

private:
    QModbusRtuSerialMaster m_master;
};

template <typename Party> std::function<void()> round(Party &party)
{
    return [&party] {
        for (int i = 0; i < exchanges; ++i)
            party.exchange();
    };
}

// Waits for the whole reply, then asks for more than it is.
template <typename Party> std::function<void()> shortRead(Party &party)
{
    return [&party] {
        char buffer[512];
        party.ask();
        for (int got = 0; got < replySize;)
            got += party.read(buffer, int(sizeof buffer));
    };
}

} // namespace

void benchRtuExchange(Runner &runner)
{
    pinToOneProcessor();
    PtyDevice rawDevice, ourDevice, serialDevice, modbusDevice, masterDevice;
    RawSerial raw(rawDevice.path());
    OurSerial ours(ourDevice.path());
    QtSerial serial(serialDevice.path());
    LibmodbusSerial modbus(modbusDevice.path());
    QtModbusSerial master(masterDevice.path());
    Row row { QStringLiteral("RTU exchange over a pty, 8 bytes out, 255 back, traffic log on"),
              { { QStringLiteral("raw read/write"), Role::Limit, exchanges, round(raw) },
                { QStringLiteral("CommRead/CommWrite"), Role::Ours, exchanges, round(ours) },
                { QStringLiteral("QSerialPort"), Role::Peer, exchanges, round(serial) },
                { QStringLiteral("libmodbus"), Role::Other, exchanges, round(modbus) },
                { QStringLiteral("QModbusRtuSerialMaster"), Role::Other, exchanges,
                  round(master) } } };
    row.clock = Clock::Wall;
    row.toLimit = 1.6;
    row.toPeer = 1.3;
    runner.run(row);
    unpin();
}

void benchShortRead(Runner &runner)
{
    pinToOneProcessor();
    PtyDevice rawDevice, ourDevice;
    RawSerial raw(rawDevice.path());
    OurSerial ours(ourDevice.path());
    Row row { QStringLiteral("A read that asks for 512 bytes when 255 arrive"),
              { { QStringLiteral("raw read/write"), Role::Limit, 1, shortRead(raw) },
                { QStringLiteral("CommRead"), Role::Ours, 1, shortRead(ours) } } };
    row.clock = Clock::Wall;
    row.belowNs = 1e6;
    runner.run(row);
    unpin();
}
