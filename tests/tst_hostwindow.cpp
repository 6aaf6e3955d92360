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
#include <QTableWidget>
#include <QTabWidget>

namespace {

constexpr int FloatVoltage = 3007; // data identifier

void confirm(QDialog &box)
{
    QTest::mouseClick(box.findChild<QPushButton *>("btnBlue"), Qt::LeftButton);
}

} // namespace

/** The host's window on a simulated UPS. */
class tst_Hostwindow : public GuardedTest
{
    Q_OBJECT

private slots:
    /** From the view's button and dialog through plug-in, driver and line to the device and back. */
    void roundTrip()
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
        QVERIFY(window.windowTitle().startsWith("ups - communicating"));

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
        QCOMPARE(requests, QList<int>());          // out of range
        m_guard->expect("does not support raise"); // of a window without a screen
        QVERIFY(edit("2.25"));
        QTRY_COMPARE_WITH_TIMEOUT(floatVoltage(), 225, 20000);
        QTRY_COMPARE(table->item(name->row(), 1)->text(), QString("2.25V"));
        QCOMPARE(requests, QList<int> { ParameterRequest });

        QTRY_VERIFY_WITH_TIMEOUT(!view->findChild<QDialog *>("WhiteDialog")->isVisible(), 10000);
        window.findChild<QComboBox *>("userLevel")->setCurrentIndex(0);
        QVERIFY(!edit("2.28"));
        QVERIFY(!view->findChild<QPushButton *>("battery_test")->isEnabled());

        Screenshots shots(path("x.png"), 0, window, *view, *host.devices().front());
        QSignalSpy finished(&shots, &Screenshots::finished);
        QVERIFY(finished.wait(20000));
        QCOMPARE(finished.first().first().toString(), QString());
        QCOMPARE(QImage("x-alarm.png").size(), window.size() * window.devicePixelRatio());
        simulator.terminate();
        QTRY_COMPARE_WITH_TIMEOUT(window.windowTitle(), QString("ups - communication lost"), 20000);
    }
};

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
