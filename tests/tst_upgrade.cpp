// The upgrade: the service makes way, the program runs, the service is back - whatever happens.

#include "service/servicecontroller.h"
#include "support/fakemanager.h"
#include "support/modalanswer.h"
#include "support/privatebus.h"
#include "view/loading.h"
#include "view/tavoview.h"
#include "view/upgraderun.h"

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QtTest>

#include <memory>

class tst_Upgrade : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void endings_data();
    void endings();
    void viewDeletedMeanwhile();

private:
    QString script(const QByteArray &body);
    QByteArray written(const QString &name) const;
    UpgradePlan plan(const QString &service, const QString &program) const;
    static bool isRunning(const QString &service);

    PrivateBus m_bus;
    std::unique_ptr<FakeManager> m_manager;
    QTemporaryDir m_folder;
};

void tst_Upgrade::initTestCase()
{
    QVERIFY(m_bus.start());
    m_manager = std::make_unique<FakeManager>(m_bus.address());
    QVERIFY(m_manager->isOnBus());
}

// An upgrade program that says whom it was started for and whether the service had made way.
QString tst_Upgrade::script(const QByteArray &body)
{
    QFile file(m_folder.filePath("program"));
    file.remove();
    if (!file.open(QIODevice::WriteOnly))
        return {};
    file.write("#!/bin/sh\ncd '" + m_folder.path().toUtf8() + "'\nprintf '%s|' \"$@\" > arguments\n"
               + body);
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return file.fileName();
}

QByteArray tst_Upgrade::written(const QString &name) const
{
    QFile file(m_folder.filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

UpgradePlan tst_Upgrade::plan(const QString &service, const QString &program) const
{
    return { service, ServiceScope::User, program, { "/dev/ttyUSB0", "1" } };
}

bool tst_Upgrade::isRunning(const QString &service)
{
    ServiceController controller(service);
    controller.setScope(ServiceScope::User);
    return controller.isRunning();
}

void tst_Upgrade::endings_data()
{
    QTest::addColumn<QString>("service");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("message"); // what the operator reads, as a pattern
    QTest::addColumn<bool>("runsProgram");
    QTest::newRow("good") << "Good" << QByteArray("true") << QString() << true;
    QTest::newRow("crash") << "Crash" << QByteArray("kill -SEGV $$") << "crashed" << true;
    QTest::newRow("closed") << "Closed" << QByteArray("exit 3") << "code 3" << true;
    QTest::newRow("absent") << "Absent" << QByteArray() << "could not be started: " << false;
    QTest::newRow("no service") << "Missing" << QByteArray("true") << "Missing could not be stopped"
                                << true;
    QTest::newRow("no restart") << "FailsToStart" << QByteArray("true")
                                << "could not be started again" << true;
}

void tst_Upgrade::endings()
{
    QFETCH(QString, service);
    QFETCH(QByteArray, body);
    QFETCH(QString, message);
    QFETCH(bool, runsProgram);
    QFile::remove(m_folder.filePath("arguments"));
    const QString program = body.isEmpty() ? m_folder.filePath("nowhere") : script(body);
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
    QTRY_VERIFY_WITH_TIMEOUT(pages->isEnabled() && read.hasAnswered() != message.isEmpty(), 20000);

    QVERIFY2(message.isEmpty() ? shown.isEmpty() : shown.contains(message), qPrintable(shown));
    QCOMPARE(written("arguments"), QByteArray(runsProgram ? "/dev/ttyUSB0|1|" : ""));
    QVERIFY(!pages->findChild<Loading *>());
    QCOMPARE(isRunning(service), service != "Missing" && service != "FailsToStart");
}

void tst_Upgrade::viewDeletedMeanwhile()
{
    auto page = std::make_unique<QWidget>();
    page->show();
    UpgradeRun *run = UpgradeRun::begin(
        page.get(), plan("Deleted", script("touch begun; while [ ! -e go ]; do sleep 0.05; done")));
    QSignalSpy finished(run, &UpgradeRun::finished);
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(m_folder.filePath("begun")), 20000);
    QVERIFY(!isRunning("Deleted"));
    page.reset();
    QFile go(m_folder.filePath("go"));
    QVERIFY(go.open(QIODevice::WriteOnly));
    QVERIFY(finished.wait(20000));
    QCOMPARE(finished.at(0).at(0).toStringList(), QStringList());
    QVERIFY(isRunning("Deleted"));
}

QTEST_MAIN(tst_Upgrade)
#include "tst_upgrade.moc"
