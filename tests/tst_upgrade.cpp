// The upgrade: the service makes way, the program runs, the service is back - whatever happens.

#include "service/servicecontroller.h"
#include "support/fakemanager.h"
#include "support/guardedtest.h"
#include "support/modalanswer.h"
#include "support/privatebus.h"
#include "view/loading.h"
#include "view/tavoview.h"
#include "view/upgraderun.h"

#include <QLabel>
#include <QPushButton>
#include <QTabWidget>

class tst_Upgrade : public GuardedTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(m_bus.start());
        m_manager = std::make_unique<FakeManager>(m_bus.address());
        QVERIFY(m_manager->isOnBus());
    }

    void endings_data()
    {
        QTest::addColumn<QString>("service");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("message"); // what the operator reads, as a pattern
        QTest::addColumn<bool>("runsProgram");
        QTest::newRow("good") << "Good" << QByteArray("true") << QString() << true;
        QTest::newRow("crash") << "Crash" << QByteArray("kill -SEGV $$") << "crashed" << true;
        QTest::newRow("closed") << "Closed" << QByteArray("exit 3") << "code 3" << true;
        QTest::newRow("absent") << "Absent" << QByteArray() << "could not be started: " << false;
        QTest::newRow("no service")
            << "Missing" << QByteArray("true") << "Missing could not be stopped" << true;
        QTest::newRow("no restart")
            << "FailsToStart" << QByteArray("true") << "could not be started again" << true;
    }

    void endings()
    {
        QFETCH(QString, service);
        QFETCH(QByteArray, body);
        QFETCH(QString, message);
        QFETCH(bool, runsProgram);
        if (!message.isEmpty())
            m_guard->expect(message); // it is logged as well
        const QString program = body.isEmpty() ? path("nowhere") : script(body);
        tavoView view;
        view.setUserInfo("operator", 1);
        view.refreshLayout();
        view.show();
        view.setUpgradePlanner([&] { return plan(service, program); });

        QString shown;
        {
            const ModalAnswer confirm([](QDialog &box) { box.accept(); });
            view.findChild<QPushButton *>("ups_upgrade")->click();
        }
        auto *pages = view.findChild<QTabWidget *>();
        QVERIFY(!pages->isEnabled());
        QVERIFY(pages->findChild<Loading *>());
        const ModalAnswer read([&](QDialog &box) {
            shown = box.findChild<QLabel *>()->text();
            box.accept();
        });
        QTRY_VERIFY_WITH_TIMEOUT(pages->isEnabled() && read.hasAnswered() != message.isEmpty(),
                                 20000);

        QVERIFY2(message.isEmpty() ? shown.isEmpty() : shown.contains(message), qPrintable(shown));
        QVERIFY(m_guard->messages().join('\n').contains(message));
        QCOMPARE(fileContents("arguments"), QByteArray(runsProgram ? "/dev/ttyUSB0|1|" : ""));
        QVERIFY(!pages->findChild<Loading *>());
        QCOMPARE(isRunning(service), service != "Missing" && service != "FailsToStart");
    }

    void viewDeletedMeanwhile()
    {
        auto page = std::make_unique<QWidget>();
        page->show();
        UpgradeRun *run = UpgradeRun::begin(
            page.get(),
            plan("Deleted", script("touch begun; while [ ! -e go ]; do sleep 0.05; done")));
        QSignalSpy finished(run, &UpgradeRun::finished);
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists("begun"), 20000);
        QVERIFY(!isRunning("Deleted"));
        page.reset();
        QVERIFY(writeFile("go", {}));
        QVERIFY(finished.wait(20000));
        QCOMPARE(finished.at(0).at(0).toStringList(), QStringList());
        QVERIFY(isRunning("Deleted"));
    }

private:
    // An upgrade program that says whom it was started for and whether the service had made way.
    QString script(const QByteArray &body)
    {
        const QString file = path("program");
        writeFile(file, "#!/bin/sh\nprintf '%s|' \"$@\" > arguments\n" + body);
        QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return file;
    }

    UpgradePlan plan(const QString &service, const QString &program) const
    {
        return { service, ServiceScope::User, program, { "/dev/ttyUSB0", "1" } };
    }

    static bool isRunning(const QString &service)
    {
        ServiceController controller(service);
        controller.setScope(ServiceScope::User);
        return controller.isRunning();
    }

    PrivateBus m_bus;
    std::unique_ptr<FakeManager> m_manager;
};

QTEST_MAIN(tst_Upgrade)
#include "tst_upgrade.moc"
