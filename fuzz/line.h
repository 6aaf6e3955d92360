#pragma once

#include "modbus/driverapi.h"

#include <QByteArray>
#include <QIODevice>

/**
 * A device behind a port, whose answers the input gives.
 *
 * Each answer begins with a byte. An even one says how many raw bytes follow, in halves; an odd
 * one stands for a proper answer to the last request, its data taken from what follows. With the
 * input's end the port fails.
 */
class FuzzLine : public QIODevice
{
public:
    enum class Transport { Rtu, Tcp };

    FuzzLine(Transport transport, const QByteArray &input);

    /** What a driver is given. Ownership: valid as long as this. */
    PortDescriptor *descriptor() { return &m_descriptor; }

    bool isSequential() const override { return true; }

protected:
    qint64 readData(char *data, qint64 maxSize) override;
    qint64 writeData(const char *data, qint64 length) override;

private:
    QByteArray take(int count);
    QByteArray properAnswer();

    const Transport m_transport;
    QByteArray m_input;
    QByteArray m_request; // unit and PDU
    PortDescriptor m_descriptor;
};
