#pragma once

#include "linefaults.h"
#include "replybuilder.h"
#include "requestreader.h"

#include <QElapsedTimer>
#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

namespace upssim {

class Simulator;

/**
 * One line to a Modbus client: a pseudo-terminal, or a TCP connection.
 *
 * Reads what has come and never waits for more: the lines share one thread.
 *
 * Threads:   the simulator's thread.
 * Ownership: owns the descriptor.
 */
class ModbusLink : public QObject
{
    Q_OBJECT

public:
    /** @param line     must not block
     *  @param address  unit that is answered to */
    ModbusLink(Simulator &simulator, modbus::Framing framing, Descriptor line, int address,
               QObject *parent);

    /** Since the last whole request, or since the link was made; ms. */
    qint64 idleTime() const { return m_idle.elapsed(); }

signals:
    /** The peer has gone, or cannot be followed; the link is of no more use. */
    void closed();

private:
    void readInput();
    void answer(QByteArray request);
    bool isOurs(int unit) const;
    void send(const QByteArray &bytes);
    void end();

    Simulator &m_simulator;
    const modbus::Framing m_framing;
    const int m_address;
    Descriptor m_line;
    ReplyBuilder m_replies;
    RequestReader m_requests;
    QSocketNotifier m_notifier;
    QTimer m_silence;
    QElapsedTimer m_idle;
};

} // namespace upssim
