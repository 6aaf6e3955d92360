// The upgrade: the service makes way, the program runs, the service is back - whatever happens.

#include "service/servicecontroller.h"
#include "support/fakemanager.h"
#include "support/guardedtest.h"
#include "support/modalanswer.h"
#include "support/privatebus.h"
#include "view/dialog.h"
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
        auto *dialog = view.findChild<Dialog *>();
        dialog->show();

        QString shown;
        {
            const ModalAnswer confirm([](QDialog &box) { box.accept(); });
            view.findChild<QPushButton *>("ups_upgrade")->click();
        }
        QVERIFY(!dialog->isVisible());
        auto *tabs = view.findChild<QTabWidget *>();
        QVERIFY(tabs->tabBar()->isEnabled()); // keeps its titles
        QWidget *pages = tabs->currentWidget()->parentWidget();
        QVERIFY(!pages->isEnabled());
        QVERIFY(tabs->findChild<Loading *>());
        const ModalAnswer read([&](QDialog &box) {
            shown = box.findChild<QLabel *>()->text();
            box.accept();
        });
        QTRY_VERIFY_WITH_TIMEOUT(pages->isEnabled() && read.hasAnswered() != message.isEmpty(),
                                 20000);

        QVERIFY2(message.isEmpty() ? shown.isEmpty() : shown.contains(message), qPrintable(shown));
        QVERIFY(m_guard->messages().join('\n').contains(message));
        QCOMPARE(fileContents("arguments"), QByteArray(runsProgram ? "/dev/ttyUSB0|1|" : ""));
        QVERIFY(!tabs->findChild<Loading *>());
        QCOMPARE(isRunning(service), service != "Missing" && service != "FailsToStart");
    }

    void viewDeletedMeanwhile()
    {
        auto window = std::make_unique<QWidget>();
        auto *page = new QWidget(window.get());
        window->show();
        UpgradeRun *run = UpgradeRun::begin(page, plan("Deleted", script(untilToldToGo)));
        QSignalSpy finished(run, &UpgradeRun::finished);
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists("begun"), 20000);
        QVERIFY(!isRunning("Deleted"));
        window.reset();
        QVERIFY(writeFile("go", {}));
        QVERIFY(finished.wait(20000));
        QCOMPARE(finished.at(0).at(0).toStringList(), QStringList());
        QVERIFY(isRunning("Deleted"));
    }

    void severalDevices()
    {
        QWidget window;
        const auto begin = [&](const QByteArray &body) {
            return std::make_unique<QSignalSpy>(
                UpgradeRun::begin(new QWidget(&window), plan("Shared", script(body))),
                &UpgradeRun::finished);
        };
        const auto slow = begin(untilToldToGo);
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists("begun"), 20000);
        const auto quick = begin("true");
        QVERIFY(quick->wait(20000));
        QVERIFY(!isRunning("Shared")); // the slow one still needs it stopped
        QVERIFY(writeFile("go", {}));
        QTRY_VERIFY_WITH_TIMEOUT(isRunning("Shared"), 20000);
        const auto late = begin("true"); // while the service settles
        QTRY_COMPARE_WITH_TIMEOUT(late->size(), 1, 20000);
        QVERIFY(isRunning("Shared"));
        for (const auto *run : { &slow, &quick, &late })
            QCOMPARE((*run)->at(0).at(0).toStringList(), QStringList());
    }

private:
    static constexpr char untilToldToGo[] = "touch begun; while [ ! -e go ]; do sleep 0.05; done";

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
