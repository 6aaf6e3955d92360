#pragma once

#include "linefaults.h"

#include <QObject>
#include <QSocketNotifier>

#include <memory>
#include <modbus/modbus.h>

class Simulator;

/** A file descriptor that closes itself. */
class Descriptor
{
public:
    explicit Descriptor(int number = -1)
        : m_number(number)
    {
    }
    ~Descriptor();
    Descriptor(Descriptor &&other) noexcept;
    Descriptor &operator=(Descriptor &&other) noexcept;
    int number() const { return m_number; }
    bool valid() const { return m_number >= 0; }

private:
    int m_number;
};

using ModbusContext = std::unique_ptr<modbus_t, decltype(&modbus_free)>;

/**
 * One line to a Modbus client: a pseudo-terminal, or a TCP connection.
 *
 * libmodbus reads the requests from the line itself. Its replies go through a pair of sockets, so
 * that they can be spoilt on the way out.
 *
 * Threads:   the simulator's thread.
 * Ownership: owns the descriptor and the context.
 */
class ModbusLink : public QObject
{
    Q_OBJECT

public:
    /** @param address  unit that is answered to */
    ModbusLink(Simulator &simulator, Framing framing, ModbusContext context, Descriptor line,
               int address, QObject *parent);

signals:
    /** The peer has gone; the link is of no more use. */
    void closed();

private:
    void readRequest();
    void answer(QByteArray request);
    QByteArray reply(const QByteArray &request, int exception);
    void send(const QByteArray &bytes);

    Simulator &m_simulator;
    const Framing m_framing;
    const int m_address;
    Descriptor m_line;
    Descriptor m_replyIn;  // libmodbus writes here
    Descriptor m_replyOut; // and here it is read again
    ModbusContext m_context;
    QSocketNotifier m_notifier;
};
