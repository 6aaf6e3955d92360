// The example service from its installation to its removal under a real systemd, where one can be
// run (see support/with-systemd). What needs no processes is in tst_servicecontroller as well.

#include "service/servicecontroller.h"
#include "support/exampleprogram.h"
#include "support/warningguard.h"

#include <QFile>
#include <QSignalSpy>
#include <QtTest>

#include <optional>

namespace {

const QString serviceName = QStringLiteral("TesselServer");

} // namespace

class tst_ServiceLifecycle : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { m_guard.emplace(); }
    void cleanup();

    void operations_data();
    void operations();
    void badStart_data();
    void badStart();
    void ignoredSigterm();
    void deletedWithRequests();
    void busGoesAway(); // last: the bus stays away

private:
    bool install(const QStringList &arguments);
    QStringList logged() const;

    std::optional<WarningGuard> m_guard;
    QTemporaryDir m_folder;
    ServiceController m_controller { serviceName };
};

void tst_ServiceLifecycle::initTestCase()
{
    if (qEnvironmentVariableIsSet("TAVO_SYSTEMD"))
        QSKIP("A private mount namespace is refused here: no systemd to test with.");
    m_controller.setScope(ServiceScope::User);
}

void tst_ServiceLifecycle::cleanup()
{
    if (m_controller.isInstalled())
        QCOMPARE(ExampleProgram(words("-uninstall")).exitCode(), 0);
    QCOMPARE(m_guard->unexpected().join(QLatin1Char('\n')), QString());
    QFile::remove(m_folder.filePath(QStringLiteral("log")));
}

bool tst_ServiceLifecycle::install(const QStringList &arguments)
{
    const QString log = QStringLiteral("log=") + m_folder.filePath(QStringLiteral("log"));
    return ExampleProgram(words("-install --") + QStringList(log) + arguments).exitCode() == 0;
}

QStringList tst_ServiceLifecycle::logged() const
{
    QFile file(m_folder.filePath(QStringLiteral("log")));
    file.open(QIODevice::ReadOnly);
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

void tst_ServiceLifecycle::operations_data()
{
    QTest::addColumn<bool>("bySwitches");
    QTest::newRow("through the switches") << true;
    QTest::newRow("through the controller") << false;
}

void tst_ServiceLifecycle::operations()
{
    struct Step
    {
        const char *switches;
        ServiceRequest request;
        bool ok;
        const char *text;
    };
    const Step steps[] = {
        { "-pause",
          { ServiceAction::Pause },
          false,
          "The service \"TesselServer\" does not listen to requests." },
        { "-terminate", { ServiceAction::Stop }, true, "unchanged" },
        { "", { ServiceAction::Start }, true, "" },
        { "", { ServiceAction::Start }, true, "unchanged" },
        { "-pause", { ServiceAction::Pause }, true, "" },
        { "-pause", { ServiceAction::Pause }, true, "unchanged" },
        { "-resume", { ServiceAction::Resume }, true, "" },
        { "-command 7", { ServiceAction::Command, 7 }, true, "" },
        { "-command -1",
          { ServiceAction::Command, -1 },
          false,
          "The request to the service \"TesselServer\" failed: it does not know this command" },
        { "-terminate", { ServiceAction::Stop }, true, "" },
    };
    QFETCH(bool, bySwitches);
    QVERIFY(!m_controller.isInstalled());
    QVERIFY(!m_controller.start());
    QCOMPARE(m_controller.error(), ServiceError::UnitMissing);
    QVERIFY(install({ QStringLiteral("a  b"), QStringLiteral("100%n") }));
    QVERIFY(m_controller.isInstalled());
    for (const Step &step : steps) {
        ExampleProgram program(bySwitches ? words(step.switches) : words("-version"));
        const bool ran = program.exitCode() == 0;
        QCOMPARE(bySwitches ? ran : m_controller.carryOut(step.request), step.ok);
        QCOMPARE(bySwitches ? program.output() : m_controller.lastResult().text,
                 QString::fromLatin1(step.text));
    }
    const QStringList log = logged();
    QVERIFY2(log.value(0).endsWith(QLatin1String("|a  b|100%n")), qPrintable(log.value(0)));
    QCOMPARE(log.mid(1).join(QLatin1Char(' ')),
             QStringLiteral("pause resume command 7 command -1 stop"));
    QCOMPARE(ExampleProgram(words("-uninstall")).exitCode(), 0);
    QCOMPARE(ExampleProgram(words("-uninstall")).exitCode(), 1);
    QVERIFY(!m_controller.start({ QStringLiteral("argument") }));
    QCOMPARE(m_controller.error(), ServiceError::NotSupported);
}

void tst_ServiceLifecycle::badStart_data()
{
    QTest::addColumn<QString>("misbehave");
    QTest::newRow("the start fails") << "fail";
    QTest::newRow("it crashes after the start") << "crash";
}

void tst_ServiceLifecycle::badStart()
{
    QFETCH(QString, misbehave);
    QVERIFY(install({ misbehave }));
    QVERIFY(!m_controller.start());
    QCOMPARE(m_controller.error(), ServiceError::Failed);
    QVERIFY(m_controller.errorString().contains(QLatin1String("it ended")));

    QVERIFY(install({}));
    QVERIFY2(m_controller.start(), qPrintable(m_controller.errorString()));
}

void tst_ServiceLifecycle::ignoredSigterm()
{
    QVERIFY(install({ QStringLiteral("deaf") }));
    QVERIFY(m_controller.start());
    m_controller.setTimeLimit(std::chrono::milliseconds(300));
    QVERIFY(!m_controller.stop());
    QCOMPARE(m_controller.error(), ServiceError::TimedOut);
    m_controller.setTimeLimit(std::chrono::seconds(30));
    QVERIFY(m_controller.stop());
    QVERIFY(m_controller.lastResult().text.contains(QLatin1String("killed")));
    QVERIFY(!m_controller.isRunning());
    // What the killed process left behind is in nobody's way.
    QVERIFY2(m_controller.start(), qPrintable(m_controller.errorString()));
    QVERIFY(m_controller.pause());
}

void tst_ServiceLifecycle::deletedWithRequests()
{
    QVERIFY(install({ QStringLiteral("slow") }));
    auto controller = std::make_unique<ServiceController>(serviceName);
    controller->setScope(ServiceScope::User);
    controller->requestStart();
    QTRY_COMPARE(m_controller.state(), ServiceState::Starting);
    controller.reset();
    QTRY_COMPARE(m_controller.state(), ServiceState::Running);

    auto *selfish = new ServiceController(serviceName);
    selfish->setScope(ServiceScope::User);
    connect(selfish, &ServiceController::finished, this, [selfish] { delete selfish; });
    QSignalSpy destroyed(selfish, &QObject::destroyed);
    selfish->requestStop();
    QTRY_COMPARE(destroyed.size(), 1);
    QVERIFY(!m_controller.isRunning());
}

void tst_ServiceLifecycle::busGoesAway()
{
    QVERIFY(install({ QStringLiteral("deaf") }));
    QVERIFY(m_controller.start());
    ServiceController controller(serviceName);
    controller.setScope(ServiceScope::User);
    QSignalSpy finished(&controller, &ServiceController::finished);
    controller.requestStop();
    QTRY_COMPARE(m_controller.state(), ServiceState::Stopping);
    QCOMPARE(QProcess::execute(QStringLiteral("systemctl"),
                               words("--user kill --signal=KILL dbus.service")),
             0);
    QTRY_COMPARE(finished.size(), 1);
    QVERIFY2(controller.error() == ServiceError::Lost, qPrintable(controller.lastResult().text));
}

QTEST_GUILESS_MAIN(tst_ServiceLifecycle)
#include "tst_servicelifecycle.moc"
