#pragma once

#include "descriptor.h"
#include "modbusadu.h"

#include <QByteArray>

#include <memory>
#include <modbus/modbus.h>

namespace upssim {

using ModbusContext = std::unique_ptr<modbus_t, decltype(&modbus_free)>;

/**
 * Has libmodbus build replies: into a pair of sockets, so that they can be spoilt on the way out,
 * and by somebody else's code, so that an error of ours does not answer itself.
 *
 * Threads: one thread only; never waits.
 * Errors:  without the sockets every reply is empty; said once, by the constructor.
 */
class ReplyBuilder
{
public:
    explicit ReplyBuilder(modbus::Framing framing);

    /** The reply to `request`, a whole frame.
     *  @param exception  code to refuse it with, or 0
     *  @param registers  what reads see */
    QByteArray reply(const QByteArray &request, int exception, modbus_mapping_t *registers);

private:
    ModbusContext m_context;
    Descriptor m_in; // libmodbus writes here
    Descriptor m_out;
};

} // namespace upssim
