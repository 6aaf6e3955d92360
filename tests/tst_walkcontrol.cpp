// What the user does in the view, judged by what the UPS at the far end of the line got and did.

#include "answers/statuslines.h"
#include "dialogs/dialog.h"
#include "farend.h"
#include "modalanswer.h"
#include "pages/settingstable.h"
#include "settingrows.h"
#include "tavoview.h"
#include "upswalk.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

using registermap::Format;

namespace {

constexpr int maintenance = 3070; // the period, which the view leaves to the UPS

// By battery type too, where the bounds follow it.
int bound(const FarRegister &far, bool highest, bool lithium)
{
    for (const registermap::CellBounds &cell : registermap::cellBounds) {
        if (cell.id == far.id && highest != lithium)
            return highest ? cell.vrlaMax : cell.lithiumMin;
    }
    return highest ? far.max : far.min;
}

} // namespace

class tst_WalkControl : public WalkTest
{
    Q_OBJECT

    enum class Kind { Number, Choice, Text };

    /** A setting where the user finds it, and what its maker says. */
    struct Place
    {
        SettingsTable *table;
        int row;
        FarRegister far;

        const ParameterInformation &record() const { return *table->recordAt(row); }
        QString cell(int column) const { return table->item(row, column)->text(); }
        QByteArray text() const { return (cell(0) + cell(1)).toUtf8(); }
        bool shows(int raw) const { return far.isShownAs(cell(1), raw); }
        Kind kind() const
        {
            return !record().combo.isEmpty() ? Kind::Choice
                : record().type == TextValue ? Kind::Text
                                             : Kind::Number;
        }
    };

private slots:
    void init()
    {
        WalkTest::init();
        m_walk->view().findChild<QTabWidget *>()->setCurrentIndex(tavoView::ControlTab);
    }

    void buttons_data()
    {
        // before: done to the UPS; answers: before and after
        const Columns<QList<QByteArray>, int, QByteArray, QByteArray> row("before", "code",
                                                                          "question", "answers");
        using Acts = QList<QByteArray>;
        row("Turn off", {}, 18, "show register 4244", "1 0");
        row("Turn on", { "command 18" }, 17, "show register 4244", "0 1");
        row("Startup", { "command 4" }, 7, "path", "off inverter");
        row("Shutdown stop output", {}, 4, "path", "inverter off");
        row("Transfer to bypass", {}, 10, "path", "inverter bypass");
        row("Transfer to inverter", { "command 10" }, 11, "path", "bypass inverter");
        row("Shutdown to bypass", {}, 9, "show register 4243", "2 0"); // the inverter's state
        row("Battery test 20s", {}, 0, "task", "none test");
        row("Battery maintenance", {}, 2, "task", "none maintenance");
        row("Cancel test", { "command 0" }, 3, "task", "test none");
        const Acts fault { "epo on", "command 7", "epo off" };
        row("Clear fault", fault, 12, "show register 2072", "1 0"); // the start was forbidden
        row("Clear history", {}, 13, "history", "2 1");             // the clearing is a record
    }

    void buttons()
    {
        QFETCH(QList<QByteArray>, before);
        QFETCH(int, code);
        QFETCH(QByteArray, question);
        QFETCH(QByteArray, answers);
        const QString name = QTest::currentDataTag();
        for (const QByteArray &action : before)
            m_walk->ups().perform(action);
        QTRY_COMPARE(answer(question), answers.split(' ').first());
        press(name);
        QVERIFY(told().endsWith(name + " · waiting"));
        QVERIFY(m_walk->poll());
        QCOMPARE(m_walk->takeWrite(), "command " + QByteArray::number(code) + " accepted");
        QTRY_COMPARE(answer(question), answers.split(' ').last());
        // Where the path or the task changes, the reports show it, too.
        const bool isProved = question == "path" || (question == "task" && code != 3) || code == 9;
        QTRY_VERIFY2((m_walk->poll(),
                      told().endsWith(isProved ? "confirmed by the device's values"
                                               : "accepted by the device")),
                     qPrintable(told()));
        QVERIFY(m_walk->ups().perform("refuse on 1"));
        press(name);
        QVERIFY(m_walk->poll());
        QCOMPARE(m_walk->takeWrite(), "command " + QByteArray::number(code) + " exception 4");
        QVERIFY2(told().endsWith(name + " · refused by the device"), qPrintable(told()));
        m_walk->ups().terminate();
        press(name);
        m_walk->poll();
        QVERIFY2(told().contains(" · no answer: "), qPrintable(told()));
    }

    // The upgrade has a test of its own.
    void everyButtonHasItsWalk()
    {
        QStringList missing;
        for (const char *page : { "ControlTable", "MaintainTable" }) {
            const auto *widget = m_walk->view().findChild<QWidget *>(page);
            for (const QPushButton *button : widget->findChildren<QPushButton *>()) {
                if (!m_pressed.contains(button->text()))
                    missing.append(button->text());
            }
        }
        QCOMPARE(missing, QStringList("UPS upgrade"));
    }

    void settingsAtTheirBounds()
    {
        for (const bool lithium : { false, true }) {
            QVERIFY(m_walk->ups().perform("setting 3045 " + QByteArray::number(lithium)));
            QVERIFY(m_walk->poll());
            const QVector<Place> numbers = places(Kind::Number);
            for (const bool highest : { false, true }) {
                for (const Place &place : numbers) {
                    writeBound(place, bound(place.far, highest, lithium), highest ? 1 : -1);
                    if (QTest::currentTestFailed())
                        return;
                }
                QVERIFY(m_walk->poll());
                for (const Place &place : numbers)
                    QVERIFY2(place.shows(bound(place.far, highest, lithium)), place.text());
            }
        }
    }

    void settingsWithOptions()
    {
        const QVector<Place> choices = places(Kind::Choice);
        for (int option = 0; option < 20; ++option) {
            QMap<int, int> written;
            for (const Place &place : choices) {
                if (option < place.record().combo.size())
                    written[place.far.id] = writeOption(place, option);
            }
            QVERIFY2(!QTest::currentTestFailed() && isConfirmed(), qPrintable(told()));
            for (const Place &place : choices) {
                if (!written.contains(place.far.id))
                    continue;
                QVERIFY2(place.shows(written[place.far.id]), place.text());
                Dialog &dialog = open(place); // on what the device has
                QCOMPARE(dialog.findChild<QComboBox *>()->currentIndex(), option);
                dialog.reject();
            }
        }
    }

    void settingsOfText()
    {
        const QString typed = "1e99%1ABCDEFGHIJKLMNOPQRST"; // no number, no place marker
        for (const Place &place : places(Kind::Text)) {
            Dialog &dialog = open(place);
            dialog.findChild<QLineEdit *>()->setText(typed);
            QByteArray expected = "setting " + QByteArray::number(place.far.id);
            for (int i = 0; i < place.far.count; ++i)
                expected += ' ' + QByteArray::number(typed.at(i).unicode());
            QCOMPARE(writeOf(dialog), expected + " accepted");
            QCOMPARE(place.cell(1), typed); // as it was entered, until it is read back
            QVERIFY2(isConfirmed(), qPrintable(told()));
            QCOMPARE(place.cell(1).size(), place.far.count);
        }
    }

    // Of the voltages that are rectified by phase some have one setting only.
    void everySettingIsSomewhere()
    {
        QList<int> missing = m_settings.keys();
        for (const Kind kind : { Kind::Number, Kind::Choice, Kind::Text }) {
            for (const Place &place : places(kind)) {
                QVERIFY2(missing.removeOne(place.far.id), place.text());
                QVERIFY2(place.far.codes.isEmpty()
                             || place.far.codes.size() == place.record().combo.size(),
                         place.text());
            }
        }
        QCOMPARE(missing, (QList<int> { 3050, 3051, 3053, 3054, 3056, 3057 }));
    }

private:
    QVector<Place> places(Kind kind) const
    {
        QVector<Place> found;
        const auto *stack = m_walk->view().findChild<QWidget *>("configStack");
        for (auto *widget : stack->findChildren<QTableWidget *>()) {
            auto *table = static_cast<SettingsTable *>(widget);
            for (int row = 0; row < table->rowCount(); ++row) {
                const Place place { table, row,
                                    farRegister(m_settings, table->item(row, 0)->text()) };
                if (place.kind() == kind)
                    found.append(place);
            }
        }
        return found;
    }

    Dialog &open(const Place &place)
    {
        emit place.table->cellDoubleClicked(place.row, 1);
        return *m_walk->view().findChild<Dialog *>();
    }

    // What the UPS gets when the user says "Ok".
    QByteArray writeOf(Dialog &dialog)
    {
        dialog.checkRange();
        dialog.reject();
        m_walk->carryOut();
        return m_walk->takeWrite();
    }

    // @return what the UPS got
    int writeOption(const Place &place, int option)
    {
        Dialog &dialog = open(place);
        auto *box = dialog.findChild<QComboBox *>();
        box->setCurrentIndex(option);
        const QString text = box->currentText();
        const QByteArray write = writeOf(dialog);
        const int raw = write.split(' ').value(2).toInt();
        const QString expected = QString("setting %1 %2 accepted").arg(place.far.id).arg(raw);
        const bool isRight = write == expected.toUtf8() && place.far.isShownAs(text, raw);
        [&] { QVERIFY2(isRight, place.text() + write); }();
        return raw;
    }

    // A bound, after what is by one step beyond it.
    void writeBound(const Place &place, int raw, int beyond)
    {
        const bool hasRange = place.far.format != Format::Signed && place.far.id != maintenance;
        QVERIFY2((place.cell(2) != "-") == hasRange, place.text());
        writeNumber(place, raw + beyond, false);
        writeNumber(place, raw, true);
    }

    // Out of its range the view refuses a number, or else the UPS.
    void writeNumber(const Place &place, int raw, bool isAllowed)
    {
        Dialog &dialog = open(place);
        dialog.findChild<QLineEdit *>()->setText(QString::number(place.far.value(raw)));
        const ModalAnswer refusal([](QDialog &box) { box.accept(); });
        const QByteArray write = writeOf(dialog);
        const bool isStopped = !isAllowed && place.cell(2) != "-"; // by the view
        QCOMPARE(refusal.hasAnswered(), isStopped);
        const QByteArray expected = "setting " + QByteArray::number(place.far.id) + ' '
            + QByteArray::number(quint16(raw)) + (isAllowed ? " accepted" : " exception 3");
        QCOMPARE(place.text() + write, place.text() + (isStopped ? "" : expected));
    }

    QByteArray answer(const QByteArray &question)
    {
        if (question == "history")
            return QByteArray::number(savedHistory().size());
        if (question.startsWith("show "))
            return m_walk->ups().ask(question);
        const QList<QByteArray> words = m_walk->ups().ask("show state").split(' ');
        return words.value(words.indexOf(question) + 1);
    }

    // The records that "Download history" saves.
    QList<QByteArray> savedHistory()
    {
        const QTemporaryDir folder; // apart: the chooser reads its folder on its own
        const QString file = folder.filePath("history.csv");
        std::unique_ptr<ModalAnswer> choice;
        m_walk->takePosts();
        QTimer::singleShot(0, this, [&] {
            choice = std::make_unique<ModalAnswer>([&](QDialog &box) {
                choice = std::make_unique<ModalAnswer>([&](QDialog &chooser) {
                    chooser.findChild<QLineEdit *>()->setText(file);
                    chooser.done(QDialog::Accepted);
                });
                box.accept();
            });
        });
        button("Download history")->click();
        m_walk->poll();
        return fileContents(file).trimmed().split('\n').mid(1);
    }

    void press(const QString &text)
    {
        const ModalAnswer confirm([](QDialog &box) { box.accept(); });
        button(text)->click();
    }

    // By then a setting that is read back otherwise is told of, whichever came last.
    bool isConfirmed()
    {
        return m_walk->poll() && m_walk->poll() && m_walk->poll()
            && told().endsWith("confirmed by the device's values");
    }

    QString told() const { return m_walk->view().findChild<StatusLines *>()->answer(); }

    QPushButton *button(const QString &text)
    {
        m_pressed.insert(text);
        for (auto *button : m_walk->view().findChildren<QPushButton *>()) {
            if (button->text() == text)
                return button;
        }
        qFatal("no button %s", qPrintable(text));
    }

    QSet<QString> m_pressed;
    const QMap<int, FarRegister> m_settings = farSettings();
};

QTEST_MAIN(tst_WalkControl)
#include "tst_walkcontrol.moc"
