// The history export of 1k to 1M records.

#include "clients.h"
#include "rows.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>
#include <cstring>

namespace {

constexpr double goalGrowth = 4096; // KiB, whatever the number of records

void writeRecords(const QString &path, int count)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("bench: %s", qPrintable(file.errorString()));
    for (int i = 0; i < count; ++i) {
        char line[64];
        std::snprintf(line, sizeof line, "%d %d %d %d %d %d %d\n", i, 16 + i % 112, i % 2, i / 1000,
                      i % 65536, i % 2, i % 12);
        file.write(line);
    }
}

void provide(const QString &source)
{
    QFile::remove(QStringLiteral("history.txt"));
    if (!QFile::copy(source, QStringLiteral("history.txt")))
        qFatal("bench: cannot copy the records");
}

// A converter that does the least that a converter can do: no checks, one text a column.
void convertMinimal()
{
    FILE *in = std::fopen("history.txt", "r");
    FILE *out = std::fopen("minimal.csv", "w");
    std::fputs("ID,Content,Status,Time,History mode,\n", out);
    char line[256];
    while (std::fgets(line, sizeof line, in)) {
        unsigned field[7] = {};
        char *rest = line;
        for (unsigned &value : field)
            value = unsigned(std::strtoul(rest, &rest, 10));
        const unsigned seconds = (field[5] << 16 | field[4]) % 86400;
        std::fprintf(out, "%x,%s,%s,%u:%02u:%02u:%02u,%s,\n", field[0],
                     field[1] < 64 ? "Bus Over Voltage" : "Overload",
                     field[2] ? "Appear" : "Disappear", field[3], seconds / 3600, seconds / 60 % 60,
                     seconds % 60, field[6] ? "grid mode" : "power on mode");
    }
    std::fclose(out);
    std::fclose(in);
}

void convertWithAwk()
{
    const QString program =
        QStringLiteral("BEGIN { print \"ID,Content,Status,Time,History mode,\" }"
                       "{ s = ($6 * 65536 + $5) % 86400;"
                       "  printf \"%x,%s,%s,%d:%02d:%02d:%02d,%s,\\n\", $1, $2 < 64 ? \"Bus Over "
                       "Voltage\" : \"Overload\","
                       "  $3 ? \"Appear\" : \"Disappear\", $4, s / 3600, s / 60 % 60, s % 60, $7 ? "
                       "\"grid mode\" : \"power on mode\" }");
    QProcess awk;
    awk.setStandardInputFile(QStringLiteral("history.txt"));
    awk.setStandardOutputFile(QStringLiteral("awk.csv"));
    awk.start(QStringLiteral("awk"), { program });
    awk.waitForFinished(-1);
    if (awk.exitCode() != 0)
        qFatal("bench: awk failed");
}

// Peak memory while `work` runs, above what is used now, in KiB.
template <typename Work> double peakGrowth(Work work)
{
    QFile peak(QStringLiteral("/proc/self/clear_refs"));
    if (peak.open(QIODevice::WriteOnly))
        peak.write("5\n"); // resets VmHWM
    peak.close();
    const double before = memoryKiB("VmRSS");
    work();
    return memoryKiB("VmHWM") - before;
}

} // namespace

void benchHistoryExport(Runner &runner)
{
    tavoClient client;
    for (int records : { 1'000, 10'000, 100'000, 1'000'000 }) {
        const QString source = QStringLiteral("records.txt");
        writeRecords(source, records);
        const auto prepare = [&] { provide(source); }; // ours empties what it has read
        const auto ours = [&] { client.exportHistoryInfo(QStringLiteral("ours.csv")); };
        Row row { QStringLiteral("History export of %1 records").arg(records),
                  { { QStringLiteral("minimal stdio converter"), Role::Limit, records,
                      convertMinimal, prepare },
                    { QStringLiteral("exportHistoryInfo"), Role::Ours, records, ours, prepare },
                    { QStringLiteral("awk"), Role::Peer, records, convertWithAwk, prepare } } };
        row.toLimit = 2;
        row.toPeer = 0.3;
        row.rounds = records >= 100'000 ? 5 : 21;
        runner.run(row);
        prepare();
        runner.note({ row.name + QStringLiteral(": peak memory"), peakGrowth(ours),
                      QStringLiteral("KiB"), goalGrowth });
    }
}
