// What the view tells its user of the device at a glance, and of what was asked of it.

#include "answers/requeststatus.h"
#include "answers/statuslines.h"
#include "banner/statebanner.h"
#include "diagram/energyline.h"
#include "pages/chipdelegate.h"
#include "style/notetext.h"
#include "style/viewcolors.h"
#include "viewtest.h"

#include <QGridLayout>

using Kind = CommandAnswer::Kind;

namespace {

constexpr int mode = 4241;
constexpr int output = 4161;

DataReport reportOf(std::initializer_list<std::pair<int, QVariant>> values)
{
    return QMap<int, QVariant>(values);
}

} // namespace

class tst_ViewState : public ViewTest
{
    Q_OBJECT

private slots:
    void banner_data()
    {
        QTest::addColumn<DataReport>("report");
        QTest::addColumn<QString>("text");
        const auto row = [](const char *name, int m, int o, const char *text, float load = 55) {
            DataReport report { { 4103, 18.0f }, { 4117, 99.2f }, { 4176, load } };
            if (m >= 0)
                report[mode] = m;
            if (o >= 0)
                report[output] = o;
            QTest::newRow(name) << report << QString::fromUtf8(text);
        };
        row("on line", 4, 2, "● Normal · load 55 %");
        row("another frequency", 8, 2, "● Normal · load 55 %");
        row("on battery", 5, 2, "■ ON BATTERY · 18 min · 99 % · load 55 %");
        row("battery without the output's mode", 5, -1, "■ ON BATTERY · 18 min · 99 % · load 55 %");
        row("on bypass", 3, 1, "▲ ON BYPASS – load not protected");
        row("bypass by the output's mode alone", 4, 1, "▲ ON BYPASS – load not protected");
        row("bypass by the working mode alone", 3, -1, "▲ ON BYPASS – load not protected");
        row("on bypass on purpose", 9, 1, "● ECO · load 55 %");
        row("output off", 2, 0, "■ OUTPUT OFF");
        row("output off in any mode", 4, 0, "■ OUTPUT OFF");
        row("off by a fault", 7, 0, "■ OUTPUT OFF · FAULT");
        row("shut down, output unknown", 10, -1, "■ OUTPUT OFF");
        row("shut down, the load fed", 10, 1, "▲ ON BYPASS – load not protected");
        row("fault", 7, 2, "■ FAULT · load 55 %");
        row("fault on bypass", 7, 1, "■ FAULT · ON BYPASS – load not protected · load 55 %");
        row("overload", 4, 2, "■ OVERLOAD · load 112 %", 112);
        row("overload on battery", 5, 2, "■ OVERLOAD · ON BATTERY · 18 min · 99 % · load 112 %",
            112);
        row("full load", 4, 2, "● Normal · load 100 %", 100);
        row("battery test", 6, 2, "▲ Battery test · 18 min · 99 % · load 55 %");
        row("starting", 1, 2, "▲ Starting · load 55 %");
        row("standby, the load fed", 2, 2, "▲ Standby · load 55 %");
        row("modes unknown", -1, -1, "○ State unknown · load 55 %");
        row("no such mode", 42, 2, "○ State unknown · load 55 %");
        QTest::newRow("numbers unknown")
            << reportOf({ { mode, 5 } })
            << QString::fromUtf8("■ ON BATTERY · – min · – % · load – %");
        QTest::newRow("an event alone says nothing")
            << reportOf({ { mode, 4 }, { output, 2 }, { 4176, 0.0f }, { 2010, 1 } })
            << QString::fromUtf8("● Normal · load 0 %");
    }

    void banner()
    {
        QFETCH(DataReport, report);
        QFETCH(QString, text);
        m_view->show();
        QCOMPARE(said(), QString::fromUtf8("○ Waiting for the device"));
        m_view->flushData(report);
        QCOMPARE(said(), text);
        m_view->flushUpsInfo("state", 1);
        QCOMPARE(said(), QString::fromUtf8("■ NO COMMUNICATION – last values"));
        m_view->flushUpsInfo("state", 0);
        QCOMPARE(said(), text);
    }

    // The client knows the time, whenever its view was made; the host tells the same once more.
    void lossHasItsTime()
    {
        ClientNews news;
        const QDateTime since = QDateTime::currentDateTime().addSecs(-1).addDays(-1);
        news.setLink({ 1, since });
        m_view->follow(news);
        m_view->flushUpsInfo("state", 1);
        m_view->show();
        const QString time = since.toString("yyyy-MM-dd HH:mm:ss");
        QCOMPARE(said(), QString::fromUtf8("■ NO COMMUNICATION since ") + time);
        QCOMPARE(lines("ControlTable")->reason(),
                 "No communication since " + time + ": nothing can be sent");
        news.setLink({ 0, QDateTime::currentDateTime() });
        QCOMPARE(said(), QString::fromUtf8("○ Waiting for the device"));
        QCOMPARE(lines("ControlTable")->reason(), QString());
    }

    void bannerStandsAboveTheTabs()
    {
        m_view->resize(1000, 640);
        m_view->show();
        const auto *grid = child<QGridLayout>("tavoView_grid");
        QCOMPARE(grid->itemAtPosition(0, 0)->widget(), static_cast<QWidget *>(tabs()));
        // What is added is no label.
        QCOMPARE(child<QWidget>("ControlTable")->findChildren<QLabel *>().size(), 5);
        QCOMPARE(child<QWidget>("MaintainTable")->findChildren<QLabel *>().size(), 2);
    }

    void hiddenViewComposesNothing()
    {
        m_view->flushData(reportOf({ { mode, 5 } }));
        QVERIFY(!said().contains("BATTERY"));
        m_view->show();
        QVERIFY(said().contains("BATTERY"));
    }

    void tonesAreReadable()
    {
        for (const QColor &ground : { QColor(0xF5, 0xF6, 0xFB), QColor(0xEF, 0xEF, 0xEF),
                                      QColor(0x35, 0x35, 0x35), QColor(0x12, 0x12, 0x12) }) {
            for (const Tone tone : { Tone::Plain, Tone::Good, Tone::Attention, Tone::Alarm }) {
                const QColor tinted = toneGround(tone, ground);
                QVERIFY2(contrast(toneColor(tone, tinted), tinted) >= 4.5,
                         qPrintable(ground.name()));
            }
        }
        QCOMPARE(qRound(contrast(Qt::black, Qt::white)), 21);
        QVERIFY(contrast(Qt::red, ChipDelegate::ground) >= 4.5);
        QVERIFY(contrast(Qt::blue, ViewColors::alternateRow) >= 4.5);
    }

    void requests_data()
    {
        // post: "command value"; a setting as "3005,18"; answer: -1: none
        const Columns<QString, int, QVector<DataReport>, QString> row("post", "answer", "reports",
                                                                      "told");
        const auto at = [](int id, float value) { return DataReport { { id, value } }; };
        const int accepted = int(Kind::Accepted);
        row("no answer yet", "1016", -1, { at(output, 1) }, "Transfer to bypass: waiting");
        row("not proved", "1016", accepted, { at(output, 2) },
            "Transfer to bypass: accepted by the device");
        row("proved in part", "1015", accepted, { at(output, 1) },
            "Shutdown to bypass: accepted by the device");
        row("not sent", "1016", int(Kind::NotSent), {},
            "Transfer to bypass: not sent: no communication");
        row("no name", "1011", int(Kind::Refused), {}, "Command 1011: refused by the device");
        row("a rounded setting", "3007,235", accepted, { at(3007, 2.35f) },
            "Setting: 2.35V: confirmed by the device's values");
        row("an older report", "3005,18", accepted, { at(3005, 16), at(3005, 18) },
            "Setting: 18: confirmed by the device's values");
        row("another value", "3005,18", accepted, { 3, at(3005, 16) },
            "Setting: 18: accepted, but the device reports 16");
        row("at last", "3005,18", accepted,
            { at(3005, 16), at(3005, 16), at(3005, 16), at(3005, 18) },
            "Setting: 18: confirmed by the device's values");
        row("not reported", "3005,18", accepted, { 5, at(3006, 1) },
            "Setting: 18: accepted by the device");
    }

    void requests()
    {
        QFETCH(QString, post);
        QFETCH(int, answer);
        QFETCH(QVector<DataReport>, reports);
        QFETCH(QString, told);
        ClientNews news;
        m_view->follow(news);
        CommandAnswer known { post.toInt(), QString(), Kind(answer) };
        if (post.contains(',')) {
            known = { 2016, post, Kind(answer) };
            emit m_view->postDEvent(1029, settingEvent(post));
        } else {
            m_view->control(post.toInt(), {});
        }
        if (answer >= 0) {
            emit news.commandAnswered({ known.command, known.value, Kind::Taken });
            emit news.commandAnswered({ 1001, {}, Kind::NotSent }); // somebody else's
            emit news.commandAnswered(known);
        }
        for (const DataReport &report : reports)
            m_view->flushData(report);
        for (const char *page : { "ControlTable", "MaintainTable" }) {
            const QString line = lines(page)->answer();
            QCOMPARE(line.mid(line.indexOf(' ') + 3).replace(QString::fromUtf8(" · "), ": "), told);
        }
    }

    // The last request is told, but bad news of an earlier one are not lost.
    void requestsSideBySide()
    {
        ClientNews news;
        m_view->follow(news);
        const auto told = [this] { return lines("ControlTable")->answer(); };
        // As the client does, which the host hands it to at once.
        const QMetaObject::Connection client = connect(
            m_view.get(), &CollectView::postDEvent, &news, [&news](int, const Event &event) {
                news.tell({ event["controlId"].toInt(), {}, Kind::Taken });
                QCoreApplication::processEvents();
            });
        m_view->control(1016, {});
        m_view->control(1010, {});
        emit news.commandAnswered({ 1016, {}, Kind::Accepted });
        QVERIFY2(told().endsWith("waiting"), qPrintable(told()));
        emit news.commandAnswered({ 1010, {}, Kind::Accepted });
        m_view->flushData({ { output, 1 } });
        QVERIFY2(told().contains("Turn off"), qPrintable(told()));
        m_view->control(1001, {});
        m_view->control(1002, {});
        emit news.commandAnswered({ 1001, {}, Kind::Refused });
        QVERIFY2(told().endsWith("refused by the device"), qPrintable(told()));
        emit news.commandAnswered({ 1002, {}, Kind::Accepted });
        m_view->control(1045, {}); // no file was chosen
        m_view->control(1018, {}); // tells of itself
        QVERIFY2(told().endsWith("refused by the device"), qPrintable(told()));
        // A host that asks first: what it drops, or is slow to hand on, is not waited for.
        disconnect(client);
        m_view->control(1007, {});
        m_view->control(1007, {});
        QTRY_VERIFY2(told().endsWith("this program has not passed it on"), qPrintable(told()));
        emit news.commandAnswered({ 1007, {}, Kind::Taken });
        QVERIFY2(told().endsWith("waiting"), qPrintable(told()));
        emit news.commandAnswered({ 1007, {}, Kind::Accepted });
        QVERIFY2(told().endsWith("accepted by the device"), qPrintable(told()));
    }

    void buttonsSayWhatTheyDo()
    {
        QStringList texts;
        for (const NoteText *note : child<QWidget>("MaintainTable")->findChildren<NoteText *>())
            texts.append(note->text());
        for (const QPushButton *button : tabs()->findChildren<QPushButton *>())
            QVERIFY2(!button->toolTip().isEmpty(), qPrintable(button->objectName()));
        for (const QPushButton *button :
             child<QWidget>("MaintainTable")->findChildren<QPushButton *>())
            QVERIFY(texts.contains(button->text() + ": " + button->toolTip()));
    }

    // All but the upgrade, which may be what a silent device needs.
    void lostLinkDisablesButtons()
    {
        for (const int state : { 1, 0 }) {
            m_view->flushUpsInfo("state", state);
            for (const QPushButton *button : tabs()->findChildren<QPushButton *>()) {
                const bool isUsable = state == 0 || button->objectName() == "ups_upgrade";
                QVERIFY2(button->isEnabled() == isUsable, qPrintable(button->objectName()));
            }
            QCOMPARE(child<QTableWidget>("basicTable")->font().italic(), state == 1);
            const QString note = child<Energyline>()->accessibleDescription();
            QCOMPARE(note.startsWith("No communication"), state == 1);
        }
        m_view->setUserInfo("guest", 0);
        QVERIFY(lines("ControlTable")->reason().startsWith("Only to look at"));
    }

private:
    QString said() const { return child<StateBanner>()->text(); }
    StatusLines *lines(const char *page) const
    {
        return child<QWidget>(page)->findChild<StatusLines *>();
    }

    // As the dialog posts it.
    static Event settingEvent(const QString &request)
    {
        return { { "controlId", 2016 },
                 { "controlValue", request },
                 { "nodeName", "Setting:" },
                 { "nodeValue", request.section(',', 1) } };
    }
};

QTEST_MAIN(tst_ViewState)
#include "tst_viewstate.moc"
