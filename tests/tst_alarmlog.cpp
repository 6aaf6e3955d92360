#include "guardedtest.h"

#include "alarmfile.h"
#include "alarmfilter.h"
#include "alarmlog.h"

#include <QAbstractItemModelTester>
#include <sys/stat.h>

namespace {

using Kind = LogEntry::Kind;
using State = AlarmRecord::State;

constexpr int overload = 10;   // critical
constexpr int fanFault = 29;   // critical
constexpr int badInput = 82;   // warning
constexpr int testPassed = 71; // information
constexpr int eventCount = 96;

const QDateTime noon(QDate(2026, 3, 1), QTime(12, 0));

LogEntry entry(const QString &device, Kind kind, int flag, int second)
{
    LogEntry made;
    made.device = device;
    made.kind = kind;
    made.flag = flag;
    made.text = QStringLiteral("text of %1").arg(flag);
    made.time = noon.addSecs(second);
    return made;
}

QString cell(const QAbstractItemModel &model, int row, int column)
{
    return model.index(row, column).data().toString();
}

} // namespace

/** The event log: the life of an alarm, what is shown of it, and what a start finds again. */
class tst_Alarmlog : public GuardedTest
{
    Q_OBJECT

private slots:
    void lifeOfAnAlarm()
    {
        AlarmLog log;
        QAbstractItemModelTester tester(&log);
        log.take(entry("a", Kind::Restored, -1, 0));
        log.take(entry("a", Kind::Appear, overload, 1));
        log.take(entry("b", Kind::Appear, overload, 2));
        QCOMPARE(log.rowCount(), 3);
        QCOMPARE(log.records()[0].state(), State::None); // a note
        QCOMPARE(log.records()[1].state(), State::ActiveNew);
        QCOMPARE(log.worstActive("a"), Severity::Critical);
        log.take(entry("a", Kind::Disappear, overload, 126));
        QCOMPARE(log.records()[1].state(), State::ReturnedNew);
        QVERIFY(log.records()[1].isOpen());
        QCOMPARE(cell(log, 1, AlarmLog::Duration), QString("2 min 5 s"));
        QCOMPARE(log.records()[2].state(), State::ActiveNew); // the other device's
        QCOMPARE(log.worstActive("a"), Severity::Information);
        QCOMPARE(log.countToAcknowledge(), 2);
        log.acknowledge({ log.records()[1].id, log.records()[2].id });
        QCOMPARE(log.records()[1].state(), State::ReturnedSeen);
        QCOMPARE(log.records()[2].state(), State::ActiveSeen);
        QVERIFY(!log.records()[1].isOpen() && log.records()[2].isOpen());
        log.take(entry("a", Kind::Appear, overload, 200)); // again: another alarm
        QCOMPARE(log.rowCount(), 4);
        QCOMPARE(log.records()[3].state(), State::ActiveNew);
    }

    void lossIsAnAlarm()
    {
        AlarmLog log;
        log.take(entry("a", Kind::Lost, -1, 0));
        log.take(entry("a", Kind::Appear, badInput, 1));
        QCOMPARE(log.records()[0].severity(), Severity::Critical);
        QCOMPARE(log.oldestActive("a")->kind, AlarmRecord::Kind::Loss);
        log.take(entry("a", Kind::Restored, -1, 60));
        QCOMPARE(log.rowCount(), 2); // no line of its own
        QCOMPARE(log.records()[0].state(), State::ReturnedNew);
        QCOMPARE(log.worstActive("a"), Severity::Warning);
    }

    void testResultsAreNoAlarms()
    {
        AlarmLog log;
        log.take(entry("a", Kind::Appear, testPassed, 0));
        log.take(entry("a", Kind::Disappear, testPassed, 1));
        QCOMPARE(log.rowCount(), 1);
        QVERIFY(!log.records()[0].isOpen());
        QCOMPARE(log.countToAcknowledge(), 0);
    }

    void filters()
    {
        AlarmLog log;
        AlarmFilter shown;
        shown.setSourceModel(&log);
        QAbstractItemModelTester tester(&shown);
        QStringList texts;
        for (int flag = 0; flag < 2 * eventCount; ++flag)
            texts << QStringLiteral("Event no. %1").arg(flag);
        log.setEventTexts(texts);
        log.take(entry("hall 1", Kind::Appear, badInput, 0));
        log.take(entry("hall, 2", Kind::Appear, fanFault, 1));
        log.take(entry("hall 1", Kind::Appear, testPassed, 2));
        log.take(entry("hall 1", Kind::Disappear, badInput, 3));
        // Those that want attention first, the newest of them on top.
        QCOMPARE(cell(shown, 0, AlarmLog::Event), QString("Event no. 29"));
        QCOMPARE(cell(shown, 1, AlarmLog::Event), QString("Event no. 82"));
        QCOMPARE(cell(shown, 2, AlarmLog::Event), QString("Event no. 71"));
        shown.setOpenOnly(true);
        QCOMPARE(shown.rowCount(), 2);
        shown.setLeast(Severity::Critical);
        QCOMPARE(shown.rowCount(), 1);
        QCOMPARE(shown.csv().split('\n').value(1).left(38),
                 QByteArray("2026-03-01 12:00:01,\"hall, 2\",■ Critical").left(38));
        shown.setLeast(Severity::Information);
        shown.setDevice("hall 1");
        QCOMPARE(shown.record(0).flag, badInput);
        shown.setDevice({});
        shown.setOpenOnly(false);
        shown.setText("NO. 7");
        QCOMPARE(shown.rowCount(), 1);
    }

    void keptOverAStart()
    {
        const QString name = path("state/events.jsonl");
        keepSome(name);
        QVERIFY(writeFile(name, fileContents(name) + "{\"id\":9,\"dev")); // a crash in the middle
        AlarmFile file(name);
        QVERIFY(file.open().isGood());
        AlarmLog log;
        log.restore(file.load());
        QCOMPARE(log.rowCount(), 3);
        QVERIFY(log.records()[0].isAcknowledged);
        QCOMPARE(log.records()[2].state(), State::ReturnedNew);
        QCOMPARE(cell(log, 0, AlarmLog::State), QString("Not known, acknowledged"));
        QCOMPARE(log.oldestActive("a"), nullptr); // nobody knows yet
        // The plug-in reports a flag that is set as if it had just appeared, and no other.
        log.take(entry("a", Kind::Appear, overload, 500));
        log.reconcile("a", { { 2000 + overload, 1 }, { 2000 + fanFault, 0 } }, noon.addSecs(500));
        QCOMPARE(log.rowCount(), 3);
        QCOMPARE(cell(log, 0, AlarmLog::State), QString("Active, acknowledged"));
        QCOMPARE(log.records()[0].began, noon);
        QCOMPARE(log.records()[1].state(), State::ReturnedNew);
        QCOMPARE(cell(log, 1, AlarmLog::Duration), QString("at most 8 min 19 s"));
        QVERIFY(file.append(log.records()[1], log.records()).isGood());
        log.doubt("a"); // another address, perhaps
        QCOMPARE(cell(log, 0, AlarmLog::State), QString("Not known, acknowledged"));
        log.abandon("a", noon.addSecs(600));
        QCOMPARE(cell(log, 0, AlarmLog::State), QString("Not watched, acknowledged"));
        QCOMPARE(cell(log, 0, AlarmLog::Duration), QString("at least 10 min"));
        QCOMPARE(AlarmFile(name).isOpen(), false);
        QCOMPARE(file.load().size(), 3); // the broken line took no other along
    }

    void boundedInSize()
    {
        const QString name = path("events.jsonl");
        AlarmFile file(name);
        QVERIFY(file.open().isGood());
        AlarmLog log;
        int failures = 0;
        connect(&log, &AlarmLog::changed, this, [&](const AlarmRecord &record) {
            failures += file.append(record, log.records()).isGood() ? 0 : 1;
        });
        log.take(entry("a", Kind::Appear, overload, 0)); // stays open
        for (int i = 0; i < AlarmLog::mostRecords * 5 / 4; ++i) {
            log.take(entry("a", Kind::Appear, badInput, 2 * i));
            log.take(entry("a", Kind::Disappear, badInput, 2 * i + 1));
            log.acknowledge({ log.records().last().id });
        }
        QCOMPARE(failures, 0);
        QCOMPARE(log.rowCount(), AlarmLog::mostRecords);
        QCOMPARE(log.records().first().flag, overload);
        QVERIFY(QFileInfo(name).size() <= AlarmFile::mostBytes + 1000);
        QVERIFY(file.load().size() >= AlarmLog::mostRecords);
    }

    void noFileInItsPlace()
    {
        QCOMPARE(::mkfifo("fifo", 0600), 0);
        QVERIFY(AlarmFile(path("fifo")).open().error.contains("it is no file"));
        QVERIFY(writeFile("file", "x"));
        QVERIFY(AlarmFile(path("file/sub/x")).open().error.contains("no folder"));
    }

private:
    // Three events, the first acknowledged and the last returned.
    void keepSome(const QString &name)
    {
        AlarmLog log;
        AlarmFile file(name);
        QVERIFY(file.open().isGood());
        connect(&log, &AlarmLog::changed, this, [&](const AlarmRecord &record) {
            QVERIFY(file.append(record, log.records()).isGood());
        });
        log.take(entry("a", Kind::Appear, overload, 0));
        log.take(entry("a", Kind::Appear, fanFault, 1));
        log.take(entry("a", Kind::Appear, badInput, 2));
        log.take(entry("a", Kind::Disappear, badInput, 3));
        log.acknowledge({ log.records()[0].id });
        AlarmFile second(name);
        QVERIFY(second.open().error.contains("another window"));
    }
};

QTEST_MAIN(tst_Alarmlog)
#include "tst_alarmlog.moc"
