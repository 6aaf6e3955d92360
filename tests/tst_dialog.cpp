#include "modalanswer.h"
#include "view/dialog.h"
#include "view/msgbox.h"
#include "warningguard.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QtTest>

#include <memory>

using Event = QMap<QString, QVariant>;

namespace {

QPushButton *button(const QWidget &dialog, const char *name)
{
    return dialog.findChild<QPushButton *>(name);
}

} // namespace

class tst_Dialog : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void typedValues_data();
    void typedValues();
    void chosenOptions_data();
    void chosenOptions();
    void textIsCut();
    void busyAfterOk_data();
    void busyAfterOk();
    void newRecordEndsTheOldOne();
    void rangeMayChangeMeanwhile();
    void keys();
    void boxAnswers_data();
    void boxAnswers();

private:
    void load(float scale, int min, int max);
    QStringList sentAfter(const QString &typed);

    std::unique_ptr<WarningGuard> m_guard;
    std::unique_ptr<Dialog> m_dialog;
    std::unique_ptr<QSignalSpy> m_posted;
    ParameterInformation m_record;
};

void tst_Dialog::initTestCase()
{
    QLocale::setDefault(QLocale(QLocale::German));
    qRegisterMetaType<Event>();
}

void tst_Dialog::init()
{
    m_guard = std::make_unique<WarningGuard>();
    m_guard->expect("propagateSizeHints"); // of the platform without windows
    m_guard->expect("SetInputFocus");      // of an X server without a window manager
    m_dialog = std::make_unique<Dialog>();
    m_posted = std::make_unique<QSignalSpy>(m_dialog.get(), &Dialog::postDEvent);
    m_record = {};
}

void tst_Dialog::cleanup()
{
    m_posted.reset();
    m_dialog.reset();
    const QStringList unexpected = m_guard->unexpected();
    m_guard.reset();
    QCOMPARE(unexpected.join('\n'), QString());
}

void tst_Dialog::load(float scale, int min, int max)
{
    m_record.name = "Number:";
    m_record.value = "-";
    m_record.dataId = 3007;
    m_record.scale = scale;
    m_record.min = min;
    m_record.max = max;
    m_dialog->initial(&m_record);
    m_dialog->show();
}

// What Enter sends after a text was typed; nothing when it is refused.
QStringList tst_Dialog::sentAfter(const QString &typed)
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

void tst_Dialog::typedValues_data()
{
    QTest::addColumn<float>("scale");
    QTest::addColumn<int>("min");
    QTest::addColumn<int>("max");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("sent"); // null: refused
    QTest::newRow("tenths") << 0.1f << 500 << 700 << "50.5"
                            << "3007,505";
    QTest::newRow("rounded half up") << 0.01f << 210 << 235 << "2.345"
                                     << "3007,235";
    QTest::newRow("rounded into the range") << 0.01f << 210 << 235 << "2.349"
                                            << "3007,235";
    QTest::newRow("just above") << 0.01f << 210 << 235 << "2.36" << QString();
    QTest::newRow("just below") << 0.01f << 210 << 235 << "2.09" << QString();
    QTest::newRow("other scale") << 0.5f << 0 << 0 << "3"
                                 << "3007,6";
    QTest::newRow("negative") << 0.1f << 0 << 0 << "-3.0"
                              << "3007,-30";
    QTest::newRow("decimal comma") << 0.01f << 210 << 235 << "2,25" << QString();
    QTest::newRow("no number reads as 0") << 1.0f << 0 << 10 << "abc"
                                          << "3007,0";
    QTest::newRow("no number outside") << 1.0f << 1 << 10 << "inf" << QString();
    QTest::newRow("overflow is not 0") << 1.0f << 0 << 10 << "1e60" << QString();
    QTest::newRow("overflow of the float") << 0.01f << 0 << 0 << "-1e39" << QString();
    QTest::newRow("overflow of everything") << 1.0f << 0 << 0 << "1e999" << QString();
    QTest::newRow("scale 0") << 0.0f << 0 << 0 << "5" << QString();
}

void tst_Dialog::typedValues()
{
    QFETCH(float, scale);
    QFETCH(int, min);
    QFETCH(int, max);
    QFETCH(QString, typed);
    QFETCH(QString, sent);
    load(scale, min, max);
    QCOMPARE(sentAfter(typed), sent.isNull() ? QStringList() : QStringList(sent));
    QCOMPARE(m_record.value, sent.isNull() ? QString("-") : typed);
}

void tst_Dialog::chosenOptions_data()
{
    QTest::addColumn<float>("scale");
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("sent");
    QTest::newRow("value as it is") << 1.0f << "12.0"
                                    << "3007,12";
    QTest::newRow("divided by the scale") << 0.01f << "12.0"
                                          << "3007,1200";
    QTest::newRow("the half that no integer keeps") << 0.01f << "0.5"
                                                    << "3007,50";
    QTest::newRow("zero stays zero") << 0.01f << "zero"
                                     << "3007,0";
    QTest::newRow("no scale") << 0.0f << "12.0"
                              << "3007,12";
}

void tst_Dialog::chosenOptions()
{
    QFETCH(float, scale);
    QFETCH(QString, option);
    m_record.combo = { { "0.5", 0 }, { "12.0", 12 }, { "zero", 0 } };
    load(scale, 0, 0);
    m_dialog->setDevName("UPS 7");
    auto *box = m_dialog->findChild<QComboBox *>();
    QCOMPARE(box->itemData(1).toInt(), 12);
    box->setCurrentText(option);
    QTest::keyClick(box, Qt::Key_Enter);
    QCOMPARE(m_posted->size(), 1);
    QCOMPARE(m_posted->at(0).at(0).toInt(), 1029);
    QFETCH(QString, sent);
    const Event expected { { "controlId", 2016 },
                           { "controlValue", sent },
                           { "nodeValue", option },
                           { "nodeName", "Number:" },
                           { "name", "UPS 7" } };
    QCOMPARE(m_posted->at(0).at(1).value<Event>(), expected);
}

void tst_Dialog::textIsCut()
{
    m_record.type = TextValue;
    m_record.length = 4;
    load(1, 0, 0);
    QCOMPARE(sentAfter("1e99%1"), QStringList("3007,1e99"));
    QCOMPARE(m_record.value, QString("1e99%1"));
}

void tst_Dialog::busyAfterOk_data()
{
    QTest::addColumn<int>("max");
    QTest::addColumn<int>("delay");
    QTest::newRow("with a range") << 10 << 1000;
    QTest::newRow("without") << 0 << 2000;
}

void tst_Dialog::busyAfterOk()
{
    QFETCH(int, max);
    QFETCH(int, delay);
    load(1, 0, max);
    QElapsedTimer timer;
    timer.start();
    sentAfter("5");
    QCOMPARE(m_dialog->findChild<QStackedWidget *>()->currentIndex(), 2);
    QVERIFY(!button(*m_dialog, "btnBlue")->isEnabled());
    QTest::keyClick(m_dialog.get(), Qt::Key_Return);
    m_dialog->checkRange();
    QCOMPARE(m_posted->size(), 1);
    QTRY_VERIFY(!m_dialog->isVisible());
    QVERIFY2(timer.elapsed() >= delay - 5, QByteArray::number(timer.elapsed()));
}

void tst_Dialog::newRecordEndsTheOldOne()
{
    load(1, 0, 10);
    sentAfter("5");
    load(1, 0, 10);
    QVERIFY(button(*m_dialog, "btnBlue")->isEnabled());
    QTest::qWait(1200); // the first record's close delay is over
    QVERIFY(m_dialog->isVisible());
}

void tst_Dialog::rangeMayChangeMeanwhile()
{
    load(0.01f, 210, 235);
    m_record.min = 330;
    m_record.max = 415;
    QCOMPARE(sentAfter("2.25"), QStringList());
    m_dialog->findChild<QLineEdit *>()->clear();
    QCOMPARE(sentAfter("4.15"), QStringList("3007,415"));
}

void tst_Dialog::keys()
{
    load(1, 0, 10);
    m_dialog->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
    auto *edit = m_dialog->findChild<QLineEdit *>();
    for (QWidget *widget :
         QList<QWidget *> { edit, button(*m_dialog, "btnBlue"), button(*m_dialog, "btnWhite") }) {
        QCOMPARE(QApplication::focusWidget(), widget);
        QTest::keyClick(widget, Qt::Key_Tab);
    }
    QTest::keyClicks(edit, "5");
    QTest::keyClick(edit, Qt::Key_Escape);
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_posted->size(), 0);
}

void tst_Dialog::boxAnswers_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("result");
    QTest::newRow("stray Enter confirms no question") << 1 << int(Qt::Key_Return) << 0;
    QTest::newRow("Escape cancels") << 1 << int(Qt::Key_Escape) << 0;
    QTest::newRow("Enter closes a notice") << 0 << int(Qt::Key_Return) << 1;
}

void tst_Dialog::boxAnswers()
{
    QFETCH(int, kind);
    QFETCH(int, key);
    MsgBox box(kind, "Shutdown?");
    const ModalAnswer answer([&](QDialog &shown) {
        QCOMPARE(button(shown, "btnWhite")->isVisible(), kind == 1);
        QCOMPARE(shown.focusWidget(), button(shown, kind == 1 ? "btnWhite" : "btnBlue"));
        QTest::keyClick(shown.focusWidget(), Qt::Key(key));
    });
    QTEST(box.exec(), "result");
    QVERIFY(answer.hasAnswered());
}

QTEST_MAIN(tst_Dialog)
#include "tst_dialog.moc"
