#include "modalanswer.h"
#include "upssimprocess.h"
#include "windowtest.h"

#include "alarmlog.h"
#include "collectthread.h"
#include "collectview.h"
#include "hostgui.h"
#include "hostwindow.h"
#include "screenshots.h"
#include "wheelguard.h"

#include <QComboBox>
#include <QDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QSplitter>
#include <QTableView>
#include <QTableWidget>
#include <QTabWidget>
#include <QWheelEvent>

using namespace HostContract;

namespace {

constexpr int floatVoltage = 3007; // data identifier
constexpr int patienceMs = 20000;

void confirm(QDialog &box)
{
    QTest::mouseClick(box.findChild<QPushButton *>("btnBlue"), Qt::LeftButton);
}

/** Types into the focused widget, as a person would. */
void type(const char *keys)
{
    QTest::keyClicks(QApplication::focusWidget(), keys);
}

void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QWidget *focused = QApplication::focusWidget();
    QTest::keyClick(focused ? focused : QApplication::activeWindow(), key, modifiers);
}

/** False when the dialog does not let anybody enter anything. */
bool enter(QDialog &dialog, const QString &value)
{
    if (!dialog.isVisible())
        return false;
    dialog.findChild<QLineEdit *>()->setText(value);
    QTest::mouseClick(dialog.findChild<QPushButton *>("btnBlue"), Qt::LeftButton);
    return true;
}

/** One port that is not there, then one that answers. */
void testPlaces(QDialog &form, const QString &good, bool &isTested)
{
    auto *port = form.findChild<QComboBox *>("port");
    port->setFocus();
    port->lineEdit()->selectAll();
    type("/dev/ttyNone");
    const auto *result = form.findChild<QLabel *>("result");
    press(Qt::Key_T, Qt::AltModifier);
    QTRY_VERIFY2(result->text().contains("no such port"),
                 qPrintable(result->text() + port->currentText()));
    port->setEditText(good);
    press(Qt::Key_T, Qt::AltModifier);
    QTRY_VERIFY_WITH_TIMEOUT(result->text().contains("answers"), patienceMs);
    isTested = true;
}

} // namespace

/** The host's window on simulated UPSs. */
class tst_Hostwindow : public WindowTest
{
    Q_OBJECT

    void startOn(UpsSimProcess &simulator)
    {
        QVERIFY2(simulator.start(), qPrintable(simulator.message()));
        m_options.devices << serial("ups", simulator.terminalName());
        start();
    }

    void note(DataMap &data, QList<int> &requests)
    {
        connect(m_host.get(), &DeviceHost::posted, this, [&](HostDevice *, const HostEvent &event) {
            if (event.isRequest())
                requests << event.type;
            else if (event.type == DataReportEvent)
                data = event.data();
        });
    }

private slots:
    /** From the view's button and dialog through plug-in, driver and line to the device and back. */
    void roundTrip()
    {
        UpsSimProcess simulator;
        startOn(simulator);
        DataMap data;
        QList<int> requests;
        note(data, requests);
        QTRY_COMPARE_WITH_TIMEOUT(data.value(4241).toInt(), 4, patienceMs); // online
        QTRY_COMPARE(m_window->windowTitle(), QString("ups: On line – ●1 – KX300 device host"));

        CollectView *view = m_window->firstView();
        view->findChild<QTabWidget *>({}, Qt::FindDirectChildrenOnly)
            ->setCurrentWidget(view->findChild<QWidget *>("ControlTable"));
        const ModalAnswer confirmation(confirm);
        QTest::mouseClick(view->findChild<QPushButton *>("battery_test"), Qt::LeftButton);
        QTRY_COMPARE_WITH_TIMEOUT(data.value(4241).toInt(), 6, patienceMs); // battery test

        auto *table = view->findChild<QTableWidget *>("basicTable");
        const QTableWidgetItem *name =
            table->findItems("Cell float voltage:", Qt::MatchExactly).value(0);
        QVERIFY(name);
        const auto change = [&](const QString &value) {
            emit table->cellDoubleClicked(name->row(), 1);
            return enter(*view->findChild<QDialog *>("WhiteDialog"), value);
        };
        requests.clear();
        const auto volts = [&] { return qRound(data.value(floatVoltage).toFloat() * 100); };
        m_guard->expect("does not support raise"); // of a window without a screen
        QVERIFY(change("2.3"));
        QTRY_COMPARE_WITH_TIMEOUT(volts(), 230, patienceMs);
        QTRY_COMPARE(table->item(name->row(), 1)->text(), QString("2.30V"));
        QCOMPARE(requests, QList<int> { ParameterRequestEvent });

        QTRY_VERIFY_WITH_TIMEOUT(!view->findChild<QDialog *>("WhiteDialog")->isVisible(), 10000);
        chooseLevel(0);
        QVERIFY(!change("2.28"));
        QVERIFY(!view->findChild<QPushButton *>("battery_test")->isEnabled());
    }

    void picturesAndLoss()
    {
        UpsSimProcess simulator;
        startOn(simulator);
        QTRY_COMPARE_WITH_TIMEOUT(m_window->windowTitle(),
                                  QString("ups: On line – ●1 – KX300 device host"), patienceMs);
        CollectView *view = m_window->firstView();
        m_guard->expect("does not support raise"); // of a window without a screen
        m_options.screenshot = path("x.png");
        m_options.screenshotDelay = 0;
        Screenshots shots(m_options, *m_window, *view, *m_host->devices().front());
        QSignalSpy finished(&shots, &Screenshots::finished);
        QVERIFY(finished.wait(patienceMs));
        QCOMPARE(finished.first().first().toString(), QString());
        QCOMPARE(QImage("x-alarm.png").size(), m_window->size() * m_window->devicePixelRatio());
        simulator.terminate();
        QTRY_COMPARE_WITH_TIMEOUT(m_window->windowTitle(),
                                  QString("ups: No communication – ■1 – KX300 device host"),
                                  patienceMs);
    }

    void fleetByKeyboard()
    {
        UpsSimProcess simulators[2];
        for (UpsSimProcess &simulator : simulators)
            QVERIFY2(simulator.start(), qPrintable(simulator.message()));
        m_options.devices << serial("good", simulators[0].terminalName())
                          << serial("bypass", simulators[1].terminalName())
                          << serial("absent", "/dev/ttyNone");
        QVERIFY(simulators[1].perform("command 10"));
        start();
        QTRY_COMPARE_WITH_TIMEOUT(m_window->windowTitle(), QString("■1 ▲1 ●1 – KX300 device host"),
                                  patienceMs);
        auto *table = m_window->findChild<QTableView *>("fleetTable");
        const auto cell = [&](int row, FleetModel::Column column) {
            return table->model()->index(row, column).data().toString();
        };
        QCOMPARE(cell(0, FleetModel::Device), QString("absent")); // the worst first
        QCOMPARE(cell(0, FleetModel::State), QString("■ Never connected"));
        QTRY_COMPARE(cell(0, FleetModel::OldestAlarm),
                     QString("/dev/ttyNone, address 1: there is no such port"));
        QCOMPARE(cell(0, FleetModel::Age), QString("–"));
        QCOMPARE(cell(1, FleetModel::Mode), QString("On bypass"));
        QCOMPARE(cell(2, FleetModel::Load), QString("55 %"));
        table->setFocus();
        press(Qt::Key_Home);
        table->selectRow(0);
        press(Qt::Key_Down);
        press(Qt::Key_Return);
        QVERIFY(m_window->windowTitle().startsWith("bypass: On bypass"));
        QTest::keyClick(m_window.get(), Qt::Key_V, Qt::AltModifier);
        QTRY_VERIFY(m_window->windowTitle().startsWith("■1"));
        QVERIFY(table->hasFocus());
        QCOMPARE(table->currentIndex().data().toString(), QString("▲ Attention"));
    }

    void devicesByForm()
    {
        UpsSimProcess simulator;
        QVERIFY2(simulator.start(), qPrintable(simulator.message()));
        m_options.devicesAreRemembered = true;
        start();
        bool isTested = false;
        fillForm([&](QDialog &form) {
            type("UPS 1");
            testPlaces(form, simulator.terminalName(), isTested);
            press(Qt::Key_Return);
        });
        m_window->askForDevice();
        QVERIFY(isTested);
        QTRY_COMPARE_WITH_TIMEOUT(m_window->windowTitle(), QString("●1 – KX300 device host"),
                                  patienceMs);
        QVERIFY(fileContents("serial.ini").contains("9600,n,8,1"));
        QCOMPARE(WindowMemory().devices(), m_host->specs());

        auto *table = m_window->findChild<QTableView *>("fleetTable");
        table->selectRow(0);
        fillForm([](QDialog &form) {
            form.findChild<QLineEdit *>("name")->setText("Hall");
            press(Qt::Key_Return);
        });
        m_window->findChild<QPushButton *>("editDevice")->click();
        QTRY_COMPARE_WITH_TIMEOUT(m_window->windowTitle(), QString("●1 – KX300 device host"),
                                  patienceMs);
        QCOMPARE(m_host->devices().front()->name(), QString("Hall"));
        table->selectRow(0);
        fillForm([](QDialog &box) {
            press(Qt::Key_Return);
            Q_UNUSED(box)
        });
        m_window->findChild<QPushButton *>("removeDevice")->click();
        QCOMPARE(m_host->devices().size(), size_t(1)); // "No" is what Enter says
        fillForm([](QDialog &box) {
            static_cast<QMessageBox &>(box).button(QMessageBox::Yes)->click();
        });
        m_window->findChild<QPushButton *>("removeDevice")->click();
        QVERIFY(m_host->devices().empty() && WindowMemory().devices().isEmpty());
        QCOMPARE(m_window->windowTitle(), QString("KX300 device host"));
    }

    void acknowledging()
    {
        m_options.devices << serial("absent", "/dev/ttyNone");
        start();
        auto *log = m_window->findChild<QTableView *>("hostEventLog");
        const auto state = [&] {
            return log->model()->index(0, AlarmLog::State).data().toString();
        };
        QTRY_COMPARE_WITH_TIMEOUT(state(), QString("Active, not acknowledged"), patienceMs);
        auto *all = m_window->findChild<QPushButton *>("acknowledgeAll");
        QTRY_VERIFY(all->isEnabled());
        QTest::mouseClick(log->viewport(), Qt::LeftButton, Qt::NoModifier,
                          log->visualRect(log->model()->index(0, 0)).center());
        QCOMPARE(state(), QString("Active, not acknowledged"));
        chooseLevel(0);
        QTest::keyClick(log, Qt::Key_Space);
        QCOMPARE(state(), QString("Active, not acknowledged")); // may only look
        QVERIFY(!all->isEnabled());
        raiseLevel(QMessageBox::No);
        QCOMPARE(m_window->userLevel(), 0);
        raiseLevel(QMessageBox::Yes);
        QCOMPARE(m_window->userLevel(), 1);
        m_window->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), m_window.get());
        log->setFocus();
        press(Qt::Key_Space);
        QCOMPARE(state(), QString("Active, acknowledged"));
        end();
        start();
        log = m_window->findChild<QTableView *>("hostEventLog");
        QTRY_COMPARE_WITH_TIMEOUT(state(), QString("Active, acknowledged"), patienceMs);
        QCOMPARE(log->model()->rowCount(), 1);
    }

    void contextSurvives()
    {
        m_options.devices << serial("a", "/dev/ttyNone") << serial("b", "/dev/ttyNone");
        start();
        const QSize size = m_window->size();
        m_window->open(m_host->device("b"));
        auto *tabs = viewOf("b")->findChild<QTabWidget *>();
        tabs->setCurrentIndex(2);
        chooseLevel(0);
        m_window->close();
        end();
        start();
        QVERIFY(m_window->windowTitle().startsWith("b: "));
        QCOMPARE(viewOf("b")->findChild<QTabWidget *>()->currentIndex(), 2);
        QCOMPARE(m_window->size(), size);
        QCOMPARE(m_window->userLevel(), 1); // what the start says, never what was left
        end();
        // A start anew in another language has the devices of now, and no more rights.
        HostOptions options = m_options;
        options.userLevel = 0;
        HostGui gui(options, *(m_host = std::make_unique<DeviceHost>(options, *m_factory)));
        QCOMPARE(m_host->open().text, QString());
        QCOMPARE(int(gui.open().code), int(ExitCode::Ok));
        const QStringList arguments = gui.restartArguments(
            { "x", "--user-level", "2", "--device=name=old,port=p", "--plugin", "p.so" });
        QCOMPARE(arguments,
                 QStringList({ "x", "--plugin", "p.so", "--language", "", "--user-level", "0",
                               "--device", "name=a,port=/dev/ttyNone,addr=1", "--device",
                               "name=b,port=/dev/ttyNone,addr=1" }));
    }

    void sizes()
    {
        m_options.devices << serial("a", "/dev/ttyNone");
        m_options.windowSize = QSize(4000, 4000);
        start();
        const QSize room = QApplication::primaryScreen()->availableSize();
        QVERIFY(m_window->width() <= room.width() && m_window->height() <= room.height());
        // However far the log is drawn, the page stays.
        auto *splitter = m_window->findChild<QSplitter *>();
        splitter->setSizes({ 0, 10000 });
        QVERIFY(splitter->sizes().first() >= 200);
        QVERIFY(splitter->sizes().last() >= m_window->findChild<QTableView *>("hostEventLog")
                                                ->verticalHeader()
                                                ->defaultSectionSize());
        auto *language = m_window->findChild<QComboBox *>("language");
        WheelGuard guard;
        qApp->installEventFilter(&guard);
        QWheelEvent wheel(QPointF(5, 5), language->mapToGlobal(QPoint(5, 5)), QPoint(),
                          QPoint(0, -120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(language, &wheel);
        QCOMPARE(language->currentIndex(), 0);
        QVERIFY(!wheel.isAccepted());
    }
};

int main(int argc, char **argv)
{
    return runApart<tst_Hostwindow>(argc, argv);
}

#include "tst_hostwindow.moc"
