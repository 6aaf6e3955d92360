#include "guardedtest.h"
#include "modalanswer.h"
#include "view/dialog.h"
#include "view/energyline.h"
#include "view/tavoview.h"

#include <QDateTimeEdit>
#include <QFileDialog>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>

#include <memory>

using Event = QMap<QString, QVariant>;

class tst_TavoView : public GuardedTest
{
    Q_OBJECT

private slots:
    void init()
    {
        GuardedTest::init();
        m_view = std::make_unique<tavoView>();
        m_view->refreshLayout();
        m_view->setName("UPS 7");
        m_view->setUserInfo("admin", 1);
        m_posted = std::make_unique<QSignalSpy>(m_view.get(), &CollectView::postDEvent);
    }

    void cleanup()
    {
        m_posted.reset();
        m_view.reset();
        GuardedTest::cleanup();
    }

    void widgetsAreFoundByName()
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

    void settingsShowValuesAndRanges()
    {
        tabs()->setCurrentIndex(tavoView::ControlTab);
        m_view->flushData({});
        QCOMPARE(cell("basicTable", "Boost cycle:", 1), QString("-")); // never answered
        m_view->flushData({ { 3007, 2.25f }, { 3045, 1.0f }, { 3011, 0.0f }, { 3000, 3.0f } });
        QCOMPARE(cell("basicTable", "Boost cycle:", 1), QString("0Hour")); // missing in the report
        QCOMPARE(cell("basicTable", "Cell float voltage:", 1), QString("2.25V"));
        QCOMPARE(cell("basicTable", "Cell float voltage:", 2), QString("3.3-4.15"));
        QCOMPARE(cell("adjustTable", "Charge current limit:", 1), QString("0.5A"));
        QCOMPARE(cell("adjustTable", "Charge current limit:", 2), QString("-"));
        QCOMPARE(cell("basicTable", "System work mode:", 1), QString()); // no such option
        const auto *last = child<QTableWidget>("basicTable")->item(33, 1);
        QCOMPARE(last->foreground().color(), QColor(Qt::blue));
    }

    void refreshWritesOnlyChanges()
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

    void otherTabsCatchUp()
    {
        m_view->flushData({ { 4133, 229.96f }, { 4134, 231.0f }, { 3013, 7.0f } });
        QCOMPARE(panelValue("Input voltage:"), QString("-"));
        tabs()->setCurrentIndex(tavoView::RealDataTab);
        QCOMPARE(panelValue("Input voltage:"), QString("230.0/231.0/0.0V"));
        QCOMPARE(panelValue("Serial number:"), QString("-")); // missing in the report
        QCOMPARE(cell("basicTable", "Boost cycle:", 1), QString("-"));
        tabs()->setCurrentIndex(tavoView::ControlTab);
        QCOMPARE(cell("basicTable", "Boost cycle:", 1), QString("7Hour"));
        for (const int lost : { 1, 0 }) {
            m_view->flushUpsInfo("state", lost);
            QCOMPARE(child<QLabel>("PanalBodyKeyValue")->font().italic(), lost == 1);
        }
    }

    void eventsAreListed()
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

    void buttonsSendCommands()
    {
        const struct
        {
            const char *button;
            const char *text;
            int command;
        } rows[] = { { "buzzer_off", "Turn off?", 1010 },
                     { "power_off", "Shutdown stop output?", 1007 },
                     { "battery_test", "Battery test 20s?", 1003 },
                     { "ups_upgrade", "UPS upgrade?", 1018 } };
        for (const auto &row : rows) {
            m_posted->clear();
            const ModalAnswer decline([](QDialog &box) { QTest::keyClick(&box, Qt::Key_Escape); });
            click(row.button);
            QVERIFY(decline.hasAnswered() && m_posted->isEmpty());
            const ModalAnswer confirm([&](QDialog &box) {
                QCOMPARE(box.findChild<QLabel *>()->text(), QString(row.text));
                box.accept();
            });
            click(row.button);
            QCOMPARE(m_posted->size(), 1);
            QCOMPARE(m_posted->at(0).at(0).toInt(), row.command);
            const Event expected { { "name", "UPS 7" },
                                   { "controlId", row.command },
                                   { "controlValue", "" } };
            QCOMPARE(m_posted->at(0).at(1).value<Event>(), expected);
        }
    }

    void reportsGoOnBehindTheBox()
    {
        tabs()->setCurrentIndex(tavoView::RealDataTab);
        QString seen;
        const ModalAnswer answer([&](QDialog &box) {
            QTimer::singleShot(0, m_view.get(), [this] {
                m_view->flushData({ { 4105, 190.0f } });
            });
            QTimer::singleShot(50, &box, [&] {
                seen = panelValue("Battery voltage:");
                box.accept();
            });
        });
        click("battery_test");
        QCOMPARE(seen, QString("190.0V"));
        QCOMPARE(sent(), QStringList("1003 "));
    }

    void viewDeletedBehindTheBox()
    {
        const ModalAnswer answer([this](QDialog &box) {
            m_posted.reset();
            m_view.reset();
            box.accept();
        });
        QTimer::singleShot(0, m_view.get(), [this] { click("download_history_log"); });
        QTRY_VERIFY(answer.hasAnswered() && !m_view);
    }

    void otherSenders()
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

    void historyIsDownloaded()
    {
        // Not in the working directory, which the chooser reads on its own while it selects.
        const QTemporaryDir folder;
        const QString target = folder.filePath("history.csv");
        QVERIFY(writeFile(target, "old"));
        for (const QString &file : { QString(), target }) { // cancelled, chosen
            std::unique_ptr<ModalAnswer> choice;
            const ModalAnswer confirmation([&](QDialog &box) {
                choice = std::make_unique<ModalAnswer>([&](QDialog &dialog) {
                    auto *chooser = qobject_cast<QFileDialog *>(&dialog);
                    QVERIFY(chooser && chooser->windowTitle() == "Save");
                    QCOMPARE(chooser->nameFilters(), QStringList("files(*.csv)"));
                    // As typed: a selection is lost when the chooser reads its folder meanwhile.
                    chooser->findChild<QLineEdit *>()->setText(file);
                    dialog.done(file.isNull() ? QDialog::Rejected : QDialog::Accepted);
                });
                box.accept();
            });
            click("download_history_log");
            QCOMPARE(sent().last(), "1045 " + file);
            QCOMPARE(fileContents(target), QByteArray(file.isNull() ? "old" : ""));
        }
        QCOMPARE(m_posted->size(), 2);
    }

    void userLevels()
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
        m_view->setUserInfo("admin", 1);
        // A list opens on what the device has, so that a stray Enter changes nothing.
        m_view->flushData({ { 3035, 2.0f } });
        doubleClick("adjustTable", "Bypass voltage lower limit:");
        QCOMPARE(dialog->getstrValue(), QString("-15"));
        m_view->setUserInfo("guest", 0);
        click("power_off"); // does nothing: the button is disabled
        m_view->setUserInfo("admin", 1);
        const ModalAnswer answer([this](QDialog &box) {
            m_view->setUserInfo("guest", 0); // too late
            box.accept();
        });
        click("power_off");
        QVERIFY(answer.hasAnswered() && m_posted->isEmpty());
    }

    void levelZeroLooksAtSettings()
    {
        m_view->show();
        m_view->setUserInfo("guest", 0);
        tabs()->setCurrentIndex(tavoView::ControlTab);
        auto *inner = child<QStackedWidget>("configStack")->findChild<QTabWidget *>();
        for (const int index : { 2, 0 }) {
            const QPoint title = inner->tabBar()->tabRect(index).center();
            QTest::mouseClick(inner->tabBar(), Qt::LeftButton, {}, title);
            QCOMPARE(inner->currentIndex(), index);
        }
        auto *table = child<QTableWidget>("basicTable");
        QWheelEvent wheel({}, {}, {}, { 0, -120 }, {}, {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(table->viewport(), &wheel);
        QCOMPARE(table->rowAt(0), QApplication::wheelScrollLines());
    }

    void readableOnDarkDesktops()
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
            bool isDark = false;
            for (int i = 0; i < image.width() * image.height() && !isDark; ++i)
                isDark = qGray(image.pixel(i % image.width(), i / image.width())) < 150;
            return isDark;
        };
        tabs()->setCurrentIndex(tavoView::AlarmTab);
        auto *record = child<QTableWidget>("RecordTable");
        QVERIFY(isReadable(record->viewport())); // "No events"
        m_view->flushData({ { 2010, 1.0f } });
        QVERIFY(isReadable(record->viewport())
                && isReadable(record->horizontalHeader()->viewport()));
        tabs()->setCurrentIndex(tavoView::RealDataTab);
        QVERIFY(isReadable(child<QLabel>("PanalBodyKeyValue")));
        QApplication::setPalette(before);
    }

private:
    template <typename Widget> Widget *child(const QString &name = {}) const
    {
        return m_view->findChild<Widget *>(name);
    }
    QTabWidget *tabs() const { return child<QTabWidget>(); }

    QString cell(const QString &table, const QString &row, int column) const
    {
        auto *widget = child<QTableWidget>(table);
        const auto items = widget->findItems(row, Qt::MatchExactly);
        return items.isEmpty() ? "no such row" : widget->item(items.first()->row(), column)->text();
    }

    // The value label beside a name, in whichever panel.
    QString panelValue(const QString &name) const
    {
        const auto names = m_view->findChildren<QLabel *>("PanalBodyKeyName");
        const auto values = m_view->findChildren<QLabel *>("PanalBodyKeyValue");
        for (int i = 0; i < names.size(); ++i) {
            if (names.at(i)->text() == name)
                return values.at(i)->text();
        }
        return "no such panel row";
    }

    void doubleClick(const QString &table, const QString &row)
    {
        auto *widget = child<QTableWidget>(table);
        emit widget->cellDoubleClicked(widget->findItems(row, Qt::MatchExactly).first()->row(), 1);
    }

    void click(const QString &button) { child<QPushButton>(button)->click(); }

    // What was posted: "type argument".
    QStringList sent() const
    {
        QStringList result;
        for (const QList<QVariant> &arguments : *m_posted)
            result.append(arguments.at(0).toString() + ' '
                          + arguments.at(1).value<Event>().value("controlValue").toString());
        return result;
    }

    std::unique_ptr<tavoView> m_view;
    std::unique_ptr<QSignalSpy> m_posted;
};

QTEST_MAIN(tst_TavoView)
#include "tst_tavoview.moc"
