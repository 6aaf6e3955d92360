// What the controller makes of a manager's ways, and of none at all.

#include "service/servicecontroller.h"
#include "support/fakemanager.h"
#include "support/guardedtest.h"
#include "support/privatebus.h"

#include <QSignalSpy>

Q_DECLARE_METATYPE(ServiceError)

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

} // namespace

class tst_ServiceController : public GuardedTest
{
    Q_OBJECT

private slots:
    void initTestCase();

    void names();
    void managers_data();
    void managers();
    void requestsReturnAtOnce();
    void stopKills();
    void nobodyThere();

private:
    PrivateBus m_bus;
    std::unique_ptr<FakeManager> m_fake;
};

void tst_ServiceController::initTestCase()
{
    QVERIFY(m_bus.start());
    m_fake = std::make_unique<FakeManager>(m_bus.address());
    QVERIFY(m_fake->isOnBus());
}

void tst_ServiceController::names()
{
    for (const QString &name :
         { QString(), QString("../EarlyRemoval"), QString("-EarlyRemoval"),
           QString("EarlyRemoval@x"), QString("Early%nRemoval"), QString("EarlyRemoval.service"),
           QString("EarlyRemoval\n"), QString("EarlyRemov\u00e4l"), QString(65, 'x') }) {
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

void tst_ServiceController::managers_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<ServiceError>("error");
    QTest::addColumn<QString>("text");
    const auto add = [](const char *row, const char *name, ServiceError error, const char *text) {
        QTest::newRow(row) << QString::fromLatin1(name) << error << QString::fromLatin1(text);
    };
    add("job removed before the reply", "EarlyRemoval", ServiceError::None, "");
    add("jobs of others fail", "OtherJobs", ServiceError::None, "");
    add("no such unit", "Missing", ServiceError::UnitMissing, "not installed");
    add("masked", "Masked", ServiceError::Failed, "blocked");
    add("the start fails", "FailsToStart", ServiceError::Failed, "with an error");
    add("done, but a condition is not met", "ConditionUnmet", ServiceError::Failed, "condition");
    add("crashes and comes again", "CrashLoop", ServiceError::Failed, "ended");
    add("refused", "Denied", ServiceError::NotAuthorised, "not allowed");
    add("job never removed", "NeverDone", ServiceError::TimedOut, "in time");
    add("no answer", "NeverAnswers", ServiceError::TimedOut, "in time");
}

void tst_ServiceController::managers()
{
    QFETCH(QString, name);
    QFETCH(ServiceError, error);
    QFETCH(QString, text);
    const ServiceResult result = startResult(name);
    QVERIFY2(result.error == error, qPrintable(result.text));
    QVERIFY2(result.text.contains(text), qPrintable(result.text));
    QCOMPARE(result.text.isEmpty(), error == ServiceError::None);
    if (error == ServiceError::NotAuthorised)
        QVERIFY(startResult(name, ServiceAuthorization::Interactive).ok());
}

void tst_ServiceController::requestsReturnAtOnce()
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

void tst_ServiceController::stopKills()
{
    ServiceController controller("Deaf");
    QVERIFY(controller.start());
    QVERIFY(controller.stop());
    QVERIFY(controller.lastResult().text.contains("killed"));
    QVERIFY(!controller.isRunning());
}

void tst_ServiceController::nobodyThere()
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

QTEST_GUILESS_MAIN(tst_ServiceController)
#include "tst_servicecontroller.moc"
