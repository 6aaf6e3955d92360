// What a TCP peer sends, and what a driver has sent to it.
#include "modbus/commio.h"
#include "modbus/modbusframe.h"
#include "targets.h"

#include <QBuffer>

#include <vector>

void fuzzTcpReply(const QByteArray &input)
{
    QBuffer device;
    device.setData(input);
    device.open(QIODevice::ReadWrite);
    QIODevice *handle = &device;
    for (bool more = true; more;) {
        std::vector<char> frame(996); // all that a driver has to offer
        const qint64 before = device.bytesAvailable();
        const int length = TcpCommRead(&handle, frame.data(), 0);
        more = length > 0;
        require(more ? length == std::min<qint64>(before, 1000) - 4 : length == -5 && before <= 6);
        require(!more || length < 4
                || checkModbufCRC(reinterpret_cast<unsigned char *>(frame.data()), length) == 0);
    }
    device.seek(0);
    std::vector<char> request(input.begin(), input.end());
    const int size = int(request.size());
    if (size == 0)
        return;
    require(TcpCommWrite(&handle, request.data(), size) == (size <= 996 ? size : -1));
}
