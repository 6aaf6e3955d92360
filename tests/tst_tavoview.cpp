#include "diagram/energyline.h"
#include "dialogs/dialog.h"
#include "modalanswer.h"
#include "style/noteline.h"
#include "style/notetext.h"
#include "viewtest.h"

#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QStackedWidget>
#include <QTableWidget>
#include <QToolButton>

#include <algorithm>

class tst_TavoView : public ViewTest
{
    Q_OBJECT

private slots:
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

    void settingsWithoutAValue()
    {
        tabs()->setCurrentIndex(tavoView::ControlTab);
        m_view->flushData({});
        QCOMPARE(cell("basicTable", "Boost cycle:", 1), QString("-")); // never answered
        m_view->flushData({ { 3000, 3.0f } });
        QCOMPARE(cell("basicTable", "Boost cycle:", 1), QString("0Hour")); // missing in the report
        QCOMPARE(cell("basicTable", "System work mode:", 1), QString());   // no such option
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
        for (const float unknown : { 5.0f, -1.0f }) {
            report[3045] = unknown;
            m_view->flushData(report);
            QCOMPARE(cell("basicTable", "Cell float voltage:", 2), QString("3.3-4.15"));
        }
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
        const auto *line = child<QWidget>("AlarmTable")->findChild<NoteLine *>();
        QCOMPARE(note->text(), QString("Nothing received yet"));
        QCOMPARE(note->alignment(), Qt::AlignCenter);
        m_view->flushData({ { 2059, 1.0f } }); // seen while another tab is current
        m_view->flushData({ { 2059, 1.0f }, { 2010, 1.0f } });
        tabs()->setCurrentIndex(tavoView::AlarmTab);
        QCOMPARE(table->item(0, 1)->text(), QString("Overload"));
        QCOMPARE(table->item(1, 1)->text(), QString("Battery voltage low"));
        QVERIFY(QDateTime::fromString(table->item(1, 0)->text(), "yyyy-MM-dd HH:mm:ss").isValid());
        QVERIFY(note->isHidden());
        QCOMPARE(line->text(), QString("2 active"));
        m_view->flushData({ { 2010, 1.0f } });
        QVERIFY(line->text().startsWith("1 active \u00b7 last cleared "));
        // What is not known is neither present nor gone.
        m_view->flushUpsInfo("state", 1);
        QCOMPARE(line->tone(), NoteLine::Tone::Alarm);
        QVERIFY(line->text().startsWith("Unknown \u2013 No communication"));
        QVERIFY(table->font().italic());
        QCOMPARE(table->item(0, 0)->foreground(), table->item(0, 1)->foreground());
        m_view->flushUpsInfo("state", 0);
        m_view->flushData({});
        QVERIFY(table->rowCount() == 0 && !note->isHidden() && !table->font().italic());
        QCOMPARE(note->text(), QString("No events"));
        QVERIFY(line->text().startsWith("0 active"));
    }

    void worstEventsFirst()
    {
        auto *table = child<QTableWidget>("RecordTable");
        tabs()->setCurrentIndex(tavoView::AlarmTab);
        m_view->flushData({ { 2059, 1.0f } });
        m_view->flushData({ { 2059, 1.0f }, { 2071, 1.0f }, { 2082, 1.0f } });
        const auto firsts = [table] {
            QStringList texts;
            for (int row = 0; row < table->rowCount(); ++row)
                texts.append(table->item(row, 1)->text() + ' ' + table->item(row, 0)->toolTip());
            return texts.join(", ");
        };
        QCOMPARE(firsts(),
                 QString("Battery test success Information, Abnormal input Warning, "
                         "Battery voltage low Critical"));
        child<QWidget>("AlarmTable")->findChild<QToolButton *>()->click();
        QCOMPARE(firsts(),
                 QString("Battery voltage low Critical, Abnormal input Warning, "
                         "Battery test success Information"));
        QVERIFY(!table->item(0, 0)->data(Qt::DecorationRole).value<QPixmap>().isNull());
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
        // What stands on a tab's own ground, which is lighter than the window's.
        tabs()->setCurrentIndex(tavoView::ControlTab);
        auto *button = child<QPushButton>("power_off");
        const auto notes = child<QWidget>("ControlTable")->findChildren<NoteText *>();
        const auto isHinted = [&notes] {
            return std::any_of(notes.begin(), notes.end(), [](const NoteText *note) {
                return note->isVisible() && note->text().startsWith("Double-click");
            });
        };
        QVERIFY(isHinted());
        m_view->flushUpsInfo("state", 1);
        QCoreApplication::processEvents();
        QVERIFY(!isHinted()); // nothing can be sent
        // What cannot be pressed looks alike, outlined or not.
        const QImage lost = m_view->grab().toImage();
        const auto groundOf = [&](const QWidget *widget) {
            return lost.pixelColor(widget->mapTo(m_view.get(), QPoint(8, 8))).lightness();
        };
        QCOMPARE(groundOf(button), groundOf(child<QPushButton>("power_on")));
        m_view->flushUpsInfo("state", 0);
        QCoreApplication::processEvents();
        const QImage page = m_view->grab().toImage();
        const QPoint corner = button->mapTo(m_view.get(), QPoint(0, 16));
        const QColor ground = page.pixelColor(corner - QPoint(2, 0));
        const QColor outline = page.pixelColor(corner);
        QVERIFY2(contrast(outline, ground) >= visibleContrast,
                 qPrintable(outline.name() + ground.name()));
        const QColor ink = toneColor(Tone::Alarm, pageGround(m_view->palette()));
        QVERIFY2(contrast(ink, ground) >= 4.5, qPrintable(ink.name() + ground.name()));
        QApplication::setPalette(before);
    }
};

QTEST_MAIN(tst_TavoView)
#include "tst_tavoview.moc"
