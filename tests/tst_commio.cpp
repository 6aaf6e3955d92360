// What drivers read and write with, against Modbus devices and odd peers on real sockets.

#include "guardedtest.h"
#include "modbus/commio.h"
#include "modbus/modbusframe.h"
#include "serial/serialport.h"
#include "tcpconnection.h"

#include <QTcpSocket>

#include <sys/socket.h>
#include <thread>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

unsigned char *bytesOf(char *buffer)
{
    return reinterpret_cast<unsigned char *>(buffer);
}

} // namespace

class tst_CommIo : public GuardedTest
{
    Q_OBJECT

private slots:
    void tcpReplies_data()
    {
        // frame: without CRC, none when the read fails; waits: ms
        const Columns<QByteArray, QByteArray, int> row("reply", "frame", "waits");
        const auto hex = [](const char *bytes) { return QByteArray::fromHex(bytes); };
        row("registers", hex("000100000007010304000a0014"), hex("010304000a0014"), 0);
        row("silence", {}, {}, 1000);
        row("a fragment", "1", {}, 100);
        row("half of it", hex("0001000000070103"), "\1\3", 100);
        row("no registers", hex("000000000003010300"), hex("010300"), 0);
        row("a mere header", hex("000100000000"), {}, 0);
        row("a unit alone", QByteArray(7, 'u'), "u", 0);
        row("the longest", QByteArray(1000, 'x'), QByteArray(994, 'x'), 0);
        row("more than that", QByteArray(1020, 'y'), QByteArray(994, 'y'), 0);
    }

    void tcpReplies()
    {
        QFETCH(QByteArray, reply);
        QFETCH(QByteArray, frame);
        QFETCH(int, waits);
        int length = 0;
        qint64 took = 0;
        QByteArray out;
        for (int i = 0; i < 5 && (i == 0 || took >= waits + 90); ++i) { // late on a busy machine
            Connection connection;
            QVERIFY(connection.ok);
            connection.near.setReadBufferSize(1024);
            connection.far->write(reply);
            connection.far->flush();
            out.fill('z', 1100);
            Stopwatch clock;
            length = TcpCommRead(&connection.handle, out.data(), 0);
            took = clock.elapsed();
        }
        QVERIFY2(took >= waits - 10 && took < waits + 90, qPrintable(QString::number(took)));
        QCOMPARE(length, frame.isEmpty() ? -5 : frame.size() + 2);
        QVERIFY(out.startsWith(frame));
        QVERIFY(out.endsWith(QByteArray(out.size() - qMax(0, length), 'z')));
        QCOMPARE(checkModbufCRC(bytesOf(out.data()), length), length >= 4 ? 0 : -1);
    }

    void tcpReplyInPieces()
    {
        Connection connection;
        QVERIFY(connection.ok);
        const QByteArray reply = QByteArray::fromHex("000100000007010304000a0014");
        std::thread peer([&] {
            for (const char byte : reply) {
                std::this_thread::sleep_for(5ms);
                send(int(connection.far->socketDescriptor()), &byte, 1, MSG_NOSIGNAL);
            }
        });
        QByteArray out(1000, '\0');
        const int length = TcpCommRead(&connection.handle, out.data(), 0);
        peer.join();
        QCOMPARE(length, 9);
        QVERIFY(out.startsWith(reply.mid(6)));
    }

    void lateTcpReply_data()
    {
        // takenIn: by an event loop before the next request
        const Columns<bool> row("takenIn");
        row("still in the system", false);
        row("in the socket", true);
    }

    // A driver that reads two registers, one after the other, and can tell replies by length only.
    void lateTcpReply()
    {
        QFETCH(bool, takenIn);
        Connection connection;
        QVERIFY(connection.ok);
        const auto answer = [&](char value) {
            const QByteArray reply =
                QByteArray::fromHex("0000000000050103020000").replace(10, 1, &value, 1);
            send(int(connection.far->socketDescriptor()), reply.constData(), size_t(reply.size()),
                 MSG_NOSIGNAL);
        };
        QByteArray out(1000, '\0');
        const auto ask = [&](char value, std::chrono::milliseconds delay) {
            QByteArray request = QByteArray::fromHex("01030000000184 0a");
            TcpCommWrite(&connection.handle, request.data(), 8);
            std::thread peer([&] {
                std::this_thread::sleep_for(delay);
                answer(value);
            });
            if (delay == 0ms) // faster than the driver
                peer.join();
            const int length = TcpCommRead(&connection.handle, out.data(), 0);
            if (peer.joinable())
                peer.join();
            return length;
        };
        answer('l'); // to a request that was given up
        if (takenIn)
            QTRY_VERIFY(connection.near.bytesAvailable() > 0);
        QCOMPARE(ask('a', 20ms), 7 + 11); // rejected for its length
        for (const char value : { 'b', 'c', 'd' }) {
            QCOMPARE(ask(value, value == 'c' ? 0ms : 20ms), 7);
            QCOMPARE(out.at(4), value);
        }
    }

    // What was not sent in time is not sent at all.
    void peerThatTakesNothing()
    {
        Connection connection;
        QVERIFY(connection.ok);
        connection.far->setReadBufferSize(1);
        char frame[996] = {};
        int written = 996;
        for (int i = 0; i < 20'000 && written == 996; ++i)
            written = TcpCommWrite(&connection.handle, frame, 996);
        QCOMPARE(written, -1);
        QCOMPARE(connection.near.bytesToWrite(), 0);
        QCOMPARE(connection.near.state(), QAbstractSocket::UnconnectedState);
    }

    void tcpRequests_data()
    {
        const Columns<QByteArray, QByteArray> row("frame", "sent");
        const auto hex = [](const char *bytes) { return QByteArray::fromHex(bytes); };
        row("a read", hex("01030000000ac5cd"), hex("00000000000601030000000a"));
        row("a CRC alone", "fr", QByteArray(6, '\0'));
        row("less than a CRC", "f", hex("0000000000ff"));
        row("the longest", QByteArray(996, 'l'), hex("0000000000e2") + QByteArray(994, 'l'));
    }

    void tcpRequests()
    {
        QFETCH(QByteArray, frame);
        QFETCH(QByteArray, sent);
        Connection connection;
        QVERIFY(connection.ok);
        QCOMPARE(TcpCommWrite(&connection.handle, frame.data(), frame.size()), frame.size());
        // Without an event loop in between: it has really left.
        QByteArray arrived;
        while (arrived.size() < sent.size() && connection.far->waitForReadyRead(2000))
            arrived += connection.far->readAll();
        QCOMPARE(arrived, sent);
    }

    void refusals()
    {
        Connection connection;
        SerialPort closed;
        QTcpSocket unconnected;
        char frame[8] = {};
        PortDescriptor none {};
        PortDescriptor serial { &closed, CommRead, CommWrite };
        PortDescriptor tcp { &unconnected, TcpCommRead, TcpCommWrite };
        const QList<int> refused { -1, -1, -5, -1 };
        const auto results = [](PortDescriptor *handle, char *buffer) {
            return QList<int> { CommRead(handle, buffer, 8), CommWrite(handle, buffer, 8),
                                TcpCommRead(handle, buffer, 8), TcpCommWrite(handle, buffer, 8) };
        };
        for (PortDescriptor *handle :
             { static_cast<PortDescriptor *>(nullptr), &none, &serial, &tcp })
            QCOMPARE(results(handle, frame), refused);
        QCOMPARE(results(&connection.handle, nullptr), refused);
        for (const int length : { 997, INT_MAX, -1, INT_MIN })
            QCOMPARE(TcpCommWrite(&connection.handle, frame, length), -1);
        QCOMPARE(CommRead(&connection.handle, frame, -1), -1);
        QCOMPARE(CommWrite(&connection.handle, frame, -1), -1);
    }
};

QTEST_GUILESS_MAIN(tst_CommIo)
#include "tst_commio.moc"
