#include "guardedtest.h"
#include "modalanswer.h"
#include "view/dialog.h"
#include "view/msgbox.h"

#include <QComboBox>
#include <QLineEdit>
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

    void typedValues()
    {
        const struct
        {
            float scale;
            int min;
            int max;
            const char *typed;
            const char *sent; // null: refused
        } rows[] = { { 0.1f, 500, 700, "50.5", "3007,505" },
                     { 0.01f, 210, 235, "2.345", "3007,235" }, // rounded half up
                     { 0.01f, 210, 235, "2.349", "3007,235" },
                     { 0.01f, 210, 235, "2.36", nullptr },
                     { 0.01f, 210, 235, "2.09", nullptr },
                     { 0.5f, 0, 0, "3", "3007,6" },
                     { 0.1f, 0, 0, "-3.0", "3007,-30" },
                     { 0.01f, 210, 235, "2,25", nullptr },
                     { 1.0f, 0, 10, "abc", "3007,0" }, // no number reads as 0
                     { 1.0f, 1, 10, "inf", nullptr },
                     { 1.0f, 0, 10, "1e60", nullptr }, // an overflow is not 0
                     { 0.01f, 0, 0, "-1e39", nullptr },
                     { 1.0f, 0, 0, "1e999", nullptr },
                     { 0.0f, 0, 0, "5", nullptr } };
        for (const auto &row : rows) {
            m_posted->clear();
            load(row.scale, row.min, row.max);
            QCOMPARE(sentAfter(row.typed), row.sent ? QStringList(row.sent) : QStringList());
            QCOMPARE(m_record.value, QString(row.sent ? row.typed : "-"));
        }
    }

    void chosenOptions()
    {
        const struct
        {
            float scale;
            const char *option;
            const char *sent;
        } rows[] = { { 1.0f, "12.0", "3007,12" },
                     { 0.01f, "12.0", "3007,1200" },
                     { 0.01f, "0.5", "3007,50" }, // the half that no integer keeps
                     { 0.01f, "zero", "3007,0" },
                     { 0.0f, "12.0", "3007,12" } };
        m_record.combo = { { "0.5", 0 }, { "12.0", 12 }, { "zero", 0 } };
        for (const auto &row : rows) {
            m_posted->clear();
            load(row.scale, 0, 0);
            m_dialog->setDevName("UPS 7");
            auto *box = m_dialog->findChild<QComboBox *>();
            QCOMPARE(box->itemData(1).toInt(), 12);
            box->setCurrentText(row.option);
            QTest::keyClick(box, Qt::Key_Enter);
            QCOMPARE(m_posted->size(), 1);
            QCOMPARE(m_posted->at(0).at(0).toInt(), 1029);
            const Event expected { { "controlId", 2016 },
                                   { "controlValue", row.sent },
                                   { "nodeValue", row.option },
                                   { "nodeName", "Number:" },
                                   { "name", "UPS 7" } };
            QCOMPARE(m_posted->at(0).at(1).value<Event>(), expected);
        }
    }

    void textIsCut()
    {
        m_record.type = TextValue;
        m_record.length = 4;
        load(1, 0, 0);
        QCOMPARE(sentAfter("1e99%1"), QStringList("3007,1e99"));
        QCOMPARE(m_record.value, QString("1e99%1"));
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

    void boxAnswers()
    {
        const int rows[][3] = { { 1, Qt::Key_Return, 0 }, // a stray Enter confirms no question
                                { 1, Qt::Key_Escape, 0 },
                                { 0, Qt::Key_Return, 1 } };
        for (const auto &[kind, key, result] : rows) {
            MsgBox box(kind, QString(999, '/'));
            QVERIFY(box.sizeHint().width() < 700); // wrapped
            const ModalAnswer answer([&, kind = kind, key = key](QDialog &shown) {
                QCOMPARE(button(shown, "btnWhite")->isVisible(), kind == 1);
                QCOMPARE(shown.focusWidget(), button(shown, kind == 1 ? "btnWhite" : "btnBlue"));
                QTest::keyClick(shown.focusWidget(), Qt::Key(key));
            });
            QCOMPARE(box.exec(), result);
            QVERIFY(answer.hasAnswered());
        }
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
