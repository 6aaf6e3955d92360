#include "support/upssimprocess.h"
#include "support/warningguard.h"

#include "plugin/collectthread.h"
#include "plugin/collectview.h"
#include "tools/devhost/eventtable.h"
#include "tools/devhost/hostgui.h"
#include "tools/devhost/languages.h"
#include "tools/devhost/pluginfile.h"
#include "tools/devhost/rundirectory.h"
#include "tools/devhost/screenshots.h"

#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTableWidget>
#include <QTabWidget>
#include <QtTest>

namespace {

constexpr int FloatVoltage = 3007; // data identifier

/** Presses a button of the message box that is shown; tries again while there is none. */
void pressInBox(const char *button)
{
    QWidget *box = QApplication::activeModalWidget();
    if (box)
        QTest::mouseClick(box->findChild<QPushButton *>(button), Qt::LeftButton);
    else
        QTimer::singleShot(20, [button] { pressInBox(button); });
}

} // namespace

/** The host's window, on clients without devices and once on a simulated UPS. */
class tst_Hostwindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void reportsReachTheView();
    void statesAreShown();
    void newAlarmIsMarkedUntilSeen();
    void framelessWindowsMove();
    void screenshots();
    void languages();
    void roundTrip();

private:
    QPushButton *button(int device) const;
    void send(const char *name, int id, const QString &value);

    CollectThread *m_factory = nullptr;
    std::unique_ptr<WarningGuard> m_guard;
    std::unique_ptr<DeviceHost> m_host;
    std::unique_ptr<HostWindow> m_window;
};

void tst_Hostwindow::initTestCase()
{
    const LoadedPlugin plugin = loadPlugin(qEnvironmentVariable("FIXTURES") + "/fakeclient.so");
    QVERIFY2(plugin.factory, qPrintable(plugin.error));
    m_factory = plugin.factory;
}

void tst_Hostwindow::init()
{
    m_guard = std::make_unique<WarningGuard>();
    m_guard->expect("propagateSizeHints");          // of Qt's own offscreen plug-in
    m_guard->expect("XCB error: 8 \\(BadMatch\\)"); // focus without a window manager
    HostOptions options;
    options.json = true;
    for (const char *name : { "a", "b" }) {
        DeviceSpec device;
        device.name = name;
        device.port = "none";
        options.devices << device;
    }
    m_host = std::make_unique<DeviceHost>(options, *m_factory);
    QCOMPARE(m_host->open().text, QString());
    m_window = std::make_unique<HostWindow>(options, *m_host);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    m_host->start();
    QTRY_COMPARE(m_window->windowTitle(), QString("a - communicating"));
}

void tst_Hostwindow::cleanup()
{
    m_window.reset();
    m_host.reset();
    const QString warnings = m_guard->unexpected().join('\n');
    m_guard.reset();
    QCOMPARE(warnings, QString());
}

QPushButton *tst_Hostwindow::button(int device) const
{
    return m_host->devices()[size_t(device)]->view()->findChild<QPushButton *>("battery_test");
}

void tst_Hostwindow::send(const char *name, int id, const QString &value)
{
    m_host->command(QStringLiteral("%1 %2 %3").arg(name).arg(id).arg(value));
}

void tst_Hostwindow::reportsReachTheView()
{
    send("b", 3, "4105=270.5");
    QTRY_COMPARE(button(1)->text(), QString("270.5 1 0 information"));
    QCOMPARE(button(0)->text(), QString());
    m_window->findChild<QComboBox *>("userLevel")->setCurrentIndex(0);
    send("b", 3, "4105=1");
    QTRY_COMPARE(button(1)->text(), QString("1 0 0 information"));
}

void tst_Hostwindow::statesAreShown()
{
    auto *chooser = m_window->findChild<QTabBar *>("deviceChooser");
    QCOMPARE(chooser->count(), 2);
    send("b", 2, "5,1");
    QTRY_COMPARE(chooser->tabToolTip(1), QString("communicating, events present"));
    chooser->setCurrentIndex(1);
    QCOMPARE(m_window->windowTitle(), QString("b - communicating, events present"));
    QVERIFY(button(1)->isVisible());
    send("b", 2, "5,0");
    QTRY_COMPARE(m_window->windowTitle(), QString("b - communicating"));
    send("b", 1, "1041");
    QTRY_COMPARE(m_window->windowTitle(), QString("b - communication lost"));
}

void tst_Hostwindow::newAlarmIsMarkedUntilSeen()
{
    auto *log = m_window->findChild<EventTable *>();
    QCOMPARE(log->height(), log->sizeHint().height());
    send("a", 2, "5,1");
    QTRY_COMPARE(log->item(0, 3)->text(), QString("5 here"));
    QVERIFY(log->item(0, 0)->background().style() != Qt::NoBrush);
    send("a", 2, "5,0");
    QTRY_COMPARE(log->item(0, 3)->text(), QString("5 gone"));
    QCOMPARE(log->item(0, 0)->background().style(), Qt::NoBrush);
    QTest::mouseClick(log->viewport(), Qt::LeftButton, {},
                      log->visualItemRect(log->item(1, 3)).center());
    QCOMPARE(log->item(1, 0)->background().style(), Qt::NoBrush);
}

void tst_Hostwindow::framelessWindowsMove()
{
    HostGui gui(HostOptions(), *m_host);
    QCOMPARE(gui.open().text, QString());
    QDialog dialog(nullptr, Qt::Dialog | Qt::FramelessWindowHint);
    dialog.setProperty("canMove", true);
    dialog.resize(200, 100);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    const QPoint before = dialog.pos();
    QTest::mousePress(dialog.windowHandle(), Qt::LeftButton, {}, { 50, 50 });
    QTest::mouseMove(dialog.windowHandle(), { 90, 70 });
    QTRY_COMPARE(dialog.pos(), before + QPoint(40, 20));
    QTest::mouseRelease(dialog.windowHandle(), Qt::LeftButton);
}

void tst_Hostwindow::screenshots()
{
    QTemporaryDir directory;
    Screenshots shots(directory.filePath("x.png"), 0, *m_window, *m_window->firstView(),
                      *m_host->devices().front());
    QSignalSpy finished(&shots, &Screenshots::finished);
    send("a", 3, "4105=1");
    QVERIFY(finished.wait());
    QCOMPARE(finished.first().first().toString(), QString());
    const QStringList files = QDir(directory.path()).entryList(QDir::Files);
    QCOMPARE(files, QStringList({ "x-battery_test.png", "x-second.png" }));
    QCOMPARE(QImage(directory.filePath(files.first())).size(),
             m_window->size() * m_window->devicePixelRatio());
}

void tst_Hostwindow::languages()
{
    HostGui gui(HostOptions(), *m_host);
    QCOMPARE(gui.open().text, QString());
    HostWindow *window = nullptr;
    for (QWidget *widget : QApplication::topLevelWidgets())
        if (widget != m_window.get() && qobject_cast<HostWindow *>(widget))
            window = qobject_cast<HostWindow *>(widget);
    QVERIFY(window);
    QSignalSpy finished(&gui, &HostGui::finished);
    emit window->languageChosen("zh_CN");
    QCOMPARE(finished.first().first().toInt(), int(HostGui::Restart));
    QCOMPARE(gui.restartArguments(
                 { "x", "--send", "a 1007", "--send=a 1", "--poll", "--language", "en" }),
             QStringList({ "x", "--poll", "--language", "zh_CN" }));
}

/** From the view's button and dialog through plug-in, driver and line to the device and back. */
void tst_Hostwindow::roundTrip()
{
    UpsSimProcess simulator;
    QVERIFY2(simulator.start(), qPrintable(simulator.message()));
    const LoadedPlugin plugin = loadPlugin(qEnvironmentVariable("PLUGIN"));
    QVERIFY2(plugin.factory, qPrintable(plugin.error));
    HostOptions options;
    options.json = true;
    DeviceSpec device;
    device.name = "ups";
    device.port = simulator.terminalName();
    options.devices << device;
    DeviceHost host(options, *plugin.factory);
    QCOMPARE(host.open().text, QString());
    HostWindow window(options, host);
    DataMap data;
    QList<int> requests;
    connect(&host, &DeviceHost::posted, this, [&](HostDevice *, const HostEvent &event) {
        if (event.isRequest())
            requests << event.type;
        else if (event.type == DataReport)
            data = event.data();
    });
    window.show();
    host.start();
    QTRY_COMPARE_WITH_TIMEOUT(data.value(4241).toInt(), 4, 20000); // online

    CollectView *view = window.firstView();
    auto *tabs = view->findChild<QTabWidget *>({}, Qt::FindDirectChildrenOnly);
    const auto page = [&](const char *name) {
        tabs->setCurrentWidget(view->findChild<QWidget *>(name));
    };
    page("ControlTable");
    QTimer::singleShot(0, [] { pressInBox("btnBlue"); });
    QTest::mouseClick(view->findChild<QPushButton *>("battery_test"), Qt::LeftButton);
    QTRY_COMPARE_WITH_TIMEOUT(data.value(4241).toInt(), 6, 20000); // battery test

    auto *table = view->findChild<QTableWidget *>("basicTable");
    const QTableWidgetItem *name =
        table->findItems("Cell float voltage:", Qt::MatchExactly).value(0);
    QVERIFY(name);
    const auto edit = [&](const QString &value) {
        emit table->cellDoubleClicked(name->row(), 1);
        auto *dialog = view->findChild<QDialog *>("WhiteDialog");
        if (!dialog->isVisible())
            return false;
        dialog->findChild<QLineEdit *>()->setText(value);
        QTest::mouseClick(dialog->findChild<QPushButton *>("btnBlue"), Qt::LeftButton);
        return true;
    };
    requests.clear();
    QTimer::singleShot(0, [] { pressInBox("btnBlue"); });
    QVERIFY(edit("9"));
    QCOMPARE(requests, QList<int>()); // out of range
    QVERIFY(edit("2.27"));
    QTRY_COMPARE_WITH_TIMEOUT(qRound(data.value(FloatVoltage).toFloat() * 100), 227, 20000);
    QTRY_COMPARE(table->item(name->row(), 1)->text(), QString("2.27V"));
    QCOMPARE(requests, QList<int> { ParameterRequest });

    QTRY_VERIFY_WITH_TIMEOUT(!view->findChild<QDialog *>("WhiteDialog")->isVisible(), 10000);
    window.findChild<QComboBox *>("userLevel")->setCurrentIndex(0);
    QVERIFY(!edit("2.28"));
    QVERIFY(!view->findChild<QPushButton *>("battery_test")->isEnabled());
}

int main(int argc, char **argv)
{
    // The configuration files lie beside the executable: every test needs its own.
    if (!RunDirectory::isActive())
        qFatal("%s", qPrintable(RunDirectory::enter(argv, {})));
    int code = 0;
    {
        QApplication application(argc, argv);
        tst_Hostwindow test;
        code = QTest::qExec(&test, argc, argv);
    }
    RunDirectory::remove();
    return code;
}

#include "tst_hostwindow.moc"
