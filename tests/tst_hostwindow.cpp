#include "support/guardedtest.h"
#include "support/modalanswer.h"
#include "support/upssimprocess.h"

#include "plugin/collectthread.h"
#include "plugin/collectview.h"
#include "tools/devhost/hostwindow.h"
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

void confirm(QDialog &box)
{
    QTest::mouseClick(box.findChild<QPushButton *>("btnBlue"), Qt::LeftButton);
}

} // namespace

/** The host's window, on clients without devices and once on a simulated UPS. */
class tst_Hostwindow : public GuardedTest
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void reportsAndStatesAreShown();
    void screenshots();
    void roundTrip();

private:
    QPushButton *button(int device) const;
    void send(const char *name, int id, const QString &value);

    CollectThread *m_factory = nullptr;
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
    GuardedTest::init();
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
    GuardedTest::cleanup();
}

QPushButton *tst_Hostwindow::button(int device) const
{
    return m_host->devices()[size_t(device)]->view()->findChild<QPushButton *>("battery_test");
}

void tst_Hostwindow::send(const char *name, int id, const QString &value)
{
    m_host->command(QStringLiteral("%1 %2 %3").arg(name).arg(id).arg(value));
}

void tst_Hostwindow::reportsAndStatesAreShown()
{
    send("b", 3, "4105=270.5");
    QTRY_COMPARE(button(1)->text(), QString("270.5 1 0 information"));
    QCOMPARE(button(0)->text(), QString());
    auto *chooser = m_window->findChild<QTabBar *>("deviceChooser");
    send("b", 2, "5,1");
    QTRY_COMPARE(chooser->tabToolTip(1), QString("communicating, events present"));
    chooser->setCurrentIndex(1);
    QVERIFY(button(1)->isVisible());
    send("b", 2, "5,0");
    QTRY_COMPARE(m_window->windowTitle(), QString("b - communicating"));
    send("b", 1, "1041");
    QTRY_COMPARE(m_window->windowTitle(), QString("b - communication lost"));
}

void tst_Hostwindow::screenshots()
{
    Screenshots shots(path("x.png"), 0, *m_window, *m_window->firstView(),
                      *m_host->devices().front());
    QSignalSpy finished(&shots, &Screenshots::finished);
    send("a", 3, "4105=1");
    QVERIFY(finished.wait());
    QCOMPARE(finished.first().first().toString(), QString());
    const QStringList files = QDir().entryList({ "x*" });
    QCOMPARE(files, QStringList({ "x-battery_test.png", "x-second.png" }));
    QCOMPARE(QImage(files.first()).size(), m_window->size() * m_window->devicePixelRatio());
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
    {
        const ModalAnswer answer(confirm);
        QTest::mouseClick(view->findChild<QPushButton *>("battery_test"), Qt::LeftButton);
    }
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
    const auto floatVoltage = [&] { return qRound(data.value(FloatVoltage).toFloat() * 100); };
    QVERIFY(simulator.perform("setting 3007 220"));
    QTRY_COMPARE_WITH_TIMEOUT(floatVoltage(), 220, 20000);
    const ModalAnswer answer(confirm);
    QVERIFY(edit("9"));
    QCOMPARE(requests, QList<int>()); // out of range
    QVERIFY(edit("2.25"));
    QTRY_COMPARE_WITH_TIMEOUT(floatVoltage(), 225, 20000);
    QTRY_COMPARE(table->item(name->row(), 1)->text(), QString("2.25V"));
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
