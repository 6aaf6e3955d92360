#include "dialogs/dialog.h"
#include "modalanswer.h"
#include "pages/historynote.h"
#include "style/noteline.h"
#include "style/notetext.h"
#include "viewtest.h"

#include <QDateTimeEdit>
#include <QFileDialog>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabBar>
#include <QToolButton>
#include <QWheelEvent>

#include <memory>
#include <sys/stat.h>

class tst_ViewControl : public ViewTest
{
    Q_OBJECT

private slots:
    void buttonAsksFirst()
    {
        const ModalAnswer decline([](QDialog &box) { QTest::keyClick(&box, Qt::Key_Escape); });
        click("power_off");
        QVERIFY(decline.hasAnswered());
        QCOMPARE(m_posted->size(), 0);
        const ModalAnswer confirm([&](QDialog &box) {
            QCOMPARE(box.findChild<QLabel *>()->text(), QString("Shutdown stop output?"));
            // What is added is of its own kind, and stands above the question.
            QCOMPARE(box.findChildren<QLabel *>().size(), 1);
            QCOMPARE(box.findChildren<QPushButton *>().size(), 2);
            const auto notes = box.findChildren<NoteText *>();
            QCOMPARE(notes.size(), 2);
            QCOMPARE(notes[0]->text(),
                     QString("The output is switched off. The load loses its power."));
            QCOMPARE(notes[1]->text(), QString("UPS 7"));
            QVERIFY(notes[1]->y() < notes[0]->y());
            QVERIFY(notes[0]->geometry().bottom() < box.findChild<QLabel *>()->y());
            box.accept();
        });
        click("power_off");
        QCOMPARE(m_posted->size(), 1);
        QCOMPARE(m_posted->at(0).at(0).toInt(), 1007);
        const Event expected { { "name", "UPS 7" }, { "controlId", 1007 }, { "controlValue", "" } };
        QCOMPARE(m_posted->at(0).at(1).value<Event>(), expected);
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

    // Without a mouse: the tables take no focus.
    void keysEditASetting()
    {
        m_view->resize(1000, 640);
        m_view->show();
        tabs()->setCurrentIndex(tavoView::ControlTab);
        auto *bar = child<QWidget>("configStack")->findChild<QTabBar *>();
        auto *table = child<QTableWidget>("basicTable");
        auto *dialog = child<Dialog>();
        const auto keys = [&](std::initializer_list<Qt::Key> pressed) {
            for (const Qt::Key key : pressed)
                QTest::keyClick(bar, key);
            return table->currentRow();
        };
        QCOMPARE(keys({ Qt::Key_Return }), -1);
        QVERIFY(!dialog->isVisible()); // no row was chosen
        QCOMPARE(keys({ Qt::Key_Up, Qt::Key_Down, Qt::Key_Down, Qt::Key_Up }), 1);
        QCOMPARE(table->selectedItems().size(), 3);
        for (const Qt::Key key : { Qt::Key_Enter, Qt::Key_Return, Qt::Key_F2 }) {
            keys({ key });
            QVERIFY(dialog->isVisible());
            QCOMPARE(dialog->windowTitle(), table->item(1, 0)->text());
            dialog->reject();
        }
        QVERIFY(keys({ Qt::Key_PageDown }) > 3);
        QVERIFY(table->visualItemRect(table->item(1, 0)).top() >= 0); // still in sight
        QCOMPARE(keys({ Qt::Key_PageUp, Qt::Key_PageUp, Qt::Key_PageUp }), 0);
        QCOMPARE(keys({ Qt::Key_Right }), 0);
        QCOMPARE(child<QWidget>("configStack")->findChild<QTabWidget *>()->currentIndex(), 1);
    }

    // In the smallest window all buttons are seen at once, and the rest is reached.
    void controlFitsSmallWindows()
    {
        tabs()->setCurrentIndex(tavoView::ControlTab);
        m_view->resize(900, 420);
        m_view->show();
        auto *page = child<QScrollArea>("ControlTable");
        QTRY_VERIFY(!page->horizontalScrollBar()->isVisible());
        QVERIFY(page->verticalScrollBar()->isVisible());
        m_view->setUserInfo("guest", 0);
        QWheelEvent wheel({ 50, 50 }, page->mapToGlobal({ 50, 50 }), {}, { 0, -120 }, {}, {}, {},
                          false);
        QApplication::sendEvent(page->widget(), &wheel);
        QVERIFY(page->verticalScrollBar()->value() > 0);
    }

    void dialogTellsOfItsDevice()
    {
        m_view->flushData({ { 3007, 2.25f } });
        m_view->setGeometry(100, 80, 600, 500);
        m_view->show();
        doubleClick("basicTable", "Cell float voltage:");
        auto *dialog = child<Dialog>();
        QStringList texts;
        for (const NoteText *note : dialog->findChildren<NoteText *>())
            texts.append(note->text());
        for (const char *text : { "UPS 7", "Now: 2.25V", "V" })
            QVERIFY2(texts.contains(text), qPrintable(texts.join(',')));
        QVERIFY((dialog->geometry().center() - m_view->geometry().center()).manhattanLength() < 4);
        QCOMPARE(dialog->findChildren<QLabel *>().size(), 4);
        QCOMPARE(dialog->findChildren<QPushButton *>().size(), 2);
        m_view->flushUpsInfo("state", 1); // nothing can be sent now
        QVERIFY(!dialog->findChild<QPushButton *>("btnBlue")->isEnabled());
        QTest::keyClicks(dialog->findChild<QLineEdit *>(), "2.2\r");
        QCOMPARE(m_posted->size(), 0);
        m_view->flushUpsInfo("state", 0);
        QVERIFY(dialog->findChild<QPushButton *>("btnBlue")->isEnabled());
        m_view->hide(); // or it would write to its device from over another's view
        QVERIFY(!dialog->isVisible());
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
        const QString pipe = folder.filePath("pipe.csv"); // which nobody reads yet
        QVERIFY(writeFile(target, "old") && ::mkfifo(qPrintable(pipe), 0600) == 0);
        QString proposed;
        for (const QString &file : { QString(), target, pipe }) { // cancelled, chosen
            std::unique_ptr<ModalAnswer> choice;
            const ModalAnswer confirmation([&](QDialog &box) {
                choice = std::make_unique<ModalAnswer>([&](QDialog &dialog) {
                    auto *chooser = qobject_cast<QFileDialog *>(&dialog);
                    QVERIFY(chooser && chooser->windowTitle() == "Save");
                    QCOMPARE(chooser->nameFilters(), QStringList("files(*.csv)"));
                    proposed = chooser->findChild<QLineEdit *>()->text();
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
        QCOMPARE(m_posted->size(), 3);
        QCOMPARE(proposed,
                 QString("UPS_7-history-%1.csv").arg(QDate::currentDate().toString("yyyyMMdd")));
    }

    // Busy from the choice to the outcome; a cancelled choice is none.
    void downloadIsFollowed()
    {
        ClientNews news;
        m_view->follow(news);
        HistoryNote &page = *m_view->findChild<HistoryNote *>();
        const auto *note = page.findChild<NoteLine *>();
        const auto *tick = page.findChild<QTimer *>();
        const auto *open = page.findChild<QToolButton *>();
        const auto told = [&](const HistoryOutcome &outcome) {
            emit news.historyExported(outcome);
            return (note->tone() == NoteLine::Tone::Alarm ? "! " : "") + note->text()
                + (open->isHidden() ? "" : " >");
        };
        page.begin("b.csv");
        QVERIFY(note->text().endsWith(" 0:00") && !tick->isActive()); // hidden
        tabs()->setCurrentIndex(tavoView::MaintenanceTab);
        m_view->show();
        QVERIFY(tick->isActive());
        QTRY_VERIFY(note->text().endsWith(" 0:01"));
        QCOMPARE(told({ "b.csv", 1, {} }), QString("1 record in b.csv >"));
        QVERIFY(!tick->isActive());
        QCOMPARE(told({ "a.csv", 0, {} }), QString("! No history records in a.csv"));
        QCOMPARE(told({ "a.csv", 312, {} }), QString("312 records in a.csv >"));
        QCOMPARE(told({ "a.csv", 0, "full" }), QString("! The history was not saved: full"));
        page.begin({});
        QCOMPARE(told({ {}, 0, "no file was named" }), QString("The download was cancelled"));
    }
};

QTEST_MAIN(tst_ViewControl)
#include "tst_viewcontrol.moc"
