// The control socket of a service, and what peers may try with it.

#include "controlserver.h"
#include "guardedtest.h"

#include <QLocalSocket>

class tst_ControlSocket : public GuardedTest
{
    Q_OBJECT

private slots:
    void hostilePeers()
    {
        int calls = 0;
        ControlServer server([&calls](const ControlRequest &) {
            ++calls;
            return ControlReply { true, QStringLiteral("two\nlines ") + QString(500, 'y') };
        });
        const QString socket = path("s");
        QCOMPARE(server.listen(socket), ControlServer::Outcome::Listening);
        for (const QByteArray &bytes :
             { QByteArray("\n"), QByteArray("reboot\n"), QByteArray("pause 1\n"),
               QByteArray("command\n"), QByteArray("command \n"),
               QByteArray("command 99999999999\n"), QByteArray("command  +5 \n"),
               QByteArray("command +5\n"), QByteArray("command 5 \n"), QByteArray("pause\0x\n", 8),
               QByteArray(1'000'000, 'x'), "command " + QByteArray(300, '0') + "1\n" }) {
            QLocalSocket peer;
            peer.connectToServer(socket);
            peer.write(bytes);
            QTRY_COMPARE(peer.state(), QLocalSocket::UnconnectedState);
            QCOMPARE(calls, 0);
        }
        QLocalSocket honest;
        honest.connectToServer(socket);
        honest.write("pau");
        honest.flush();
        honest.write("se\ncommand -5\n");
        QTRY_COMPARE(calls, 2);
        QTRY_VERIFY(honest.bytesAvailable() == 2 * controlLineLimit);
        QVERIFY(honest.readLine().startsWith("ok two lines yyy"));
    }

    void patience()
    {
        std::unique_ptr<QLocalSocket> leaving;
        auto server = std::make_unique<ControlServer>(
            [&leaving](const ControlRequest &) {
                leaving.reset();
                QTest::qWait(200); // longer than the peer's time; a peer that left is deleted here
                return ControlReply { true, {} };
            },
            std::chrono::milliseconds(100));
        QCOMPARE(server->listen(path("s")), ControlServer::Outcome::Listening);
        const auto peerThatSays = [this](const char *line) {
            auto peer = std::make_unique<QLocalSocket>();
            peer->connectToServer(path("s"));
            peer->write(line);
            peer->flush();
            return peer;
        };
        const auto patient = peerThatSays("terminate\n");
        QTRY_COMPARE(patient->bytesAvailable(), 3);
        leaving = peerThatSays("state\n");
        QTRY_VERIFY(!leaving);
        const auto silent = peerThatSays("");
        QTRY_COMPARE(silent->state(), QLocalSocket::UnconnectedState);
        QCOMPARE(patient->state(), QLocalSocket::ConnectedState);
        server.reset();
        QTRY_COMPARE(patient->bytesAvailable(), 6); // the end that it waits for
    }

    void slowPeers()
    {
        constexpr int placeCount = 16;
        ControlServer patient(agree, std::chrono::minutes(1));
        QCOMPARE(patient.listen(path("s")), ControlServer::Outcome::Listening);
        std::vector<std::unique_ptr<QLocalSocket>> peers;
        for (int i = 0; i <= placeCount; ++i) {
            peers.push_back(connected(path("s")));
            QTest::qWait(2); // so that one is the oldest
        }
        peers.back()->write("terminate\n");
        QTRY_COMPARE(peers.back()->bytesAvailable(), 3);
        QTRY_COMPARE(peers.front()->state(), QLocalSocket::UnconnectedState);
        peers.at(1)->write("state\n");
        QTRY_COMPARE(peers.at(1)->bytesAvailable(), 3);
        // Nobody takes the place of those who wait for the end.
        for (int i = 0; i < 3 * placeCount; ++i)
            peers.push_back(connected(path("s")));
        QTRY_COMPARE(peers.at(1)->state(), QLocalSocket::UnconnectedState);
        QCOMPARE(peers.at(placeCount)->state(), QLocalSocket::ConnectedState);
    }

    void dripFeed()
    {
        ControlServer server(agree, std::chrono::milliseconds(200));
        QCOMPARE(server.listen(path("s")), ControlServer::Outcome::Listening);
        const auto peer = connected(path("s"));
        QTimer drip;
        connect(&drip, &QTimer::timeout, peer.get(), [&peer] { peer->write("x"); });
        drip.start(20);
        QTRY_COMPARE_WITH_TIMEOUT(peer->state(), QLocalSocket::UnconnectedState, 1'000);
    }

    void peerThatDoesNotRead()
    {
        constexpr int requestCount = 200'000; // more than what is on the way holds
        int calls = 0;
        ControlServer server(
            [&calls](const ControlRequest &) {
                ++calls;
                return ControlReply { true, QString(500, 'y') };
            },
            std::chrono::milliseconds(500));
        QCOMPARE(server.listen(path("s")), ControlServer::Outcome::Listening);
        const auto deafPeer = connected(path("s"));
        deafPeer->setReadBufferSize(1);
        deafPeer->write(QByteArray("state\n").repeated(requestCount));
        QTRY_COMPARE(deafPeer->state(), QLocalSocket::UnconnectedState);
        QVERIFY2(calls < 5'000, qPrintable(QString::number(calls)));
        // One that reads gets all of them, however many it asks for in one go.
        const auto eagerPeer = connected(path("s"));
        eagerPeer->write(QByteArray("state\n").repeated(5'000));
        QTRY_COMPARE(eagerPeer->bytesAvailable(), qint64(5'000) * controlLineLimit);
    }

private:
    static ControlReply agree(const ControlRequest &) { return { true, {} }; }

    static std::unique_ptr<QLocalSocket> connected(const QString &socket)
    {
        auto peer = std::make_unique<QLocalSocket>();
        peer->connectToServer(socket);
        return peer;
    }
};

QTEST_GUILESS_MAIN(tst_ControlSocket)
#include "tst_controlsocket.moc"
