#include "line.h"

#include "modbus/commio.h"
#include "modbus/modbusframe.h"

#include <algorithm>

namespace {

constexpr int crcLength = 2;
constexpr int headerLength = 6;

} // namespace

FuzzLine::FuzzLine(Transport transport, const QByteArray &input)
    : m_transport(transport)
    , m_input(input)
    , m_descriptor(
          transport == Transport::Tcp
              ? PortDescriptor { static_cast<QIODevice *>(this), TcpCommRead, TcpCommWrite }
              : PortDescriptor { static_cast<QIODevice *>(this), CommRead, CommWrite })
{
    open(ReadWrite | Unbuffered);
}

QByteArray FuzzLine::take(int count)
{
    const QByteArray taken = m_input.left(count);
    m_input.remove(0, count);
    return taken;
}

QByteArray FuzzLine::properAnswer()
{
    if (m_request.size() < 6)
        return {};
    const int function = m_request.at(1);
    if (function > 4)
        return m_request.left(6);
    const int count = int(quint8(m_request.at(4))) << 8 | quint8(m_request.at(5));
    const int bytes = std::min(function == 2 ? (count + 7) / 8 : 2 * count, 250);
    return m_request.left(2) + char(bytes) + take(bytes).leftJustified(bytes, '\0');
}

qint64 FuzzLine::readData(char *data, qint64 maxSize)
{
    if (m_input.isEmpty())
        return -1;
    const auto form = quint8(take(1).at(0));
    QByteArray answer = form & 1 ? properAnswer() : take(form / 2);
    if (form & 1 && m_transport == Transport::Tcp) {
        answer.prepend(QByteArray(headerLength, '\0'));
    } else if (form & 1) {
        answer.append(crcLength, '\0');
        setModbusCRC(reinterpret_cast<unsigned char *>(answer.data()), answer.size());
    }
    if (answer.isEmpty())
        return -1; // nothing yet: a driver would wait
    const qint64 count = std::min(qint64(answer.size()), maxSize);
    std::copy_n(answer.constData(), count, data);
    return count;
}

qint64 FuzzLine::writeData(const char *data, qint64 length)
{
    m_request = QByteArray(data, int(length));
    if (m_transport == Transport::Tcp)
        m_request.remove(0, headerLength);
    return length;
}
