#include "dialogs/dialog.h"
#include "dialogs/msgbox.h"
#include "guardedtest.h"
#include "modalanswer.h"
#include "style/notetext.h"

#include <QComboBox>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QStackedWidget>

#include <memory>

using Event = QMap<QString, QVariant>;

namespace {

QPushButton *button(const QWidget &dialog, const char *name)
{
    return dialog.findChild<QPushButton *>(name);
}

} // namespace

class tst_Dialog : public GuardedTest
{
    Q_OBJECT

private slots:
    void init()
    {
        GuardedTest::init();
        m_dialog = std::make_unique<Dialog>();
        m_posted = std::make_unique<QSignalSpy>(m_dialog.get(), &Dialog::postDEvent);
        m_record = {};
        m_record.name = "Number:";
    }

    void cleanup()
    {
        m_posted.reset();
        m_dialog.reset();
        GuardedTest::cleanup();
    }

    void typedValues_data()
    {
        // sent: nothing: refused
        const Columns<float, int, int, QString, QString> row("scale", "min", "max", "typed",
                                                             "sent");
        row("a half is rounded up", 0.01f, 210, 235, "2.345", "3007,235");
        row("rounded down into the range", 0.01f, 210, 235, "2.349", "3007,235");
        row("range that ends at zero", 1.0f, -10, 0, "1", "");
        row("divided by another scale", 0.5f, 0, 0, "3", "3007,6");
        row("negative", 0.1f, 0, 0, "-3.0", "3007,-30");
        row("decimal comma", 0.01f, 210, 235, "2,25", "");
        row("no number reads as 0", 1.0f, 0, 10, "abc", "3007,0");
        row("infinite", 1.0f, 1, 10, "inf", "");
        row("an overflow is not 0", 1.0f, 0, 10, "1e60", "");
        row("negative overflow", 0.01f, 0, 0, "-1e39", "");
        row("more than a double holds", 1.0f, 0, 0, "1e999", "");
        row("the most that is exact", 1.0f, 0, 0, "16777216", "3007,16777216");
        row("more than a float counts", 1.0f, 0, 0, "16777218", "");
        row("no scale", 0.0f, 0, 0, "5", "");
    }

    void typedValues()
    {
        QFETCH(float, scale);
        QFETCH(int, min);
        QFETCH(int, max);
        QFETCH(QString, typed);
        QFETCH(QString, sent);
        load(scale, min, max);
        QCOMPARE(sentAfter(typed), sent.isEmpty() ? QStringList() : QStringList(sent));
        QCOMPARE(m_record.value, sent.isEmpty() ? QString("-") : typed);
    }

    // The half that no integer keeps; the others are walked through.
    void chosenOption()
    {
        m_record.combo = { { "0.5", 0 }, { "12.0", 12 }, { "zero", 0 } };
        load(0.01f, 0, 0);
        m_dialog->setDevName("UPS 7");
        auto *box = m_dialog->findChild<QComboBox *>();
        QCOMPARE(box->itemData(1).toInt(), 12);
        box->setCurrentText("0.5");
        QTest::keyClick(box, Qt::Key_Enter);
        QCOMPARE(m_posted->size(), 1);
        QCOMPARE(m_posted->at(0).at(0).toInt(), 1029);
        const Event expected { { "controlId", 2016 },
                               { "controlValue", "3007,50" },
                               { "nodeValue", "0.5" },
                               { "nodeName", "Number:" },
                               { "name", "UPS 7" } };
        QCOMPARE(m_posted->at(0).at(1).value<Event>(), expected);
    }

    void remarks_data()
    {
        const Columns<float, QString, QString> row("scale", "typed", "remark");
        row("nothing yet", 0.01f, "", "");
        row("within", 0.01f, "2.25", "");
        row("a binary fraction that is none", 0.1f, "22.1", "");
        row("rounded", 0.01f, "2.349", "Will be sent as 2.35V");
        row("rounded into the range", 0.01f, "2.3549", "Will be sent as 2.35V");
        row("below", 0.01f, "2.09", "Out of range");
        row("rounded out of the range", 0.01f, "2.355", "Out of range");
        row("no number", 0.01f, "2,2", "Not a number: counts as 0");
    }

    void remarks()
    {
        QFETCH(float, scale);
        QFETCH(QString, typed);
        QFETCH(QString, remark);
        m_record.type = TwoDecimals;
        m_record.unit = "V";
        load(scale, 210, 235);
        m_dialog->findChild<QLineEdit *>()->setText(typed);
        QStringList texts;
        for (const NoteText *note : m_dialog->findChildren<NoteText *>())
            texts.append(note->text());
        texts.removeAll({});
        QCOMPARE(texts, QStringList { "V" } + QStringList(remark).filter(QRegularExpression(".")));
    }

    void noticeLeavesTheFieldInSight()
    {
        const QRect screen(0, 0, 1000, 800);
        const QSize box(300, 150);
        for (const QRect &window : { QRect(10, 10, 360, 250), QRect(700, 500, 360, 250) }) {
            const QRect place(besideWindow(window, box, screen), box);
            QVERIFY(screen.contains(place) && !place.intersects(window));
        }
    }

    void busyAfterOk()
    {
        load(1, 0, 10);
        sentAfter("5");
        m_record.name = QString(35, 'w');
        load(1, 0, 10); // a new record ends the old one
        QVERIFY(m_dialog->width() >= m_dialog->sizeHint().width());
        QVERIFY(button(*m_dialog, "btnBlue")->isEnabled());
        QTest::qWait(1200); // the first record's close delay is over
        QVERIFY(m_dialog->isVisible());
        for (const int delay : { 1000, 2000 }) { // with a range, without
            load(1, 0, delay == 1000 ? 10 : 0);
            m_posted->clear();
            Stopwatch timer;
            sentAfter("5");
            QCOMPARE(m_dialog->findChild<QStackedWidget *>()->currentIndex(), 2);
            QVERIFY(!button(*m_dialog, "btnBlue")->isEnabled());
            QTest::keyClick(m_dialog.get(), Qt::Key_Return);
            m_dialog->checkRange();
            QCOMPARE(m_posted->size(), 1);
            QTRY_VERIFY(!m_dialog->isVisible());
            QVERIFY2(timer.elapsed() >= delay - 5, QByteArray::number(timer.elapsed()));
        }
    }

    void rangeMayChangeMeanwhile()
    {
        load(0.01f, 210, 235);
        m_record.min = 330;
        m_record.max = 415;
        QCOMPARE(sentAfter("2.25"), QStringList());
        m_dialog->findChild<QLineEdit *>()->clear();
        QCOMPARE(sentAfter("4.15"), QStringList("3007,415"));
    }

    void keys()
    {
        load(1, 0, 10);
        m_dialog->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
        auto *edit = m_dialog->findChild<QLineEdit *>();
        for (QWidget *widget : QList<QWidget *> { edit, button(*m_dialog, "btnBlue"),
                                                  button(*m_dialog, "btnWhite") }) {
            QCOMPARE(QApplication::focusWidget(), widget);
            QTest::keyClick(widget, Qt::Key_Tab);
        }
        QTest::keyClicks(edit, "5");
        QTest::keyClick(edit, Qt::Key_Escape);
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(m_posted->size(), 0);
    }

    void boxAnswers_data()
    {
        const Columns<bool, int, int> row("isQuestion", "key", "result");
        row("a stray Enter confirms nothing", true, Qt::Key_Return, 0);
        row("nor does Escape", true, Qt::Key_Escape, 0);
        row("a notice is read", false, Qt::Key_Return, 1);
    }

    void boxAnswers()
    {
        QFETCH(bool, isQuestion);
        QFETCH(int, key);
        MsgBox box(isQuestion ? MsgBox::Question : MsgBox::Notice, QString(999, '/'));
        QVERIFY(box.sizeHint().width() < 700); // wrapped
        const ModalAnswer answer([&](QDialog &shown) {
            QCOMPARE(button(shown, "btnWhite")->isVisible(), isQuestion);
            QCOMPARE(shown.focusWidget(), button(shown, isQuestion ? "btnWhite" : "btnBlue"));
            QTest::keyClick(shown.focusWidget(), Qt::Key(key));
        });
        QTEST(box.exec(), "result");
        QVERIFY(answer.hasAnswered());
    }

    // Nobody else moves a box without a frame.
    void boxIsDragged()
    {
        MsgBox box(MsgBox::Notice, "Startup?");
        box.show();
        const QPoint before = box.pos();
        const auto moveTo = [&box](const QPoint &place) {
            QMouseEvent event(QEvent::MouseMove, place, box.mapToGlobal(place), Qt::NoButton,
                              Qt::LeftButton, {});
            QApplication::sendEvent(&box, &event);
        };
        moveTo({ 9, 9 }); // before any press
        QCOMPARE(box.pos(), before);
        QTest::mousePress(&box, Qt::LeftButton, {}, { 5, 5 });
        moveTo({ 15, 8 });
        QCOMPARE(box.pos(), before + QPoint(10, 3));
        QTest::mouseRelease(&box, Qt::LeftButton, {}, { 5, 5 });
        moveTo({ 9, 9 });
        QCOMPARE(box.pos(), before + QPoint(10, 3));
    }

private:
    void load(float scale, int min, int max)
    {
        m_record.value = "-";
        m_record.dataId = 3007;
        m_record.scale = scale;
        m_record.min = min;
        m_record.max = max;
        m_dialog->initial(&m_record);
        m_dialog->show();
    }

    // What Enter sends after a text was typed; nothing when it is refused.
    QStringList sentAfter(const QString &typed)
    {
        auto *edit = m_dialog->findChild<QLineEdit *>();
        QTest::keyClicks(edit, typed);
        const ModalAnswer answer([](QDialog &box) { QTest::keyClick(&box, Qt::Key_Return); });
        QTest::keyClick(edit, Qt::Key_Return);
        QStringList sent;
        for (const QList<QVariant> &arguments : *m_posted)
            sent.append(arguments.at(1).value<Event>().value("controlValue").toString());
        // Refused means: with a notice, and the page is still there to be corrected.
        if (sent.isEmpty() && (!answer.hasAnswered() || !edit->isVisible()))
            sent.append("nothing happened");
        return sent;
    }

    std::unique_ptr<Dialog> m_dialog;
    std::unique_ptr<QSignalSpy> m_posted;
    ParameterInformation m_record;
};

QTEST_MAIN(tst_Dialog)
#include "tst_dialog.moc"
