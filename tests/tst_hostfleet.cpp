#include "upssimprocess.h"
#include "windowtest.h"

#include "alarmlog.h"

#include <QRandomGenerator>

#include <unistd.h>

namespace {

constexpr int stepSeconds = 4; // between two changes of a device; a loss takes that long to tell
constexpr int patienceMs = 60000;
constexpr int allowedGrowthKiB = 32 * 1024;
constexpr int flags[] = { 1, 4, 23, 54, 60, 64, 86, 90 }; // which the simulator leaves alone
constexpr int lossFlag = AlarmRecord::noFlag;

int setting(const char *name, int standard)
{
    bool ok = false;
    const int value = qEnvironmentVariableIntValue(name, &ok);
    return ok ? value : standard;
}

// Without the files' pages, which the system takes and gives as it likes.
int residentKiB()
{
    const QList<QByteArray> fields = fileContents("/proc/self/statm").split(' ');
    const qlonglong own = fields.value(1).toLongLong() - fields.value(2).toLongLong();
    return int(own * ::sysconf(_SC_PAGESIZE) / 1024);
}

/** A simulated UPS and what was done to it. */
struct Unit
{
    UpsSimProcess simulator;
    QList<int> began; // flags in the order in which they were set; lossFlag for a silent line
    QSet<int> active;

    DeviceSpec spec(const QString &name) const
    {
        DeviceSpec spec;
        spec.name = name;
        spec.port = simulator.terminalName();
        spec.timeout = 200;
        return spec;
    }

    bool change(QRandomGenerator &random)
    {
        if (active.contains(lossFlag)) {
            active.remove(lossFlag);
            return simulator.perform("line ok");
        }
        if (random.bounded(10) == 0) {
            active.insert(lossFlag);
            began << lossFlag;
            return simulator.perform("line silent");
        }
        const int flag = flags[random.bounded(int(std::size(flags)))];
        const bool sets = !active.remove(flag);
        if (sets) {
            active.insert(flag);
            began << flag;
        }
        return simulator.perform(QByteArray("set flag ") + QByteArray::number(flag)
                                 + (sets ? " 1" : " 0"));
    }
};

} // namespace

/**
 * The window on a room of simulated UPSs to which things happen at random.
 *
 * HOSTFLEET_DEVICES, HOSTFLEET_SECONDS and HOSTFLEET_STEP (s) make a long run of the short one.
 */
class tst_Hostfleet : public GuardedTest
{
    Q_OBJECT

private slots:
    void logIsComplete()
    {
        qputenv("XDG_STATE_HOME", QFile::encodeName(path("state")));
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, path("config"));
        const LoadedPlugin plugin = loadPlugin(qEnvironmentVariable("PLUGIN"));
        QVERIFY2(plugin.factory, qPrintable(plugin.error));
        HostOptions options;
        options.poll = true;
        options.retries = 2;
        std::vector<std::unique_ptr<Unit>> units;
        for (int i = 0; i < setting("HOSTFLEET_DEVICES", 6); ++i) {
            units.push_back(std::make_unique<Unit>());
            QVERIFY2(units.back()->simulator.start(), "no simulator");
            options.devices << units.back()->spec(QString::number(i));
        }
        DeviceHost host(options, *plugin.factory);
        QCOMPARE(host.open().text, QString());
        HostWindow window(options, host);
        window.show();
        host.start();
        QTRY_VERIFY_WITH_TIMEOUT(host.allWereOnline(), patienceMs);
        QRandomGenerator random(1);
        int resident = 0;
        const int step = setting("HOSTFLEET_STEP", stepSeconds);
        const int rounds = setting("HOSTFLEET_SECONDS", 24) / step;
        for (int round = 0; round < rounds; ++round) {
            const QDeadlineTimer next(step * 1000);
            for (const auto &unit : units)
                QVERIFY(unit->change(random));
            if (round == rounds / 4)
                resident = residentKiB();
            QTest::qWait(int(next.remainingTime()));
        }
        for (size_t i = 0; i < units.size(); ++i)
            compare(window.log(), QString::number(i), *units[i]);
        const int growth = residentKiB() - resident;
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) // which keep freed memory
        QVERIFY2(growth < allowedGrowthKiB, qPrintable(QString::number(growth)));
#endif
        QCOMPARE(countOfKept(), window.log().rowCount());
        std::fprintf(stderr, "%d events of %d devices, %d KiB more in three quarters of the run\n",
                     window.log().rowCount(), int(units.size()), growth);
    }

private:
    static void compare(const AlarmLog &log, const QString &device, const Unit &unit)
    {
        QTRY_COMPARE_WITH_TIMEOUT(begun(log, device), unit.began, patienceMs);
        QTRY_COMPARE_WITH_TIMEOUT(active(log, device), unit.active, patienceMs);
    }

    // In the file that the window keeps.
    int countOfKept() const
    {
        AlarmFile file(path("copy.jsonl"));
        const bool isCopied = QFile::copy(AlarmFile::standardName(), path("copy.jsonl"));
        return isCopied && file.open().isGood() ? int(file.load().size()) : -1;
    }

    static QList<int> begun(const AlarmLog &log, const QString &device)
    {
        QList<int> flags;
        for (const AlarmRecord &record : log.records())
            if (record.device == device && record.kind != AlarmRecord::Kind::Note)
                flags << record.flag;
        return flags;
    }

    static QSet<int> active(const AlarmLog &log, const QString &device)
    {
        QSet<int> flags;
        for (const AlarmRecord &record : log.records())
            if (record.device == device && record.isActive())
                flags << record.flag;
        return flags;
    }
};

int main(int argc, char **argv)
{
    return runApart<tst_Hostfleet>(argc, argv);
}

#include "tst_hostfleet.moc"
