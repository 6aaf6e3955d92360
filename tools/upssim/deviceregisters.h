#pragma once

#include "upsmodel.h"

#include <QVector>

#include <memory>
#include <modbus/modbus.h>

/** What one Modbus request asks for. */
struct RegisterRequest
{
    int function = 0;
    int address = 0;
    int count = 0;
    QVector<quint16> values; ///< to be written; empty for a read

    /** Reads a request from its PDU, which libmodbus has checked for completeness. */
    static RegisterRequest fromPdu(const quint8 *pdu);
};

/**
 * The UPS as registers: what reads see and what writes do (tools/registermap.h).
 *
 * Threads:   the model's thread.
 * Ownership: the model stays the caller's.
 */
class DeviceRegisters
{
public:
    explicit DeviceRegisters(UpsModel &model);

    /** Carries out the writes of `request`, or readies the mapping for what it reads.
     *  A write that is refused changes nothing.
     *  @return 0, or the exception code to answer with */
    int handle(const RegisterRequest &request);

    /** What libmodbus builds replies from; filled only where handle() was asked. */
    modbus_mapping_t *mapping() const { return m_mapping.get(); }

private:
    int readInputs(const RegisterRequest &request);
    int readSettings(const RegisterRequest &request);
    int readEvents(const RegisterRequest &request);
    int write(const RegisterRequest &request);
    int writeCommand(quint16 code);
    bool hasInput(int address) const;
    quint16 input(int address) const;
    quint16 historyField(int offset) const;

    UpsModel &m_model;
    quint16 m_lastCommand = 0xFFFF;
    std::unique_ptr<modbus_mapping_t, decltype(&modbus_mapping_free)> m_mapping;
};
