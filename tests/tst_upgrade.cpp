// The upgrade: the service makes way, the program runs, the service is back - whatever happens.

#include "answers/statuslines.h"
#include "dialogs/busycover.h"
#include "dialogs/dialog.h"
#include "dialogs/loading.h"
#include "dialogs/quitwait.h"
#include "fakemanager.h"
#include "guardedtest.h"
#include "hostfile.h"
#include "modalanswer.h"
#include "privatebus.h"
#include "servicecontroller.h"
#include "style/notetext.h"
#include "tavoview.h"
#include "upgraderun.h"

#include <QLabel>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>

/** A device that somebody uses until it is quiet. */
class DeviceDouble final : public UpgradeDevice
{
public:
    QString location() override { return QStringLiteral("::1:502"); }
    std::unique_ptr<DeviceHold> hold() override { return std::make_unique<Hold>(*this); }

    bool isQuiet = false;
    int holds = 0;

private:
    struct Hold final : DeviceHold
    {
        explicit Hold(DeviceDouble &held)
            : device(held)
        {
            ++device.holds;
        }
        ~Hold() override { --device.holds; }
        bool isQuiet() const override { return device.isQuiet; }

        DeviceDouble &device;
    };
};

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
        // message: what the operator reads, as a pattern
        const Columns<QString, QByteArray, QString, bool> row("service", "body", "message",
                                                              "runsProgram");
        row("good", "Good", QByteArray("true"), QString(), true);
        row("crash", "Crash", QByteArray("kill -SEGV $$"), "crashed", true);
        row("closed", "Closed", QByteArray("exit 3"), "code 3", true);
        row("absent", "Absent", QByteArray(), "could not be started: ", false);
        row("no service", "Missing", QByteArray("true"), "Missing could not be stopped", true);
        row("no restart", "FailsToStart", QByteArray("true"), "could not be started again", true);
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
        QTabWidget tabs;
        tabs.addTab(new QWidget, "page");
        tabs.show();
        QWidget *pages = tabs.currentWidget()->parentWidget();
        BusyCover::during(*UpgradeRun::begin(plan(service, program)), *pages);
        QVERIFY(tabs.tabBar()->isEnabled()); // keeps its titles
        QVERIFY(!pages->isEnabled());
        QVERIFY(tabs.findChild<Loading *>());
        QString shown;
        const ModalAnswer read([&](QDialog &box) {
            QCOMPARE(box.findChild<QLabel *>()->text(), "The upgrade ended with a problem.");
            QCOMPARE(box.findChild<NoteText *>()->text(), QString());
            box.findChild<QToolButton *>()->click();
            shown = box.findChild<NoteText *>()->text();
            box.accept();
        });
        QTRY_VERIFY_WITH_TIMEOUT(pages->isEnabled() && read.hasAnswered() != message.isEmpty(),
                                 20000);

        QVERIFY2(message.isEmpty() ? shown.isEmpty() : shown.contains(message), qPrintable(shown));
        QVERIFY(m_guard->messages().join('\n').contains(message));
        QCOMPARE(fileContents("arguments"), QByteArray(runsProgram ? "/dev/ttyUSB0|1|" : ""));
        QVERIFY(!tabs.findChild<Loading *>());
        QCOMPARE(isRunning(service), service != "Missing" && service != "FailsToStart");
    }

    // The family's own program, told of the device and of the host's language.
    void fromTheView_data()
    {
        // parameters: sizes differ: Qt caches by size and time
        const Columns<QByteArray, QByteArray> row("parameters", "arguments");
        row("first language", QByteArray("Language=1\n"), QByteArray("::1:502|0|"));
        row("other language", QByteArray("Language=0"), QByteArray("::1:502|1|"));
    }

    void fromTheView()
    {
        QFETCH(QByteArray, parameters);
        const QString file = hostDirectory() + "/db/param.ini";
        QVERIFY(QDir().mkpath(QFileInfo(file).path()) && writeFile(file, parameters));
        const QString program =
            QCoreApplication::applicationDirPath() + "/upgrade/KX300P6_20KG4Software.exe";
        QVERIFY(QDir().mkpath(QFileInfo(program).path()));
        QFile::remove(program);
        QVERIFY(QFile::rename(script("true"), program));
        qputenv("KX300_SERVICE_SCOPE", "user");
        tavoView view;
        view.setUserInfo("operator", 1);
        view.refreshLayout();
        view.show();
        DeviceDouble device;
        view.setUpgradeDevice(&device);
        auto *dialog = view.findChild<Dialog *>();
        dialog->show();
        const ModalAnswer confirm([](QDialog &box) { box.accept(); });
        view.findChild<QPushButton *>("ups_upgrade")->click();
        QVERIFY(!dialog->isVisible());
        QWidget *pages = view.findChild<QTabWidget *>()->currentWidget()->parentWidget();
        QVERIFY(!pages->isEnabled());
        // Somebody still talks to the device: the program has to wait.
        QTRY_VERIFY_WITH_TIMEOUT(!isRunning("TesselServer") && device.holds == 1, 20000);
        QTest::qWait(200);
        QVERIFY(!QFile::exists("arguments"));
        const auto *told = view.findChild<StatusLines *>();
        QVERIFY(told->answer().endsWith("UPS upgrade · under way"));
        device.isQuiet = true;
        QTRY_VERIFY_WITH_TIMEOUT(pages->isEnabled(), 20000);
        QCOMPARE(device.holds, 0);
        QTEST(fileContents("arguments"), "arguments");
        QVERIFY(told->answer().endsWith("UPS upgrade · ended without a problem"));
        QVERIFY(isRunning("TesselServer"));
        QVERIFY(QFile::remove(file) && QFile::remove(program));
    }

    void viewDeletedMeanwhile()
    {
        auto window = std::make_unique<QWidget>();
        auto *page = new QWidget(window.get());
        window->show();
        UpgradeRun *run = UpgradeRun::begin(plan("Deleted", script(untilToldToGo)));
        BusyCover::during(*run, *page);
        QSignalSpy finished(run, &UpgradeRun::finished);
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists("begun"), 20000);
        QVERIFY(!isRunning("Deleted"));
        window.reset();
        QVERIFY(writeFile("go", {}));
        QVERIFY(finished.wait(20000));
        QCOMPARE(finished.at(0).at(0).toStringList(), QStringList());
        QVERIFY(isRunning("Deleted"));
    }

    // An application that quits waits for the program, says so, and can be told not to.
    void quitWaits()
    {
        m_guard->expect("upgrade: given up while .*program runs");
        QWidget window;
        auto *page = new QWidget(&window);
        UpgradeRun *run = UpgradeRun::begin(plan("Quit", script(untilToldToGo)));
        BusyCover::during(*run, *page);
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists("begun"), 20000);
        QTimer::singleShot(0, qApp, &QCoreApplication::quit);
        QTimer::singleShot(300, qApp, [] {
            const auto boxes = QApplication::topLevelWidgets();
            for (QWidget *box : boxes) {
                if (!qobject_cast<QuitWait *>(box))
                    continue;
                const ModalAnswer confirm([](QDialog &question) { question.accept(); });
                box->findChild<QPushButton *>()->click();
            }
        });
        const Stopwatch clock;
        QCoreApplication::exec();
        QVERIFY(clock.elapsed() >= 300);
        QVERIFY(isRunning("Quit"));
    }

    void severalDevices()
    {
        const auto begin = [&](const QByteArray &body) {
            return std::make_unique<QSignalSpy>(UpgradeRun::begin(plan("Shared", script(body))),
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
