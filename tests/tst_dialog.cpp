#include "modalanswer.h"
#include "view/dialog.h"
#include "view/loading.h"
#include "view/msgbox.h"
#include "warningguard.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QtTest>

#include <memory>

namespace {

using Event = QMap<QString, QVariant>;

QPushButton *okButton(const QWidget &widget)
{
    return widget.findChild<QPushButton *>("btnBlue");
}

QPushButton *cancelButton(const QWidget &widget)
{
    return widget.findChild<QPushButton *>("btnWhite");
}

ParameterInformation numberRecord(float scale, int min, int max)
{
    ParameterInformation record;
    record.name = "Number:";
    record.dataId = 3007;
    record.scale = scale;
    record.min = min;
    record.max = max;
    return record;
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
    void optionOfTheDeviceIsSelected();
    void textIsCut();
    void requestHoldsEverything();
    void busyAfterOk_data();
    void busyAfterOk();
    void newRecordEndsTheOldOne();
    void rangeMayChangeMeanwhile();
    void keys();
    void deletedBehindTheNotice();
    void boxAnswers_data();
    void boxAnswers();
    void boxIsDragged();
    void spinner();

private:
    QStringList sentBy(ParameterInformation &record, const QString &typed);

    std::unique_ptr<WarningGuard> m_guard;
    std::unique_ptr<Dialog> m_dialog;
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
    m_dialog = std::make_unique<Dialog>();
}

void tst_Dialog::cleanup()
{
    m_dialog.reset();
    const QStringList unexpected = m_guard->unexpected();
    m_guard.reset();
    QCOMPARE(unexpected, QStringList());
}

// What Enter sends after a text was typed; nothing when it is refused.
QStringList tst_Dialog::sentBy(ParameterInformation &record, const QString &typed)
{
    QSignalSpy spy(m_dialog.get(), &Dialog::postDEvent);
    m_dialog->initial(&record);
    m_dialog->show();
    auto *edit = m_dialog->findChild<QLineEdit *>();
    QTest::keyClicks(edit, typed);
    const ModalAnswer answer([](QDialog &box) { QTest::keyClick(&box, Qt::Key_Return); });
    QTest::keyClick(edit, Qt::Key_Return);
    QStringList sent;
    for (const QList<QVariant> &arguments : spy)
        sent.append(arguments.at(1).value<Event>().value("controlValue").toString());
    // Refused with a notice, and the page is still there to be corrected.
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
    QTest::newRow("hundredths") << 0.01f << 210 << 235 << "2.25"
                                << "3007,225";
    QTest::newRow("rounded half up") << 0.01f << 210 << 235 << "2.345"
                                     << "3007,235";
    QTest::newRow("rounded into the range") << 0.01f << 210 << 235 << "2.349"
                                            << "3007,235";
    QTest::newRow("just above") << 0.01f << 210 << 235 << "2.36" << QString();
    QTest::newRow("just below") << 0.01f << 210 << 235 << "2.09" << QString();
    QTest::newRow("bounds count as inside") << 1.0f << 1 << 3000 << "3000"
                                            << "3007,3000";
    QTest::newRow("other scale") << 0.5f << 0 << 0 << "3"
                                 << "3007,6";
    QTest::newRow("negative") << 0.1f << 0 << 0 << "-3.0"
                              << "3007,-30";
    QTest::newRow("negative half") << 1.0f << 0 << 0 << "-2.5"
                                   << "3007,-2";
    QTest::newRow("decimal comma") << 0.01f << 210 << 235 << "2,25" << QString();
    QTest::newRow("no number reads as 0") << 1.0f << 0 << 10 << "abc"
                                          << "3007,0";
    QTest::newRow("no number outside") << 1.0f << 1 << 10 << "abc" << QString();
    QTest::newRow("words of numbers") << 1.0f << 1 << 10 << "inf" << QString();
    QTest::newRow("overflow is not 0") << 1.0f << 0 << 10 << "1e60" << QString();
    QTest::newRow("overflow of the integer") << 1.0f << 0 << 0 << "1e12" << QString();
    QTest::newRow("overflow of the float") << 0.01f << 0 << 0 << "-1e39" << QString();
    QTest::newRow("overflow of everything") << 1.0f << 0 << 0 << "1e999" << QString();
    QTest::newRow("not kept to the unit") << 1.0f << 0 << 0 << "16777217000" << QString();
    QTest::newRow("scale 0") << 0.0f << 0 << 0 << "5" << QString();
}

void tst_Dialog::typedValues()
{
    QFETCH(float, scale);
    QFETCH(int, min);
    QFETCH(int, max);
    QFETCH(QString, typed);
    QFETCH(QString, sent);
    ParameterInformation record = numberRecord(scale, min, max);
    record.value = "-";
    QCOMPARE(sentBy(record, typed), sent.isNull() ? QStringList() : QStringList(sent));
    QCOMPARE(record.value, sent.isNull() ? QString("-") : typed);
}

void tst_Dialog::chosenOptions_data()
{
    QTest::addColumn<float>("scale");
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("sent");
    QTest::newRow("value as it is") << 1.0f << "12.0"
                                    << "3011,12";
    QTest::newRow("divided by the scale") << 0.01f << "12.0"
                                          << "3011,1200";
    QTest::newRow("the half that no integer keeps") << 0.01f << "0.5"
                                                    << "3011,50";
    QTest::newRow("zero stays zero") << 0.01f << "zero"
                                     << "3011,0";
    QTest::newRow("no scale") << 0.0f << "12.0"
                              << "3011,12";
}

void tst_Dialog::chosenOptions()
{
    QFETCH(float, scale);
    QFETCH(QString, option);
    ParameterInformation record = numberRecord(scale, 0, 0);
    record.dataId = 3011;
    record.type = OptionValue;
    record.combo = { { "0.5", 0 }, { "12.0", 12 }, { "zero", 0 } };
    m_dialog->initial(&record);
    m_dialog->show();
    auto *box = m_dialog->findChild<QComboBox *>();
    QCOMPARE(box->itemText(1), QString("12.0"));
    QCOMPARE(box->itemData(1).toInt(), 12);
    box->setCurrentText(option);
    QSignalSpy spy(m_dialog.get(), &Dialog::postDEvent);
    QTest::keyClick(box, Qt::Key_Enter);
    QCOMPARE(spy.size(), 1);
    QTEST(spy.at(0).at(1).value<Event>().value("controlValue").toString(), "sent");
    QCOMPARE(record.value, option);
}

void tst_Dialog::optionOfTheDeviceIsSelected()
{
    ParameterInformation record = numberRecord(1, 0, 0);
    record.addCombo({ "z", "a", "m" });
    m_dialog->initial(&record);
    m_dialog->selectOption(2);
    QCOMPARE(m_dialog->getstrValue(), QString("m"));
    m_dialog->selectOption(9);
    QCOMPARE(m_dialog->getrealValue(), 2);
}

void tst_Dialog::textIsCut()
{
    ParameterInformation record = numberRecord(1, 0, 0);
    record.type = TextValue;
    record.length = 4;
    QCOMPARE(sentBy(record, "1e99%1"), QStringList("3007,1e99"));
    QCOMPARE(record.value, QString("1e99%1"));
}

void tst_Dialog::requestHoldsEverything()
{
    ParameterInformation record = numberRecord(0.01f, 210, 235);
    m_dialog->setDevName("UPS 7");
    QSignalSpy spy(m_dialog.get(), &Dialog::postDEvent);
    sentBy(record, "2.3");
    QCOMPARE(spy.at(0).at(0).toInt(), 1029);
    const Event expected { { "controlId", 2016 },
                           { "controlValue", "3007,230" },
                           { "nodeValue", "2.3" },
                           { "nodeName", "Number:" },
                           { "name", "UPS 7" } };
    QCOMPARE(spy.at(0).at(1).value<Event>(), expected);
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
    ParameterInformation record = numberRecord(1, 0, max);
    QSignalSpy spy(m_dialog.get(), &Dialog::postDEvent);
    QElapsedTimer timer;
    timer.start();
    sentBy(record, "5");
    QCOMPARE(m_dialog->findChild<QStackedWidget *>()->currentIndex(), 2);
    QVERIFY(!okButton(*m_dialog)->isEnabled());
    QTest::keyClick(m_dialog.get(), Qt::Key_Return);
    m_dialog->checkRange();
    QCOMPARE(spy.size(), 1);
    QTRY_VERIFY(!m_dialog->isVisible());
    QVERIFY2(timer.elapsed() >= delay - 60, QByteArray::number(timer.elapsed()));
}

void tst_Dialog::newRecordEndsTheOldOne()
{
    ParameterInformation first = numberRecord(1, 0, 10);
    ParameterInformation second = numberRecord(1, 0, 10);
    sentBy(first, "5");
    m_dialog->initial(&second);
    QVERIFY(okButton(*m_dialog)->isEnabled());
    QTest::qWait(1200); // the first record's close delay is over
    QVERIFY(m_dialog->isVisible());
}

void tst_Dialog::rangeMayChangeMeanwhile()
{
    ParameterInformation record = numberRecord(0.01f, 210, 235);
    m_dialog->initial(&record);
    record.min = 330;
    record.max = 415;
    QSignalSpy spy(m_dialog.get(), &Dialog::postDEvent);
    m_dialog->findChild<QLineEdit *>()->setText("2.25");
    const ModalAnswer answer([](QDialog &box) { box.reject(); });
    m_dialog->checkRange();
    QVERIFY(answer.hasAnswered());
    QCOMPARE(spy.size(), 0);
    const auto labels = m_dialog->findChildren<QLabel *>();
    QVERIFY(std::any_of(labels.begin(), labels.end(),
                        [](QLabel *label) { return label->text() == "Range:3.3~4.15"; }));
}

void tst_Dialog::keys()
{
    ParameterInformation record = numberRecord(1, 0, 10);
    QSignalSpy spy(m_dialog.get(), &Dialog::postDEvent);
    m_dialog->initial(&record);
    m_dialog->show();
    m_dialog->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
    const QList<QWidget *> order { m_dialog->findChild<QLineEdit *>(), okButton(*m_dialog),
                                   cancelButton(*m_dialog) };
    for (QWidget *widget : order) {
        QCOMPARE(QApplication::focusWidget(), widget);
        QTest::keyClick(widget, Qt::Key_Tab);
    }
    QTest::keyClicks(order.first(), "5");
    QTest::keyClick(order.first(), Qt::Key_Escape);
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(spy.size(), 0);
}

void tst_Dialog::deletedBehindTheNotice()
{
    ParameterInformation record = numberRecord(1, 5, 10);
    m_dialog->initial(&record);
    const ModalAnswer answer([this](QDialog &box) {
        QCOMPARE(box.findChild<QLabel *>()->text(), QString("The value is out of range!"));
        m_dialog.reset();
        box.accept();
    });
    m_dialog->checkRange();
    QVERIFY(answer.hasAnswered());
}

void tst_Dialog::boxAnswers_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("result");
    QTest::newRow("stray Enter confirms no question") << 1 << int(Qt::Key_Return) << 0;
    QTest::newRow("stray blank neither") << 1 << int(Qt::Key_Space) << 0;
    QTest::newRow("Escape cancels") << 1 << int(Qt::Key_Escape) << 0;
    QTest::newRow("Enter closes a notice") << 0 << int(Qt::Key_Return) << 1;
}

void tst_Dialog::boxAnswers()
{
    QFETCH(int, kind);
    QFETCH(int, key);
    MsgBox box(kind, "Shutdown?");
    const ModalAnswer answer([&](QDialog &shown) {
        QCOMPARE(cancelButton(shown)->isVisible(), kind == 1);
        QVERIFY(shown.focusWidget() == (kind == 1 ? cancelButton(shown) : okButton(shown)));
        QTest::keyClick(shown.focusWidget(), Qt::Key(key));
    });
    QTEST(box.exec(), "result");
    QVERIFY(answer.hasAnswered());
    QVERIFY(box.property("canMove").toBool() && box.objectName() == "WhiteDialog");
}

void tst_Dialog::boxIsDragged()
{
    MsgBox box(1, "Move me");
    box.show();
    box.move(100, 100);
    const auto moveTo = [&box](QPoint inside) {
        QMouseEvent event(QEvent::MouseMove, inside, box.mapToGlobal(inside), Qt::NoButton,
                          Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&box, &event);
    };
    QTest::mousePress(&box, Qt::RightButton, {}, QPoint(10, 10));
    moveTo(QPoint(50, 50));
    QCOMPARE(box.pos(), QPoint(100, 100));
    QTest::mousePress(&box, Qt::LeftButton, {}, QPoint(10, 10));
    moveTo(QPoint(50, 30));
    QCOMPARE(box.pos(), QPoint(140, 120));
    QTest::mouseRelease(&box, Qt::RightButton, {}, QPoint(10, 10));
    moveTo(QPoint(50, 50));
    QCOMPARE(box.pos(), QPoint(140, 120));
}

void tst_Dialog::spinner()
{
    Loading loading;
    loading.resize(130, 130); // radius 50
    const auto colorAt = [&loading](QPoint fromCentre) {
        return loading.grab().toImage().pixelColor(QPoint(65, 65) + fromCentre);
    };
    // The dot at angle 0 has its middle at (-3, 47); the head of the three comes by in one turn.
    const QPoint dot(-3, 47);
    QSet<QRgb> seen;
    QTRY_VERIFY((seen.insert(colorAt(dot).rgb()), seen.size() == 12));
    loading.resize(20, 20); // the radius is negative
    loading.grab();
}

QTEST_MAIN(tst_Dialog)
#include "tst_dialog.moc"
