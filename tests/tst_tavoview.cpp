#include "modalanswer.h"
#include "view/dialog.h"
#include "view/energyline.h"
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
#include <QtTest>

#include <memory>

using Event = QMap<QString, QVariant>;

class tst_TavoView : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void widgetsAreFoundByName();
    void settingsShowValuesAndRanges();
    void refreshWritesOnlyChanges();
    void otherTabsCatchUp();
    void eventsAreListed();
    void buttonsSendCommands_data();
    void buttonsSendCommands();
    void reportsGoOnBehindTheBox();
    void viewDeletedBehindTheBox();
    void otherSenders();
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
    QStringList sent() const;

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
    m_guard->expect("SetInputFocus");      // of an X server without a window manager
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
    QCOMPARE(unexpected.join('\n'), QString());
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
    emit widget->cellDoubleClicked(widget->findItems(row, Qt::MatchExactly).first()->row(), 1);
}

// What was posted: "type argument".
QStringList tst_TavoView::sent() const
{
    QStringList result;
    for (const QList<QVariant> &arguments : *m_posted)
        result.append(arguments.at(0).toString() + ' '
                      + arguments.at(1).value<Event>().value("controlValue").toString());
    return result;
}

void tst_TavoView::widgetsAreFoundByName()
{
    const auto before = m_view->findChildren<QWidget *>();
    m_view->refreshLayout(); // builds nothing again
    QCOMPARE(m_view->findChildren<QWidget *>(), before);
    QStringList pages;
    for (int i = 0; i < tabs()->count(); ++i)
        pages.append(tabs()->tabText(i) + ' ' + tabs()->widget(i)->objectName());
    QCOMPARE(pages.join(", "),
             QString("Overview OverviewTable, Alarm AlarmTable, RT-data "
                     "realDataTable, Control ControlTable, Maintenance "
                     "MaintainTable"));
    QVERIFY(child<QGridLayout>("tavoView_grid") && child<QGridLayout>("ControlGrid"));
    QVERIFY(child<QStackedWidget>("devStacketTable") && child<QStackedWidget>("configStack"));
    QStringList panels;
    for (const QLabel *title : m_view->findChildren<QLabel *>("PanelTitle"))
        panels.append(title->text());
    QCOMPARE(panels.join(' '), QString("DEVICE OUTPUT INPUT BYPASS BATTERY REC/INV"));
    for (const QString name :
         { "RecordTable", "basicTable", "batteryTable", "adjustTable", "devinforTable" }) {
        auto *table = child<QTableWidget>(name);
        QVERIFY2(table && !table->showGrid(), name.toUtf8());
        QCOMPARE(table->styleSheet(),
                 QString("alternate-background-color: #DDDFF5; background: #FFFFFF;"));
        QStringList headers;
        for (int column = 0; column < table->columnCount(); ++column)
            headers.append(table->horizontalHeaderItem(column)->text());
        QCOMPARE(headers.join(", "),
                 QString(name == "RecordTable" ? "Data/Time, Event description"
                                               : "Parameter, Current settings, Range"));
    }
}

void tst_TavoView::settingsShowValuesAndRanges()
{
    tabs()->setCurrentIndex(tavoView::ControlTab);
    m_view->refreshData();
    QCOMPARE(cell("basicTable", "Boost cycle:", 1), QString("-")); // no report yet
    m_view->flushData({ { 3007, 2.25f }, { 3045, 1.0f }, { 3011, 0.0f }, { 3000, 3.0f } });
    QCOMPARE(cell("basicTable", "Boost cycle:", 1), QString("0Hour")); // missing in the report
    QCOMPARE(cell("basicTable", "Cell float voltage:", 1), QString("2.25V"));
    QCOMPARE(cell("basicTable", "Cell float voltage:", 2), QString("3.3-4.15"));
    QCOMPARE(cell("adjustTable", "Charge current limit:", 1), QString("0.5A"));
    QCOMPARE(cell("adjustTable", "Charge current limit:", 2), QString("-"));
    QCOMPARE(cell("basicTable", "System work mode:", 1), QString()); // no such option
    const auto *basic = child<QTableWidget>("basicTable");
    for (int row = 0; row < basic->rowCount(); ++row) {
        QCOMPARE(basic->item(row, 1)->foreground().color(), QColor(Qt::blue));
        QCOMPARE(basic->item(row, 2)->foreground().color(), QColor(Qt::red));
        QCOMPARE(basic->item(row, 2)->textAlignment(), int(Qt::AlignCenter));
    }
}

void tst_TavoView::refreshWritesOnlyChanges()
{
    auto *basic = child<QTableWidget>("basicTable");
    tabs()->setCurrentIndex(tavoView::ControlTab);
    DataReport report { { 3007, 2.25f }, { 3013, 100.0f } };
    m_view->flushData(report);
    QSignalSpy changes(basic->model(), &QAbstractItemModel::dataChanged);
    m_view->flushData(report);
    QCOMPARE(changes.size(), 0);
    report[3013] = 101.0f;
    m_view->flushData(report);
    QCOMPARE(changes.size(), 1);
    report[3045] = 1.0f; // the battery type: four ranges
    m_view->flushData(report);
    QCOMPARE(changes.size(), 5);
}

void tst_TavoView::otherTabsCatchUp()
{
    m_view->flushData({ { 4133, 229.96f }, { 4134, 231.0f }, { 3013, 7.0f } });
    QCOMPARE(panelValue("Input voltage:"), QString("-"));
    tabs()->setCurrentIndex(tavoView::RealDataTab);
    QCOMPARE(panelValue("Input voltage:"), QString("230.0/231.0/0.0V"));
    QCOMPARE(panelValue("Serial number:"), QString("-")); // missing in the report
    QCOMPARE(cell("basicTable", "Boost cycle:", 1), QString("-"));
    tabs()->setCurrentIndex(tavoView::ControlTab);
    QCOMPARE(cell("basicTable", "Boost cycle:", 1), QString("7Hour"));
}

void tst_TavoView::eventsAreListed()
{
    auto *table = child<QTableWidget>("RecordTable");
    auto *note = table->viewport()->findChild<QLabel *>();
    QCOMPARE(note->text(), QString("No events"));
    m_view->flushData({ { 2059, 1.0f } }); // seen while another tab is current
    m_view->flushData({ { 2059, 1.0f }, { 2010, 1.0f } });
    tabs()->setCurrentIndex(tavoView::AlarmTab);
    QCOMPARE(table->item(0, 1)->text(), QString("Overload"));
    QCOMPARE(table->item(1, 1)->text(), QString("Battery voltage low"));
    QVERIFY(QDateTime::fromString(table->item(1, 0)->text(), "yyyy-MM-dd HH:mm:ss").isValid());
    QVERIFY(note->isHidden());
    m_view->flushData({});
    QVERIFY(table->rowCount() == 0 && !note->isHidden());
}

void tst_TavoView::buttonsSendCommands_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("command");
    QTest::newRow("buzzer_off") << "Turn off" << 1010;
    QTest::newRow("power_off") << "Shutdown stop output" << 1007;
    QTest::newRow("battery_test") << "Battery test 20s" << 1003;
    QTest::newRow("ups_upgrade") << "UPS upgrade" << 1018;
}

void tst_TavoView::buttonsSendCommands()
{
    QFETCH(QString, text);
    QFETCH(int, command);
    const ModalAnswer decline([](QDialog &box) { QTest::keyClick(&box, Qt::Key_Escape); });
    click(QTest::currentDataTag());
    QVERIFY(decline.hasAnswered() && m_posted->isEmpty());
    const ModalAnswer confirm([&](QDialog &box) {
        QCOMPARE(box.findChild<QLabel *>()->text(), text + '?');
        box.accept();
    });
    click(QTest::currentDataTag());
    QCOMPARE(m_posted->size(), 1);
    QCOMPARE(m_posted->at(0).at(0).toInt(), command);
    const Event expected { { "name", "UPS 7" }, { "controlId", command }, { "controlValue", "" } };
    QCOMPARE(m_posted->at(0).at(1).value<Event>(), expected);
}

void tst_TavoView::reportsGoOnBehindTheBox()
{
    tabs()->setCurrentIndex(tavoView::RealDataTab);
    QString seen;
    const ModalAnswer answer([&](QDialog &box) {
        QTimer::singleShot(0, m_view.get(), [this] { m_view->flushData({ { 4105, 190.0f } }); });
        QTimer::singleShot(50, &box, [&] {
            seen = panelValue("Battery voltage:");
            box.accept();
        });
    });
    click("battery_test");
    QCOMPARE(seen, QString("190.0V"));
    QCOMPARE(sent(), QStringList("1003 "));
}

void tst_TavoView::viewDeletedBehindTheBox()
{
    const ModalAnswer answer([this](QDialog &box) {
        m_posted.reset();
        m_view.reset();
        box.accept();
    });
    QTimer::singleShot(0, m_view.get(), [this] { click("download_history_log"); });
    QTRY_VERIFY(answer.hasAnswered() && !m_view);
}

void tst_TavoView::otherSenders()
{
    const auto press = [this](const QString &name) {
        QPushButton button("Set");
        button.setObjectName(name);
        connect(&button, SIGNAL(clicked()), m_view.get(), SLOT(pushButtonSlot()));
        const ModalAnswer answer([](QDialog &box) { box.accept(); });
        button.click();
        return sent();
    };
    QCOMPARE(press("timeSet"), QStringList()); // there is no editor
    auto *editor = new QDateTimeEdit(QDateTime(QDate(2024, 1, 31), QTime(12, 0)), m_view.get());
    editor->setObjectName("timeEdit");
    editor->setDisplayFormat("yyyy-MM-dd HH:mm:ss");
    QCOMPARE(press("timeSet"), QStringList("1011 2024-01-31 12:00:00"));
    QCOMPARE(press("any other").last(), QString("2016 1,300"));
}

void tst_TavoView::historyIsDownloaded_data()
{
    QTest::addColumn<QString>("fileName"); // null: cancelled
    QTest::newRow("chosen") << "history.csv";
    QTest::newRow("cancelled") << QString();
}

void tst_TavoView::historyIsDownloaded()
{
    QFETCH(QString, fileName);
    const QTemporaryDir folder;
    const QString path = fileName.isNull() ? QString() : folder.filePath(fileName);
    QFile old(folder.filePath("history.csv"));
    QVERIFY(old.open(QIODevice::WriteOnly) && old.write("old") == 3);
    old.close();
    std::unique_ptr<ModalAnswer> choice;
    const ModalAnswer confirmation([&](QDialog &box) {
        choice = std::make_unique<ModalAnswer>([&](QDialog &dialog) {
            auto *chooser = qobject_cast<QFileDialog *>(&dialog);
            QVERIFY(chooser && chooser->windowTitle() == "Save");
            QCOMPARE(chooser->nameFilters(), QStringList("files(*.csv)"));
            chooser->selectFile(path);
            dialog.done(path.isNull() ? QDialog::Rejected : QDialog::Accepted);
        });
        box.accept();
    });
    click("download_history_log");
    QCOMPARE(sent(), QStringList("1045 " + path));
    QCOMPARE(QFileInfo(old).size(), path == old.fileName() ? 0 : 3);
}

void tst_TavoView::userLevels()
{
    auto *dialog = child<Dialog>();
    tabs()->setCurrentIndex(tavoView::MaintenanceTab);
    m_view->show();
    for (const int level : { 0, 1, 0, 2, 0 }) {
        const bool mayControl = level != 0;
        m_view->setUserInfo("somebody", level);
        QVERIFY(!dialog->isVisible()); // an editing does not survive the log-off
        QCOMPARE(child<QWidget>("ControlTable")->isEnabled(), mayControl);
        QCOMPARE(tabs()->isTabEnabled(4), mayControl);
        QCOMPARE(tabs()->tabBar()->tabRect(4).width() > 20, mayControl);
        doubleClick("basicTable", "Boost cycle:");
        QCOMPARE(dialog->isVisible(), mayControl);
        QVERIFY(!dialog->isModal());
    }
    click("power_off"); // does nothing: the button is disabled
    m_view->setUserInfo("admin", 1);
    const ModalAnswer answer([this](QDialog &box) {
        m_view->setUserInfo("guest", 0); // too late
        box.accept();
    });
    click("power_off");
    QVERIFY(answer.hasAnswered() && m_posted->isEmpty());
}

void tst_TavoView::settingIsEdited()
{
    tabs()->setCurrentIndex(tavoView::ControlTab);
    m_view->flushData({ { 3007, 2.2f }, { 3035, 2.0f } });
    doubleClick("basicTable", "Cell float voltage:");
    auto *dialog = child<Dialog>();
    QTest::keyClicks(dialog->findChild<QLineEdit *>(), "2.25");
    QTest::keyClick(dialog, Qt::Key_Return);
    QCOMPARE(sent(), QStringList("1029 3007,225"));
    QCOMPARE(m_posted->at(0).at(1).value<Event>().value("name").toString(), QString("UPS 7"));
    QCOMPARE(cell("basicTable", "Cell float voltage:", 1), QString("2.25"));
    // A list opens on what the device has, so that a stray Enter changes nothing.
    doubleClick("adjustTable", "Bypass voltage lower limit:");
    QCOMPARE(dialog->getstrValue(), QString("-15"));
}

void tst_TavoView::readableOnDarkDesktops()
{
    const QPalette before = QApplication::palette();
    QPalette dark(QColor(45, 45, 48), QColor(35, 35, 38));
    for (const auto role : { QPalette::WindowText, QPalette::Text, QPalette::ButtonText })
        dark.setColor(role, Qt::white);
    QApplication::setPalette(dark);
    m_view->resize(1000, 640);
    m_view->show();
    // There is dark text on the white ground.
    const auto isReadable = [](QWidget *widget) {
        const QImage image = widget->grab().toImage();
        int darkest = 255;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                darkest = std::min(darkest, qGray(image.pixel(x, y)));
        }
        return darkest < 150;
    };
    tabs()->setCurrentIndex(tavoView::AlarmTab);
    auto *record = child<QTableWidget>("RecordTable");
    QVERIFY(isReadable(record->viewport())); // "No events"
    m_view->flushData({ { 2010, 1.0f } });
    QVERIFY(isReadable(record->viewport()) && isReadable(record->horizontalHeader()->viewport()));
    tabs()->setCurrentIndex(tavoView::RealDataTab);
    QVERIFY(isReadable(child<QLabel>("PanalBodyKeyValue")));
    QApplication::setPalette(before);
}

QTEST_MAIN(tst_TavoView)
#include "tst_tavoview.moc"
