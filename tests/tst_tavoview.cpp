#include "modalanswer.h"
#include "view/dialog.h"
#include "view/energyline.h"
#include "view/msgbox.h"
#include "view/tavoview.h"
#include "warningguard.h"

#include <QDateTimeEdit>
#include <QFileDialog>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTableWidget>
#include <QtTest>

#include <memory>

namespace {

using Event = QMap<QString, QVariant>;

const QStringList settingsTables { "basicTable", "batteryTable", "adjustTable", "devinforTable" };

} // namespace

class tst_TavoView : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void widgetsAreFoundByName();
    void layoutIsBuiltOnce();
    void nothingBeforeTheFirstReport();
    void realTimeValues();
    void settingsShowValuesAndRanges();
    void refreshWritesOnlyChanges();
    void otherTabsCatchUp();
    void eventsAreListed();
    void buttonsSendCommands_data();
    void buttonsSendCommands();
    void declinedSendsNothing();
    void reportsGoOnBehindTheBox();
    void viewDeletedBehindTheBox();
    void userLoggedOffBehindTheBox();
    void upgradeStepFollowsTheCommand();
    void timeNeedsItsEditor();
    void historyIsDownloaded_data();
    void historyIsDownloaded();
    void userLevels();
    void settingIsEdited();
    void readableOnDarkDesktops();

private:
    template <typename Widget> Widget *child(const QString &name = {}) const
    {
        return m_view->findChild<Widget *>(name);
    }
    QTabWidget *tabs() const { return child<QTabWidget>(); }
    QString cell(const QString &table, const QString &row, int column) const;
    QString panelValue(const QString &name) const;
    void doubleClick(const QString &table, const QString &row);
    void click(const QString &button) { child<QPushButton>(button)->click(); }
    QList<QPair<int, QString>> sent() const;

    std::unique_ptr<WarningGuard> m_guard;
    std::unique_ptr<tavoView> m_view;
    std::unique_ptr<QSignalSpy> m_posted;
};

void tst_TavoView::initTestCase()
{
    QLocale::setDefault(QLocale(QLocale::German));
    qRegisterMetaType<Event>();
}

void tst_TavoView::init()
{
    m_guard = std::make_unique<WarningGuard>();
    m_guard->expect("propagateSizeHints"); // of the platform without windows
    m_view = std::make_unique<tavoView>();
    m_view->refreshLayout();
    m_view->setName("UPS 7");
    m_view->setUserInfo("admin", 1);
    m_posted = std::make_unique<QSignalSpy>(m_view.get(), &CollectView::postDEvent);
}

void tst_TavoView::cleanup()
{
    m_posted.reset();
    m_view.reset();
    const QStringList unexpected = m_guard->unexpected();
    m_guard.reset();
    QCOMPARE(unexpected, QStringList());
}

QString tst_TavoView::cell(const QString &table, const QString &row, int column) const
{
    auto *widget = child<QTableWidget>(table);
    const auto items = widget->findItems(row, Qt::MatchExactly);
    return items.isEmpty() ? "no such row" : widget->item(items.first()->row(), column)->text();
}

// The value label beside a name, in whichever panel.
QString tst_TavoView::panelValue(const QString &name) const
{
    const auto names = m_view->findChildren<QLabel *>("PanalBodyKeyName");
    const auto values = m_view->findChildren<QLabel *>("PanalBodyKeyValue");
    for (int i = 0; i < names.size(); ++i) {
        if (names.at(i)->text() == name)
            return values.at(i)->text();
    }
    return "no such panel row";
}

void tst_TavoView::doubleClick(const QString &table, const QString &row)
{
    auto *widget = child<QTableWidget>(table);
    const int index = widget->findItems(row, Qt::MatchExactly).first()->row();
    emit widget->cellDoubleClicked(index, 1);
}

QList<QPair<int, QString>> tst_TavoView::sent() const
{
    QList<QPair<int, QString>> result;
    for (const QList<QVariant> &arguments : *m_posted) {
        const auto map = arguments.at(1).value<Event>();
        result.append({ arguments.at(0).toInt(), map.value("controlValue").toString() });
    }
    return result;
}

void tst_TavoView::widgetsAreFoundByName()
{
    QStringList titles;
    QStringList pages;
    for (int i = 0; i < tabs()->count(); ++i) {
        titles.append(tabs()->tabText(i));
        pages.append(tabs()->widget(i)->objectName());
    }
    QCOMPARE(titles, (QStringList { "Overview", "Alarm", "RT-data", "Control", "Maintenance" }));
    QCOMPARE(pages,
             (QStringList { "OverviewTable", "AlarmTable", "realDataTable", "ControlTable",
                            "MaintainTable" }));
    QCOMPARE(tabs()->styleSheet(),
             QString("QTabBar::tab:disabled {width: 0; color: transparent;}"));
    QVERIFY(child<QGridLayout>("tavoView_grid") && child<QGridLayout>("ControlGrid"));
    QVERIFY(child<QStackedWidget>("devStacketTable") && child<QStackedWidget>("configStack"));
    QCOMPARE(child<QLabel>("DevBigTitle")->styleSheet(), QString("margin-top:20px"));
    QStringList panels;
    for (const QLabel *title : m_view->findChildren<QLabel *>("PanelTitle"))
        panels.append(title->text());
    QCOMPARE(panels, (QStringList { "DEVICE", "OUTPUT", "INPUT", "BYPASS", "BATTERY", "REC/INV" }));
    for (const QString &name : settingsTables + QStringList("RecordTable")) {
        auto *table = child<QTableWidget>(name);
        QVERIFY2(table, name.toUtf8());
        QCOMPARE(table->styleSheet(),
                 QString("alternate-background-color: #DDDFF5; background: #FFFFFF;"));
        QVERIFY(!table->showGrid() && table->focusPolicy() == Qt::NoFocus);
        QCOMPARE(table->editTriggers(), QAbstractItemView::NoEditTriggers);
    }
    auto *record = child<QTableWidget>("RecordTable");
    QCOMPARE(record->horizontalHeaderItem(0)->text(), QString("Data/Time"));
    QCOMPARE(record->horizontalHeaderItem(1)->text(), QString("Event description"));
    auto *basic = child<QTableWidget>("basicTable");
    QCOMPARE(basic->rowCount(), 34);
    QCOMPARE(basic->columnWidth(2), 150);
    QCOMPARE(basic->horizontalHeaderItem(1)->text(), QString("Current settings"));
}

void tst_TavoView::layoutIsBuiltOnce()
{
    const auto before = m_view->findChildren<QWidget *>();
    auto *diagram = child<Energyline>();
    m_view->refreshLayout();
    QCOMPARE(m_view->findChildren<QWidget *>(), before);
    QCOMPARE(child<Energyline>(), diagram);
}

void tst_TavoView::nothingBeforeTheFirstReport()
{
    tabs()->setCurrentIndex(tavoView::ControlTab);
    m_view->refreshData();
    QCOMPARE(cell("basicTable", "Boost cycle:", 1), QString("-"));
    m_view->flushData({});
    QCOMPARE(cell("basicTable", "Boost cycle:", 1), QString("0Hour"));
}

void tst_TavoView::realTimeValues()
{
    tabs()->setCurrentIndex(tavoView::RealDataTab);
    m_view->flushData({ { 4133, 229.96f }, { 4134, 231.0f }, { 4139, 50.0f }, { 4101, 3.0f } });
    QCOMPARE(panelValue("Input voltage:"), QString("230.0/231.0/0.0V"));
    QCOMPARE(panelValue("Input frequency:"), QString("50.0Hz"));
    QCOMPARE(panelValue("Battery status:"), QString("Float charge"));
    QCOMPARE(panelValue("Serial number:"), QString("-")); // missing
}

void tst_TavoView::settingsShowValuesAndRanges()
{
    tabs()->setCurrentIndex(tavoView::ControlTab);
    m_view->flushData({ { 3007, 2.25f }, { 3045, 1.0f }, { 3011, 0.0f }, { 3000, 3.0f } });
    QCOMPARE(cell("basicTable", "Cell float voltage:", 1), QString("2.25V"));
    QCOMPARE(cell("basicTable", "Cell float voltage:", 2), QString("3.3-4.15"));
    QCOMPARE(cell("adjustTable", "Charge current limit:", 1), QString("0.5A"));
    QCOMPARE(cell("adjustTable", "Charge current limit:", 2), QString("-"));
    QCOMPARE(cell("basicTable", "System work mode:", 1), QString()); // no such option
    QCOMPARE(cell("batteryTable", "Battery type:", 1), QString("Lithium battery"));
    QCOMPARE(cell("batteryTable", "Battery numbers:", 1), QString("0")); // missing
    for (const QString &name : settingsTables) {
        auto *table = child<QTableWidget>(name);
        for (int row = 0; row < table->rowCount(); ++row) {
            QCOMPARE(table->item(row, 1)->foreground().color(), QColor(Qt::blue));
            QCOMPARE(table->item(row, 2)->foreground().color(), QColor(Qt::red));
            QCOMPARE(table->item(row, 2)->textAlignment(), int(Qt::AlignCenter));
        }
    }
}

void tst_TavoView::refreshWritesOnlyChanges()
{
    auto *basic = child<QTableWidget>("basicTable");
    tabs()->setCurrentIndex(tavoView::ControlTab);
    DataReport report { { 3007, 2.25f }, { 3013, 100.0f } };
    m_view->flushData(report);
    QSignalSpy changes(basic->model(), &QAbstractItemModel::dataChanged);
    const QTableWidgetItem *item = basic->item(1, 1);
    m_view->flushData(report);
    QCOMPARE(changes.size(), 0);
    report[3013] = 101.0f;
    m_view->flushData(report);
    QCOMPARE(changes.size(), 1);
    report[3045] = 1.0f; // the battery type: four ranges
    m_view->flushData(report);
    QCOMPARE(changes.size(), 5);
    QCOMPARE(basic->item(1, 1), item);
}

void tst_TavoView::otherTabsCatchUp()
{
    const DataReport report { { 4105, 192.4f }, { 3013, 7.0f }, { 2010, 1.0f } };
    m_view->flushData(report);
    QCOMPARE(panelValue("Battery voltage:"), QString("-"));
    tabs()->setCurrentIndex(tavoView::RealDataTab);
    QCOMPARE(panelValue("Battery voltage:"), QString("192.4V"));
    QCOMPARE(cell("basicTable", "Boost cycle:", 1), QString("-"));
    tabs()->setCurrentIndex(tavoView::ControlTab);
    QCOMPARE(cell("basicTable", "Boost cycle:", 1), QString("7Hour"));
    tabs()->setCurrentIndex(tavoView::AlarmTab);
    QCOMPARE(child<QTableWidget>("RecordTable")->rowCount(), 1);
}

void tst_TavoView::eventsAreListed()
{
    auto *table = child<QTableWidget>("RecordTable");
    auto *note = table->viewport()->findChild<QLabel *>();
    QCOMPARE(note->text(), QString("No events"));
    tabs()->setCurrentIndex(tavoView::OverviewTab);
    const QDateTime start = QDateTime::currentDateTime().addSecs(-1);
    m_view->flushData({ { 2059, 1.0f } });
    const QDateTime end = QDateTime::currentDateTime();
    QTest::qWait(1100);
    m_view->flushData({ { 2059, 1.0f }, { 2010, 1.0f } });
    tabs()->setCurrentIndex(tavoView::AlarmTab);
    QCOMPARE(table->item(0, 1)->text(), QString("Overload"));
    QCOMPARE(table->item(1, 1)->text(), QString("Battery voltage low"));
    const auto first = QDateTime::fromString(table->item(1, 0)->text(), "yyyy-MM-dd HH:mm:ss");
    QVERIFY2(first >= start && first <= end, table->item(1, 0)->text().toUtf8());
    QVERIFY(note->isHidden());
    m_view->flushData({ { 2059, 0.0f } });
    QCOMPARE(table->rowCount(), 0);
    QVERIFY(!note->isHidden());
}

void tst_TavoView::buttonsSendCommands_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("command");
    const struct
    {
        const char *name;
        const char *text;
        int command;
    } rows[] = {
        { "buzzer_off", "Turn off", 1010 },
        { "buzzer_on", "Turn on", 1009 },
        { "power_off", "Shutdown stop output", 1007 },
        { "off_turn_bypass", "Shutdown to bypass", 1015 },
        { "power_on", "Startup", 1008 },
        { "turn_bypass", "Transfer to bypass", 1016 },
        { "turn_inverter", "Transfer to inverter", 1017 },
        { "battery_test", "Battery test 20s", 1003 },
        { "battery_maintenance", "Battery maintenance", 1005 },
        { "cancel_test", "Cancel test", 1006 },
        { "clear_fault", "Clear fault", 1001 },
        { "clear_history_log", "Clear history", 1002 },
        { "ups_upgrade", "UPS upgrade", 1018 },
    };
    for (const auto &row : rows)
        QTest::newRow(row.name) << row.text << row.command;
}

void tst_TavoView::buttonsSendCommands()
{
    QFETCH(QString, text);
    QFETCH(int, command);
    const ModalAnswer answer([&](QDialog &box) {
        QCOMPARE(box.findChild<QLabel *>()->text(), text + '?');
        box.accept();
    });
    click(QTest::currentDataTag());
    QVERIFY(answer.hasAnswered());
    QCOMPARE(m_posted->size(), 1);
    QCOMPARE(m_posted->at(0).at(0).toInt(), command);
    const Event expected { { "name", "UPS 7" }, { "controlId", command }, { "controlValue", "" } };
    QCOMPARE(m_posted->at(0).at(1).value<Event>(), expected);
}

void tst_TavoView::declinedSendsNothing()
{
    const ModalAnswer answer([](QDialog &box) { QTest::keyClick(&box, Qt::Key_Escape); });
    click("power_off");
    QVERIFY(answer.hasAnswered());
    QCOMPARE(m_posted->size(), 0);
}

void tst_TavoView::reportsGoOnBehindTheBox()
{
    tabs()->setCurrentIndex(tavoView::RealDataTab);
    QString seen;
    const ModalAnswer answer([&](QDialog &box) {
        QMetaObject::invokeMethod(
            m_view.get(),
            [this] {
                m_view->flushData({ { 4105, 190.0f } });
            },
            Qt::QueuedConnection);
        QTimer::singleShot(50, &box, [&] {
            seen = panelValue("Battery voltage:");
            box.accept();
        });
    });
    click("battery_test");
    QCOMPARE(seen, QString("190.0V"));
    QCOMPARE(sent(), (QList<QPair<int, QString>> { { 1003, "" } }));
}

void tst_TavoView::viewDeletedBehindTheBox()
{
    const ModalAnswer answer([this](QDialog &box) {
        m_posted.reset();
        m_view.reset();
        box.accept();
    });
    // The click's sender dies with the view: call through the event loop, as a user does.
    QTimer::singleShot(0, m_view.get(), [this] { click("download_history_log"); });
    QTRY_VERIFY(answer.hasAnswered() && !m_view);
}

void tst_TavoView::userLoggedOffBehindTheBox()
{
    const ModalAnswer answer([this](QDialog &box) {
        m_view->setUserInfo("guest", 0);
        box.accept();
    });
    click("power_off");
    QVERIFY(answer.hasAnswered());
    QCOMPARE(m_posted->size(), 0);
}

void tst_TavoView::upgradeStepFollowsTheCommand()
{
    QStringList calls;
    m_view->setUpgradeStep(
        [&](const QString &device) { calls.append(device + QString::number(m_posted->size())); });
    const ModalAnswer answer([](QDialog &box) { box.accept(); });
    click("ups_upgrade");
    QCOMPARE(calls, QStringList("UPS 71")); // after the command was posted
}

void tst_TavoView::timeNeedsItsEditor()
{
    const auto press = [this](const QString &name) {
        QPushButton button("Set");
        button.setObjectName(name);
        connect(&button, SIGNAL(clicked()), m_view.get(), SLOT(pushButtonSlot()));
        const ModalAnswer answer([](QDialog &box) { box.accept(); });
        button.click();
    };
    press("timeSet");
    QCOMPARE(sent().size(), 0);
    auto *editor = new QDateTimeEdit(QDateTime(QDate(2024, 1, 31), QTime(12, 0)), m_view.get());
    editor->setObjectName("timeEdit");
    editor->setDisplayFormat("yyyy-MM-dd HH:mm:ss");
    press("timeSet");
    press("some other");
    QCOMPARE(sent(),
             (QList<QPair<int, QString>> { { 1011, "2024-01-31 12:00:00" }, { 2016, "1,300" } }));
}

void tst_TavoView::historyIsDownloaded_data()
{
    QTest::addColumn<QString>("fileName"); // null: cancelled
    QTest::addColumn<bool>("isSent");
    QTest::newRow("chosen") << "history.csv" << true;
    QTest::newRow("cancelled") << QString() << true;
    QTest::newRow("cannot be written") << "taken.csv" << false;
}

void tst_TavoView::historyIsDownloaded()
{
    QFETCH(QString, fileName);
    QFETCH(bool, isSent);
    m_guard->expect("tavoView: cannot write");
    const QTemporaryDir folder;
    const QString path = fileName.isNull() ? QString() : folder.filePath(fileName);
    QFile old(folder.filePath("history.csv"));
    QVERIFY(old.open(QIODevice::WriteOnly) && old.write("old") == 3);
    old.close();
    QVERIFY(QDir(folder.path()).mkdir("taken.csv"));
    QList<std::shared_ptr<ModalAnswer>> answers;
    answers.append(std::make_shared<ModalAnswer>([&](QDialog &box) {
        answers.append(std::make_shared<ModalAnswer>([&](QDialog &dialog) {
            auto *chooser = qobject_cast<QFileDialog *>(&dialog);
            QVERIFY(chooser && chooser->windowTitle() == "Save");
            QCOMPARE(chooser->nameFilters(), QStringList("files(*.csv)"));
            if (isSent == false) // the notice that follows
                answers.append(std::make_shared<ModalAnswer>([](QDialog &last) { last.accept(); }));
            chooser->selectFile(path);
            dialog.done(path.isNull() ? QDialog::Rejected : QDialog::Accepted);
        }));
        box.accept();
    }));
    click("download_history_log");
    QList<QPair<int, QString>> expected;
    if (isSent)
        expected.append({ 1045, path });
    QCOMPARE(sent(), expected);
    QCOMPARE(QFileInfo(old).size(), path == old.fileName() ? 0 : 3);
    QVERIFY(answers.last()->hasAnswered());
}

void tst_TavoView::userLevels()
{
    auto *dialog = child<Dialog>();
    tabs()->setCurrentIndex(tavoView::MaintenanceTab);
    m_view->show();
    for (int round = 0; round < 2; ++round) {
        m_view->setUserInfo("guest", 0);
        QVERIFY(!child<QWidget>("ControlTable")->isEnabled());
        QVERIFY(!tabs()->isTabEnabled(4) && tabs()->tabBar()->tabRect(4).width() <= 0);
        QVERIFY(tabs()->currentIndex() != 4);
        click("power_off"); // does nothing: the button is disabled
        doubleClick("basicTable", "Boost cycle:");
        QVERIFY(!dialog->isVisible());
        m_view->setUserInfo("admin", 1);
        QVERIFY(child<QWidget>("ControlTable")->isEnabled());
        QVERIFY(tabs()->isTabEnabled(4) && tabs()->tabBar()->tabRect(4).width() > 20);
        doubleClick("basicTable", "Boost cycle:");
        QVERIFY(dialog->isVisible() && !dialog->isModal());
    }
    m_view->setUserInfo("guest", 0);
    QVERIFY(!dialog->isVisible()); // an editing does not survive the log-off
    QCOMPARE(m_posted->size(), 0);
}

void tst_TavoView::settingIsEdited()
{
    tabs()->setCurrentIndex(tavoView::ControlTab);
    m_view->flushData({ { 3007, 2.2f }, { 3035, 2.0f } });
    doubleClick("basicTable", "Cell float voltage:");
    auto *dialog = child<Dialog>();
    auto *edit = dialog->findChild<QLineEdit *>();
    QTest::keyClicks(edit, "2.25");
    QTest::keyClick(edit, Qt::Key_Return);
    QCOMPARE(sent(), (QList<QPair<int, QString>> { { 1029, "3007,225" } }));
    QCOMPARE(m_posted->at(0).at(1).value<Event>().value("name").toString(), QString("UPS 7"));
    QCOMPARE(cell("basicTable", "Cell float voltage:", 1), QString("2.25"));
    m_view->flushData({ { 3007, 2.25f }, { 3035, 2.0f } });
    QCOMPARE(cell("basicTable", "Cell float voltage:", 1), QString("2.25V"));
    // A list opens on what the device has, so that a stray Enter changes nothing.
    doubleClick("adjustTable", "Bypass voltage lower limit:");
    QCOMPARE(dialog->getstrValue(), QString("-15"));
}

void tst_TavoView::readableOnDarkDesktops()
{
    const QPalette before = QApplication::palette();
    QPalette dark(QColor(45, 45, 48), QColor(35, 35, 38));
    dark.setColor(QPalette::WindowText, Qt::white);
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::ButtonText, Qt::white);
    QApplication::setPalette(dark);
    m_view->resize(1000, 640);
    m_view->show();
    m_view->flushData({ { 2010, 1.0f } });
    // Dark enough to be read on white: both the text and the white ground are there.
    const auto darkest = [](QWidget *widget) {
        const QImage image = widget->grab().toImage();
        int lightness = 255;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                lightness = std::min(lightness, qGray(image.pixel(x, y)));
        }
        return lightness;
    };
    tabs()->setCurrentIndex(tavoView::AlarmTab);
    auto *record = child<QTableWidget>("RecordTable");
    QVERIFY(darkest(record->horizontalHeader()->viewport()) < 120);
    QVERIFY(darkest(record->viewport()) < 120);
    m_view->flushData({});
    QVERIFY(darkest(record->viewport()) < 150); // "No events"
    tabs()->setCurrentIndex(tavoView::ControlTab);
    QVERIFY(darkest(child<QTableWidget>("basicTable")->horizontalHeader()->viewport()) < 120);
    for (const QLabel *label : m_view->findChildren<QLabel *>("PanalBodyKeyValue"))
        QVERIFY(label->palette().color(QPalette::WindowText).lightness() < 120);
    QApplication::setPalette(before);
}

QTEST_MAIN(tst_TavoView)
#include "tst_tavoview.moc"
