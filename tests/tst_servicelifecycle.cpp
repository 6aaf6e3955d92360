// The example service from its installation to its removal under a real systemd, where one can be
// run (see support/with-systemd). What needs no processes is in tst_servicecontroller as well.

#include "exampleprogram.h"
#include "guardedtest.h"
#include "servicecontroller.h"

class tst_ServiceLifecycle : public GuardedTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (qEnvironmentVariableIsSet("TAVO_SYSTEMD"))
            QSKIP("A private mount namespace is refused here: no systemd to test with.");
        m_controller.setScope(ServiceScope::User);
    }

    void cleanup()
    {
        if (m_controller.isInstalled())
            QCOMPARE(ExampleProgram(words("-uninstall")).exitCode(), 0);
        GuardedTest::cleanup();
    }

    void operations()
    {
        for (const bool bySwitches : { true, false }) { // or by the controller
            QVERIFY(!m_controller.isInstalled());
            QVERIFY(!m_controller.start());
            QCOMPARE(m_controller.error(), ServiceError::UnitMissing);
            QVERIFY(install({ "a  b", oddWord }));
            QVERIFY(m_controller.isInstalled());
            takeSteps(bySwitches);
            const QStringList log = logged();
            QVERIFY2(log.value(0).endsWith("|a  b|" + oddWord), qPrintable(log.value(0)));
            QCOMPARE(log.mid(1).join(' '), "pause resume command 7 command -1 stop");
            QCOMPARE(ExampleProgram(words("-uninstall")).exitCode(), 0);
            QCOMPARE(ExampleProgram(words("-uninstall")).exitCode(), 1);
            QVERIFY(!m_controller.start({ "argument" }));
            QCOMPARE(m_controller.error(), ServiceError::NotSupported);
            QVERIFY(QFile::remove("log"));
        }
    }

    void badStart()
    {
        for (const char *misbehave : { "fail", "crash" }) { // at once, after the start
            QVERIFY(install({ misbehave }));
            QVERIFY(!m_controller.start());
            QCOMPARE(m_controller.error(), ServiceError::Failed);
            QVERIFY(m_controller.errorString().contains("it ended"));
        }
        QVERIFY(install({}));
        QVERIFY2(m_controller.start(), qPrintable(m_controller.errorString()));
    }

    void ignoredSigterm()
    {
        QVERIFY(install({ "deaf" }));
        QVERIFY(m_controller.start());
        m_controller.setTimeLimit(std::chrono::milliseconds(300));
        QVERIFY(!m_controller.stop());
        QCOMPARE(m_controller.error(), ServiceError::TimedOut);
        m_controller.setTimeLimit(std::chrono::seconds(30));
        QVERIFY(m_controller.stop());
        QVERIFY(m_controller.lastResult().text.contains("killed"));
        QVERIFY(!m_controller.isRunning());
        // What the killed process left behind is in nobody's way.
        QVERIFY2(m_controller.start(), qPrintable(m_controller.errorString()));
        QVERIFY(m_controller.pause());
    }

    void deletedWithRequests()
    {
        QVERIFY(install({ "slow" }));
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

    void busGoesAway(); // last: the bus stays away

private:
    bool install(const QStringList &arguments)
    {
        return ExampleProgram(words("-install --") + QStringList("log=" + path("log")) + arguments)
                   .exitCode()
            == 0;
    }

    void takeSteps(bool bySwitches)
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
              "The service \"kx300-example\" does not listen to requests." },
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
              "The request to the service \"kx300-example\" failed: it does not know this "
              "command" },
            { "-terminate", { ServiceAction::Stop }, true, "" },
        };
        for (const Step &step : steps) {
            ExampleProgram program(bySwitches ? words(step.switches) : words("-version"));
            const bool ran = program.exitCode() == 0;
            QCOMPARE(bySwitches ? ran : m_controller.carryOut(step.request), step.ok);
            QCOMPARE(bySwitches ? program.output() : m_controller.lastResult().text,
                     QString::fromLatin1(step.text));
        }
    }

    QStringList logged() const
    {
        return QString::fromUtf8(fileContents("log")).split('\n', Qt::SkipEmptyParts);
    }

    const QString oddWord = QStringLiteral("100%n $HOME \"'\\\t\u0001\u007f\u0085\u00e9");
    ServiceController m_controller { serviceName };
};

void tst_ServiceLifecycle::busGoesAway()
{
    QVERIFY(install({ "deaf" }));
    QVERIFY(m_controller.start());
    ServiceController controller(serviceName);
    controller.setScope(ServiceScope::User);
    QSignalSpy finished(&controller, &ServiceController::finished);
    controller.requestStop();
    QTRY_COMPARE(m_controller.state(), ServiceState::Stopping);
    QCOMPARE(QProcess::execute("systemctl", words("--user kill --signal=KILL dbus.service")), 0);
    QTRY_COMPARE(finished.size(), 1);
    QVERIFY2(controller.error() == ServiceError::Lost, qPrintable(controller.lastResult().text));
}

QTEST_GUILESS_MAIN(tst_ServiceLifecycle)
#include "tst_servicelifecycle.moc"
