#pragma once

#include "modbusadu.h"
#include "upsmodel.h"

#include <QHash>
#include <QVector>

#include <memory>
#include <modbus/modbus.h>
#include <optional>

namespace upssim {

/** What one Modbus request asks for. */
struct RegisterRequest
{
    int function = 0;
    int address = 0;
    int count = 0;
    QVector<quint16> values; ///< to be written; empty for a read

    /** Reads a request from its frame; one that is too short or too long for its function has no
     *  count. */
    static RegisterRequest fromAdu(const modbus::Adu &adu);
};

/** A write that came, and what became of it. */
struct RegisterWrite
{
    bool command = false; ///< a command's code, not settings
    int id = 0;           ///< of the first setting
    QVector<quint16> values;
    int exception = 0; ///< 0 when it was carried out
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

    /** What a read of `id` sees; nothing when no register has that identifier. */
    std::optional<quint16> value(int id) const;

    /** Has reads of `id` see `raw`, whatever the UPS says, until a client writes the register or
     *  releaseForced(). @return false when no register has that identifier */
    bool force(int id, quint16 raw);
    void releaseForced() { m_forced.clear(); }

    /** Refuses the next `count` writes with exception 4, all of them when `count` is negative. */
    void refuseWrites(int count) { m_refusals = count; }

    /** The writes that came so far, refused ones included, and the last of them. */
    int writeCount() const { return m_writeCount; }
    const RegisterWrite &lastWrite() const { return m_lastWrite; }

    /** What libmodbus builds replies from; filled only where handle() was asked. */
    modbus_mapping_t *mapping() const { return m_mapping.get(); }

private:
    int readInputs(const RegisterRequest &request);
    int readSettings(const RegisterRequest &request);
    int readEvents(const RegisterRequest &request);
    int write(const RegisterRequest &request);
    int carryOut(const RegisterRequest &request);
    int writeCommand(quint16 code);
    int writeSettings(int first, const QVector<quint16> &values);
    bool hasInput(int address) const;
    quint16 input(int address) const;
    quint16 measurement(int id) const;
    quint16 historyField(int offset) const;

    UpsModel &m_model;
    quint16 m_lastCommand = 0xFFFF;
    QHash<int, quint16> m_forced; // by identifier
    int m_refusals = 0;           // -1: no end
    int m_writeCount = 0;
    RegisterWrite m_lastWrite;
    std::unique_ptr<modbus_mapping_t, decltype(&modbus_mapping_free)> m_mapping;
};

} // namespace upssim
