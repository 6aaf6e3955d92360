// The service program on its own: switches, one instance, signals; without a bus.

#include "exampleprogram.h"
#include "guardedtest.h"
#include "servicecontroller.h"
#include "servicepaths.h"

#include <sys/stat.h>

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
        } rows[] = { { "-version", 0, "kx300-example 1.0" },
                     { "--version", 0, "kx300-example 1.0" },
                     { "-help", 0, "-uninstall" },
                     { "--help", 0, "-uninstall" },
                     { "-h", 0, "-uninstall" },
                     { "-bogus", 2, "unknown switch \"-bogus\"" },
                     { "---help", 2, "unknown switch \"---help\"" },
                     { "-pause --resume", 2, "too many" },
                     { "-command", 2, "needs a number" },
                     { "-command 2147483648", 2,
                       "is no whole number from -2147483648 to 2147483647" },
                     { "", 1, "not supported" }, // starts it
                     { "-- slow", 1, "takes no arguments" },
                     { "-terminate", 1, "not supported" },
                     { "-install", 0, "kx300-example.service\nRemark: no service manager" },
                     { "-install root", 1, "cannot have" }, // a user's service
                     { "-uninstall", 0, "is removed.\nRemark: no service manager" },
                     { "-uninstall", 1, "not installed" } };
        for (const auto &row : rows) {
            ExampleProgram program(words(row.switches));
            QCOMPARE(program.exitCode(), row.exitCode);
            QVERIFY2(program.output().contains(row.output), qPrintable(program.output()));
        }
    }

    void unusableTexts_data()
    {
        const Columns<QByteArray, int> row("argument", "exitCode");
        row("carriage return", QByteArray("a\rb"), 1);
        row("no character", QByteArray("a\xef\xbf\xbf"), 1);
        row("nor this", QByteArray("a\xef\xb7\x90"), 1);
        row("nor this, further up", QByteArray("\xf0\x9f\xbf\xbe"), 1);
        row("no UTF-8", QByteArray("caf\xe9"), 2);
        row("half a character", QByteArray("caf\xc3"), 2);
        row("carriage return in the name", QByteArray("name=a\rb"), 2);
        row("no UTF-8 in the name", QByteArray("name=caf\xe9"), 2);
        row("folder in the name", QByteArray("name=../x"), 2);
        row("any other", QByteArray("\x01\t\n\x7f caf\xc3\xa9 \xf0\x9f\x98\x80"), 0);
    }

    void unusableTexts()
    {
        QFETCH(QByteArray, argument);
        QFETCH(int, exitCode);
        // By a shell, since a process's arguments are encoded on their way.
        QVERIFY(writeFile("argument", argument + 'E'));
        constexpr char script[] =
            "a=$(cat argument); LC_ALL=C exec \"$0\" -user -install -- \"${a%E}\"";
        QCOMPARE(QProcess::execute("/bin/sh", { "-c", script, EXAMPLE_SERVICE }), exitCode);
        const QByteArray unit =
            fileContents(unitDirectory(ServiceScope::User) + "/kx300-example.service");
        QCOMPARE(unit.contains("caf\xc3\xa9"), exitCode == 0);
        QCOMPARE(unit.isEmpty(), exitCode != 0);
    }

    void fifoInPlaceOfTheUnit()
    {
        const QString directory = unitDirectory(ServiceScope::User);
        QVERIFY(QDir().mkpath(directory));
        QCOMPARE(::mkfifo(qPrintable(directory + "/kx300-example.service"), 0600), 0);
        for (const char *command : { "-install", "-uninstall" })
            QCOMPARE(ExampleProgram(words(command)).exitCode(), 1);
    }

    void uninstallDisables()
    {
        QCOMPARE(ExampleProgram(words("-install")).exitCode(), 0);
        const QString wants = unitDirectory(ServiceScope::User) + "/default.target.wants/";
        QVERIFY(QDir().mkpath(wants));
        for (const char *unit : { "kx300-example.service", "Other.service" })
            QVERIFY(QFile::link(QString("../%1").arg(unit), wants + unit));
        QCOMPARE(ExampleProgram(words("-uninstall")).exitCode(), 0);
        QVERIFY(!QFileInfo(wants + "kx300-example.service").isSymLink());
        QVERIFY(QFileInfo(wants + "Other.service").isSymLink());
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
        for (const int number : { SIGTERM, SIGINT, SIGHUP }) {
            ExampleProgram again(words("-exec"));
            QVERIFY(again.prints("start"));
            again.signal(number);
            QVERIFY(again.prints("stop"));
            QCOMPARE(again.exitCode(), 0);
        }
    }

    void nohup()
    {
        signal(SIGHUP, SIG_IGN);
        ExampleProgram service(words("-exec"));
        QVERIFY(service.prints("start"));
        signal(SIGHUP, SIG_DFL);
        service.signal(SIGHUP);
        QVERIFY2(m_controller->pause(), qPrintable(m_controller->errorString()));
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
        QVERIFY(service.isRunning()); // too little patience to end it
        const Stopwatch stopwatch;
        ExampleProgram terminate(words("-terminate"));
        QCOMPARE(terminate.exitCode(), 0);
        QVERIFY2(terminate.output().contains("killed"), qPrintable(terminate.output()));
        QVERIFY2(stopwatch.elapsed() < 15'000, qPrintable(QString::number(stopwatch.elapsed())));
        QCOMPARE(service.exitCode(), 6);
    }

    void hungStop()
    {
        ExampleProgram service(words("-exec -- stuck"));
        QVERIFY(service.prints("start"));
        QVERIFY2(m_controller->stop(), qPrintable(m_controller->errorString()));
        QVERIFY(m_controller->lastResult().text.contains("killed"));
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

    void managerThatCannotBeTold()
    {
        for (const QByteArray &socket : { QByteArray(200, 'x'), QByteArray("/nowhere") }) {
            qputenv("NOTIFY_SOCKET", socket);
            ExampleProgram service(words("-exec"));
            QVERIFY(service.prints("cannot be told READY=1"));
        }
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
                 QByteArray("<6>start fail\n<3>kx300-example did not start.\n"));
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
