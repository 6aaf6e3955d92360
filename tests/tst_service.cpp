// The service program on its own: switches, one instance, control socket, signals; without a bus.

#include "service/controlserver.h"
#include "service/servicecontroller.h"
#include "service/servicepaths.h"
#include "support/exampleprogram.h"
#include "support/warningguard.h"

#include <QFile>
#include <QFileInfo>
#include <QLocalSocket>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>
#include <optional>

namespace {

const QString serviceName = QStringLiteral("TesselServer");

} // namespace

class tst_Service : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { QCOMPARE(m_guard->unexpected().join(QLatin1Char('\n')), QString()); }

    void commandLines_data();
    void commandLines();
    void worksWithoutManager();
    void signalsStopIt_data();
    void signalsStopIt();
    void hungCallback();
    void oneInstance();
    void crashLeavesNothing();
    void liveSocketIsLeftAlone();
    void unusableFolder();
    void journalPriority();
    void hostilePeers_data();
    void hostilePeers();
    void silentPeers();
    void othersUnitFileIsLeftAlone();
    void programThatNoUnitTakes();

private:
    std::optional<WarningGuard> m_guard;
    std::unique_ptr<QTemporaryDir> m_folder; // XDG_RUNTIME_DIR and XDG_CONFIG_HOME
    std::unique_ptr<ServiceController> m_controller;
};

void tst_Service::init()
{
    m_guard.emplace();
    m_folder = std::make_unique<QTemporaryDir>();
    for (const char *variable : { "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME" })
        qputenv(variable, QFile::encodeName(m_folder->path()));
    for (const char *variable : { "DBUS_SESSION_BUS_ADDRESS", "NOTIFY_SOCKET" })
        qunsetenv(variable);
    m_controller = std::make_unique<ServiceController>(serviceName);
    m_controller->setScope(ServiceScope::User);
}

void tst_Service::commandLines_data()
{
    QTest::addColumn<QString>("switches");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("output");
    QTest::newRow("version") << "-version" << 0 << "TesselServer 1.0";
    QTest::newRow("help") << "-help" << 0 << "-uninstall";
    QTest::newRow("unknown switch") << "-bogus" << 2 << "unknown switch \"-bogus\"";
    QTest::newRow("two switches") << "-pause -resume" << 2 << "too many";
    QTest::newRow("command without number") << "-command" << 2 << "needs a number";
    QTest::newRow("command with a word") << "-command x" << 2 << "needs a number";
    QTest::newRow("start without a manager") << "" << 1 << "not supported";
    QTest::newRow("terminate without a service") << "-terminate" << 1 << "not supported";
    QTest::newRow("install without a manager") << "-install" << 0 << "not supported";
    QTest::newRow("account of a user's service") << "-install root" << 1 << "cannot have";
    QTest::newRow("remove what is not there") << "-uninstall" << 1 << "not installed";
}

void tst_Service::commandLines()
{
    QFETCH(QString, switches);
    QFETCH(int, exitCode);
    QFETCH(QString, output);
    ExampleProgram program(words(qPrintable(switches)));
    QCOMPARE(program.exitCode(), exitCode);
    QVERIFY2(program.output().contains(output), qPrintable(program.output()));
}

void tst_Service::worksWithoutManager()
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
}

void tst_Service::signalsStopIt_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
}

void tst_Service::signalsStopIt()
{
    QFETCH(int, number);
    ExampleProgram service(words("-exec"));
    QVERIFY(service.prints("start"));
    service.signal(number);
    QVERIFY(service.prints("stop"));
    QCOMPARE(service.exitCode(), 0);
}

void tst_Service::hungCallback()
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

void tst_Service::oneInstance()
{
    ExampleProgram first(words("-exec"));
    QVERIFY(first.prints("start"));
    ExampleProgram second(words("-exec"));
    QVERIFY(second.prints("already running"));
    QCOMPARE(second.exitCode(), 4);
    QVERIFY2(m_controller->pause(), qPrintable(m_controller->errorString()));
}

void tst_Service::crashLeavesNothing()
{
    {
        ExampleProgram service(words("-exec"));
        QVERIFY(service.prints("start"));
    } // killed
    QVERIFY(QFileInfo::exists(controlSocket(ServiceScope::User, serviceName)));
    ExampleProgram next(words("-exec"));
    QVERIFY(next.prints("start"));
    QVERIFY2(m_controller->pause(), qPrintable(m_controller->errorString()));
    const auto mode = QFile::permissions(controlSocket(ServiceScope::User, serviceName));
    QVERIFY(
        !(mode & (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther)));
}

void tst_Service::liveSocketIsLeftAlone()
{
    QVERIFY(QDir(m_folder->path()).mkdir(serviceName));
    ControlServer other([](const ControlRequest &) { return ControlReply {}; });
    QCOMPARE(other.listen(controlSocket(ServiceScope::User, serviceName)),
             ControlServer::Outcome::Listening);
    ExampleProgram service(words("-exec"));
    QCOMPARE(service.exitCode(), 4);
    QLocalSocket peer;
    peer.connectToServer(controlSocket(ServiceScope::User, serviceName));
    QVERIFY(peer.waitForConnected());
}

void tst_Service::unusableFolder()
{
    QFile file(m_folder->filePath(serviceName));
    QVERIFY(file.open(QIODevice::WriteOnly));
    ExampleProgram service(words("-exec"));
    QVERIFY(service.prints("cannot listen"));
    QCOMPARE(service.exitCode(), 5);
}

void tst_Service::journalPriority()
{
    constexpr char script[] =
        "JOURNAL_STREAM=$(stat -L -c %d:%i /proc/self/fd/2) exec \"$0\" -user -exec -- fail";
    QProcess shell;
    shell.start(QStringLiteral("/bin/sh"),
                words("-c")
                    + QStringList { QLatin1String(script), QStringLiteral(EXAMPLE_SERVICE) });
    QVERIFY(shell.waitForFinished());
    QCOMPARE(shell.exitCode(), 3);
    QCOMPARE(shell.readAllStandardError(),
             QByteArray("<6>start fail\n<3>TesselServer did not start.\n"));
}

void tst_Service::hostilePeers_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty line") << QByteArray("\n");
    QTest::newRow("unknown word") << QByteArray("reboot\n");
    QTest::newRow("operand that does not belong") << QByteArray("pause 1\n");
    QTest::newRow("missing operand") << QByteArray("command\n");
    QTest::newRow("empty operand") << QByteArray("command \n");
    QTest::newRow("number out of range") << QByteArray("command 99999999999\n");
    QTest::newRow("two numbers") << QByteArray("command 1 2\n");
    QTest::newRow("zero byte") << QByteArray("pause\0x\n", 8);
    QTest::newRow("line that is too long") << QByteArray(1'000'000, 'x');
    QTest::newRow("line just too long") << QByteArray("command ") + QByteArray(300, '0') + "1\n";
}

void tst_Service::hostilePeers()
{
    QFETCH(QByteArray, bytes);
    int calls = 0;
    ControlServer server([&calls](const ControlRequest &) {
        ++calls;
        return ControlReply { true,
                              QStringLiteral("two\nlines ") + QString(500, QLatin1Char('y')) };
    });
    const QString path = m_folder->filePath(QStringLiteral("s"));
    QCOMPARE(server.listen(path), ControlServer::Outcome::Listening);
    QLocalSocket peer;
    peer.connectToServer(path);
    peer.write(bytes);
    QTRY_COMPARE(peer.state(), QLocalSocket::UnconnectedState);
    QCOMPARE(calls, 0);

    QLocalSocket honest;
    honest.connectToServer(path);
    honest.write("pau");
    honest.flush();
    honest.write("se\ncommand -5\n");
    QTRY_COMPARE(calls, 2);
    QTRY_VERIFY(honest.bytesAvailable() == 2 * ControlLineLimit);
    QVERIFY(honest.readLine().startsWith("ok two lines yyy"));
}

void tst_Service::silentPeers()
{
    ControlServer server(
        [](const ControlRequest &) {
            return ControlReply { true, {} };
        },
        std::chrono::milliseconds(200));
    const QString path = m_folder->filePath(QStringLiteral("s"));
    QCOMPARE(server.listen(path), ControlServer::Outcome::Listening);
    QLocalSocket silent[40];
    for (QLocalSocket &peer : silent)
        peer.connectToServer(path);
    for (QLocalSocket &peer : silent)
        QTRY_COMPARE(peer.state(), QLocalSocket::UnconnectedState);
    QLocalSocket honest;
    honest.connectToServer(path);
    honest.write("state\n");
    QTRY_COMPARE(honest.bytesAvailable(), 3);
}

void tst_Service::othersUnitFileIsLeftAlone()
{
    const QString folder = unitDirectory(ServiceScope::User);
    QVERIFY(QDir().mkpath(folder));
    QFile file(folder + QLatin1Char('/') + unitName(serviceName));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[Service]\n");
    file.close();
    QCOMPARE(ExampleProgram(words("-install")).exitCode(), 1);
    QCOMPARE(ExampleProgram(words("-uninstall")).exitCode(), 1);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("[Service]\n"));
}

void tst_Service::programThatNoUnitTakes()
{
    const QString program = m_folder->filePath(QStringLiteral("a\"b"));
    QVERIFY(QFile::copy(QStringLiteral(EXAMPLE_SERVICE), program));
    QCOMPARE(QProcess::execute(program, words("-user -install")), 1);
    QVERIFY(!QFileInfo::exists(unitDirectory(ServiceScope::User)));
}

QTEST_GUILESS_MAIN(tst_Service)
#include "tst_service.moc"
