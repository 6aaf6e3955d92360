#include "replybuilder.h"

#include <array>
#include <sys/socket.h>

namespace upssim {

ReplyBuilder::ReplyBuilder(modbus::Framing framing)
    : m_context(framing == modbus::Framing::Tcp ? modbus_new_tcp("127.0.0.1", 0)
                                                : modbus_new_rtu("unused", 9600, 'N', 8, 1),
                modbus_free)
{
    int pair[2] = { -1, -1 };
    if (!m_context
        || socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, pair) != 0) {
        qWarning("No pair of sockets: the link stays silent");
        return;
    }
    m_in = Descriptor(pair[0]);
    m_out = Descriptor(pair[1]);
    modbus_set_socket(m_context.get(), m_in.number());
}

QByteArray ReplyBuilder::reply(const QByteArray &request, int exception,
                               modbus_mapping_t *registers)
{
    if (!m_out.valid())
        return {};
    const auto bytes = reinterpret_cast<const quint8 *>(request.constData());
    if (exception != 0)
        modbus_reply_exception(m_context.get(), bytes, unsigned(exception));
    else
        modbus_reply(m_context.get(), bytes, request.size(), registers);
    std::array<char, MODBUS_MAX_ADU_LENGTH> buffer;
    const auto count = read(m_out.number(), buffer.data(), buffer.size());
    return count > 0 ? QByteArray(buffer.data(), int(count)) : QByteArray();
}

} // namespace upssim
