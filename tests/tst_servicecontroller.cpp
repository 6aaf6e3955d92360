// What the controller makes of a manager's ways, and of none at all.

#include "exampleprogram.h"
#include "fakemanager.h"
#include "guardedtest.h"
#include "privatebus.h"
#include "servicecontroller.h"

#include <unistd.h>

namespace {

ServiceResult startResult(const QString &name,
                          ServiceAuthorization authorization = ServiceAuthorization::Silent)
{
    ServiceController controller(name);
    controller.setScope(ServiceScope::User);
    controller.setAuthorization(authorization);
    // Enough where an answer is expected, soon over where none comes.
    controller.setTimeLimit(std::chrono::milliseconds(name.startsWith("Never") ? 300 : 20'000));
    controller.setSettleTime(std::chrono::milliseconds(10));
    controller.start();
    return controller.lastResult();
}

/** A process that has no more rights than others, also when the tests are run by root. */
class OrdinaryUser : public QProcess
{
protected:
    void setupChildProcess() override
    {
        constexpr uid_t nobody = 65534;
        if (geteuid() == 0 && (setgid(nobody) != 0 || setuid(nobody) != 0))
            _exit(127);
    }
};

} // namespace

class tst_ServiceController : public GuardedTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(m_bus.start());
        m_fake = std::make_unique<FakeManager>(m_bus.address());
        QVERIFY(m_fake->isOnBus());
    }

    void names()
    {
        for (const QString &name :
             { QString(), QString("../EarlyRemoval"), QString("-EarlyRemoval"),
               QString("EarlyRemoval@x"), QString("Early%nRemoval"),
               QString("EarlyRemoval.service"), QString("EarlyRemoval\n"),
               QString("EarlyRemov\u00e4l"), QString(65, 'x') }) {
            const ServiceResult result = startResult(name);
            QCOMPARE(result.error, ServiceError::InvalidName);
            QVERIFY(result.text.contains(name));
        }
        ServiceController controller(QString {});
        QSignalSpy finished(&controller, &ServiceController::finished);
        controller.requestStop();
        QCOMPARE(finished.size(), 0);
        QTRY_COMPARE(finished.size(), 1);
    }

    void managers_data()
    {
        const Columns<int, QString> row("error", "text");
        row("EarlyRemoval", int(ServiceError::None), "");
        row("OtherJobs", int(ServiceError::None), "");
        row("Missing", int(ServiceError::UnitMissing), "not installed");
        row("Masked", int(ServiceError::Failed), "blocked");
        row("FailsToStart", int(ServiceError::Failed), "with an error");
        row("ConditionUnmet", int(ServiceError::Failed), "condition");
        row("CrashLoop", int(ServiceError::Failed), "ended");
        row("Denied", int(ServiceError::NotAuthorised), "not allowed");
        row("NeverDone", int(ServiceError::TimedOut), "in time");
        row("NeverAnswers", int(ServiceError::TimedOut), "in time");
    }

    void managers()
    {
        QFETCH(int, error);
        QFETCH(QString, text);
        const ServiceResult result = startResult(QTest::currentDataTag());
        QCOMPARE(int(result.error), error);
        QVERIFY2(result.text.contains(text), qPrintable(result.text));
        QCOMPARE(result.text.isEmpty(), text.isEmpty());
    }

    void askedForRights()
    {
        QVERIFY(startResult("Denied", ServiceAuthorization::Interactive).ok());
    }

    void requestsReturnAtOnce()
    {
        ServiceController controller("TesselServer"); // on the system bus
        QSignalSpy finished(&controller, &ServiceController::finished);
        for (const auto action : { ServiceAction::Start, ServiceAction::Start, ServiceAction::Stop,
                                   ServiceAction::Stop, ServiceAction::Query })
            controller.request({ action });
        QCOMPARE(finished.size(), 0);
        QTRY_COMPARE(finished.size(), 5);
        QString outcome;
        for (const QList<QVariant> &arguments : finished) {
            const auto result = arguments.at(1).value<ServiceResult>();
            QVERIFY2(result.ok() && result.installed, qPrintable(result.text));
            outcome += result.changed ? "changed " : "unchanged ";
        }
        QCOMPARE(outcome, "changed unchanged changed unchanged unchanged ");
        QCOMPARE(controller.lastResult().state, ServiceState::Stopped);
    }

    void stopKills()
    {
        for (const char *name : { "Deaf", "Hung", "Sloppy" }) {
            ServiceController controller(name);
            QVERIFY(controller.start());
            QVERIFY(controller.stop());
            QCOMPARE(controller.lastResult().text.contains("killed"), qstrcmp(name, "Sloppy") != 0);
            QVERIFY(!controller.isRunning());
        }
    }

    void serviceOfTheSystem()
    {
        // The program itself is in a folder that another user may not reach.
        QFile::setPermissions(path({}), QFile::Permissions(0x7755));
        QVERIFY(QFile::copy(EXAMPLE_SERVICE, path("program")));
        const auto output = [this](const char *switches) {
            OrdinaryUser user;
            user.setProcessChannelMode(QProcess::MergedChannels);
            user.start(path("program"), words(switches));
            user.waitForFinished();
            return QString::number(user.exitCode()) + ' ' + user.readAll();
        };
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(path("config")));
        const QByteArray userBus = qgetenv("DBUS_SESSION_BUS_ADDRESS");
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
        for (const char *switches : { "", "-terminate", "-pause", "-uninstall" }) {
            const QString said = output(switches);
            QVERIFY2(said.startsWith('1') && said.contains("belongs to the system: not allowed"),
                     qPrintable(said));
        }
        // Not the system's, or the user's is meant.
        QVERIFY(output("-uninstall -- name=Missing").contains("\"Missing\" is not installed"));
        QVERIFY(output("-user -terminate").contains("not supported"));
        qputenv("DBUS_SESSION_BUS_ADDRESS", userBus);
    }

    void nobodyThere()
    {
        QCOMPARE(startResult("ManagerLeaves").error, ServiceError::Lost);
        QCOMPARE(startResult("EarlyRemoval").error, ServiceError::NotSupported);

        // The bus goes away in the middle, then it is not there from the start.
        m_fake.reset();
        m_fake = std::make_unique<FakeManager>(m_bus.address());
        ServiceController controller("NeverDone");
        QSignalSpy finished(&controller, &ServiceController::finished);
        controller.requestStart();
        ServiceController observer("NeverDone");
        QTRY_VERIFY(observer.isRunning());
        m_bus.kill();
        QTRY_COMPARE(finished.size(), 1);
        QCOMPARE(controller.error(), ServiceError::Lost);
        QCOMPARE(startResult("EarlyRemoval").error, ServiceError::NotSupported);
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        const ServiceResult result = startResult("EarlyRemoval");
        QCOMPARE(result.error, ServiceError::NotSupported);
        QVERIFY(result.text.contains("not supported"));
    }

private:
    PrivateBus m_bus;
    std::unique_ptr<FakeManager> m_fake;
};

QTEST_GUILESS_MAIN(tst_ServiceController)
#include "tst_servicecontroller.moc"
