// The service program on its own: switches, one instance, control socket, signals; without a bus.

#include "service/controlserver.h"
#include "service/servicecontroller.h"
#include "service/servicepaths.h"
#include "support/exampleprogram.h"
#include "support/guardedtest.h"

#include <QLocalSocket>

class tst_Service : public GuardedTest
{
    Q_OBJECT

private slots:
    void init()
    {
        GuardedTest::init();
        for (const char *variable : { "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME" })
            qputenv(variable, QFile::encodeName(path({})));
        for (const char *variable : { "DBUS_SESSION_BUS_ADDRESS", "NOTIFY_SOCKET" })
            qunsetenv(variable);
        m_controller = std::make_unique<ServiceController>(serviceName);
        m_controller->setScope(ServiceScope::User);
    }

    void commandLines()
    {
        const struct
        {
            const char *switches;
            int exitCode;
            const char *output;
        } rows[] = { { "-version", 0, "TesselServer 1.0" },
                     { "-help", 0, "-uninstall" },
                     { "-bogus", 2, "unknown switch \"-bogus\"" },
                     { "-pause -resume", 2, "too many" },
                     { "-command", 2, "needs a number" },
                     { "-command x", 2, "needs a number" },
                     { "", 1, "not supported" }, // starts it
                     { "-terminate", 1, "not supported" },
                     { "-install", 0, "not supported" },
                     { "-install root", 1, "cannot have" }, // a user's service
                     { "-uninstall", 0, "" },
                     { "-uninstall", 1, "not installed" } };
        for (const auto &row : rows) {
            ExampleProgram program(words(row.switches));
            QCOMPARE(program.exitCode(), row.exitCode);
            QVERIFY2(program.output().contains(row.output), qPrintable(program.output()));
        }
    }

    void worksWithoutManager()
    {
        ExampleProgram service(words("-exec"));
        QVERIFY(service.prints("start"));
        QVERIFY(m_controller->isRunning());
        QVERIFY(!m_controller->isInstalled());
        QVERIFY(m_controller->start());
        QVERIFY(m_controller->unchanged());
        QVERIFY(m_controller->pause());
        QVERIFY(m_controller->pause());
        QVERIFY(m_controller->unchanged());
        QVERIFY(m_controller->sendCommand(5));
        QVERIFY(service.prints("command 5"));
        QVERIFY2(m_controller->stop(), qPrintable(m_controller->errorString()));
        QCOMPARE(service.exitCode(), 0);
        QVERIFY(!m_controller->stop());
        QCOMPARE(m_controller->error(), ServiceError::NotSupported);
        for (const int number : { SIGTERM, SIGINT }) {
            ExampleProgram again(words("-exec"));
            QVERIFY(again.prints("start"));
            again.signal(number);
            QVERIFY(again.prints("stop"));
            QCOMPARE(again.exitCode(), 0);
        }
    }

    void hungCallback()
    {
        ExampleProgram service(words("-exec -- hang"));
        QVERIFY(service.prints("start"));
        m_controller->setTimeLimit(std::chrono::milliseconds(200));
        QVERIFY(!m_controller->sendCommand(13));
        QCOMPARE(m_controller->error(), ServiceError::TimedOut);
        QVERIFY(service.prints("command 13"));
        QVERIFY(!m_controller->stop());
        QCOMPARE(m_controller->error(), ServiceError::TimedOut);
        service.signal(SIGTERM);
        QCOMPARE(service.exitCode(), 6);
    }

    void oneInstance()
    {
        const QString socket = controlSocket(ServiceScope::User, serviceName);
        {
            ExampleProgram first(words("-exec"));
            QVERIFY(first.prints("start"));
            ExampleProgram second(words("-exec"));
            QVERIFY(second.prints("already running"));
            QCOMPARE(second.exitCode(), 4);
            QVERIFY2(m_controller->pause(), qPrintable(m_controller->errorString()));
        } // killed
        QVERIFY(QFileInfo::exists(socket));
        ExampleProgram next(words("-exec"));
        QVERIFY(next.prints("start"));
        QVERIFY2(m_controller->pause(), qPrintable(m_controller->errorString()));
        QCOMPARE(QFile::permissions(socket) & QFile::Permissions(0x77), QFile::Permissions());
    }

    void unusableFolder()
    {
        QVERIFY(writeFile(serviceName, {}));
        ExampleProgram service(words("-exec"));
        QVERIFY(service.prints("cannot listen"));
        QCOMPARE(service.exitCode(), 5);
    }

    void journalPriority()
    {
        constexpr char script[] =
            "JOURNAL_STREAM=$(stat -L -c %d:%i /proc/self/fd/2) exec \"$0\" -user -exec -- fail";
        QProcess shell;
        shell.start("/bin/sh",
                    words("-c")
                        + QStringList { QLatin1String(script), QStringLiteral(EXAMPLE_SERVICE) });
        QVERIFY(shell.waitForFinished());
        QCOMPARE(shell.exitCode(), 3);
        QCOMPARE(shell.readAllStandardError(),
                 QByteArray("<6>start fail\n<3>TesselServer did not start.\n"));
    }

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
               QByteArray("command 99999999999\n"), QByteArray("pause\0x\n", 8),
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
        QTRY_VERIFY(honest.bytesAvailable() == 2 * ControlLineLimit);
        QVERIFY(honest.readLine().startsWith("ok two lines yyy"));
    }

    void patience()
    {
        std::unique_ptr<QLocalSocket> leaving;
        ControlServer server(
            [&leaving](const ControlRequest &) {
                leaving.reset();
                QTest::qWait(200); // longer than the peer's time; a peer that left is deleted here
                return ControlReply { true, {} };
            },
            std::chrono::milliseconds(100));
        QCOMPARE(server.listen(path("s")), ControlServer::Outcome::Listening);
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
    }

    void othersUnitFileIsLeftAlone()
    {
        const QString folder = unitDirectory(ServiceScope::User);
        QVERIFY(QDir().mkpath(folder));
        const QString file = folder + '/' + unitName(serviceName);
        QVERIFY(writeFile(file, "[Service]\n"));
        QCOMPARE(ExampleProgram(words("-install")).exitCode(), 1);
        QCOMPARE(ExampleProgram(words("-uninstall")).exitCode(), 1);
        QCOMPARE(fileContents(file), QByteArray("[Service]\n"));
    }

    void programThatNoUnitTakes()
    {
        const QString program = path("a\"b");
        QVERIFY(QFile::copy(EXAMPLE_SERVICE, program));
        QCOMPARE(QProcess::execute(program, words("-user -install")), 1);
        QVERIFY(!QFileInfo::exists(unitDirectory(ServiceScope::User)));
    }

private:
    std::unique_ptr<ServiceController> m_controller;
};

QTEST_GUILESS_MAIN(tst_Service)
#include "tst_service.moc"
