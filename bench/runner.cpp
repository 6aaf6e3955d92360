#include "runner.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <sched.h>
#include <sys/resource.h>

namespace {

double now(Clock clock)
{
    if (clock == Clock::Processor)
        return processorTime();
    const std::chrono::duration<double, std::nano> time =
        std::chrono::steady_clock::now().time_since_epoch();
    return time.count();
}

double median(QVector<double> values)
{
    std::nth_element(values.begin(), values.begin() + values.size() / 2, values.end());
    return values[values.size() / 2];
}

double bestOf(const Row &row, const QVector<double> &medians, Role role)
{
    double best = 0;
    for (int i = 0; i < medians.size(); ++i) {
        if (row.contenders[i].role == role && (best == 0 || medians[i] < best))
            best = medians[i];
    }
    return best;
}

void printRatio(double value, double base, const char *what)
{
    if (base > 0)
        std::printf("  %6.2f %s", value / base, what);
}

struct Verdict
{
    QString text;
    bool met = true;
};

void judge(Verdict &verdict, double value, double bound, bool atMost, const char *what)
{
    if (bound == 0 || value == 0)
        return;
    const bool met = atMost ? value <= bound : value >= bound;
    verdict.met = verdict.met && met;
    verdict.text += QStringLiteral("  %1 %2 (%3 %4)%5")
                        .arg(QLatin1String(what))
                        .arg(value, 0, 'f', 2)
                        .arg(QLatin1String(atMost ? "<=" : ">="))
                        .arg(bound)
                        .arg(QLatin1String(met ? "" : " MISSED"));
}

Verdict judge(const Row &row, const QVector<double> &medians)
{
    const double ours = bestOf(row, medians, Role::Ours);
    const double limit = bestOf(row, medians, Role::Limit);
    const double peer = bestOf(row, medians, Role::Peer);
    const double naive = bestOf(row, medians, Role::Naive);
    Verdict verdict;
    judge(verdict, limit > 0 ? ours / limit : 0, row.toLimit, true, "of the limit");
    judge(verdict, peer > 0 ? ours / peer : 0, row.toPeer, true, "of the best peer");
    judge(verdict, naive / ours, row.fasterThanNaive, false, "faster than straightforward");
    judge(verdict, ours, row.belowNs, true, "ns");
    return verdict;
}

QJsonObject reportRow(const Row &row, const QVector<double> &medians)
{
    const Verdict verdict = judge(row, medians);
    const double limit = bestOf(row, medians, Role::Limit);
    const double peer = bestOf(row, medians, Role::Peer);
    QJsonObject times;
    std::printf("\n%s\n", qPrintable(row.name));
    for (int i = 0; i < medians.size(); ++i) {
        const QString name = row.contenders[i].name;
        times.insert(name, medians[i]);
        std::printf("    %-34s %12.0f ns", qPrintable(name), medians[i]);
        printRatio(medians[i], limit, "x limit");
        printRatio(medians[i], peer, "x best peer");
        std::printf("\n");
    }
    if (!verdict.text.isEmpty())
        std::printf("  =>%s\n", qPrintable(verdict.text));
    return { { "row", row.name },
             { "nsPerOperation", times },
             { "ours", bestOf(row, medians, Role::Ours) },
             { "limit", limit },
             { "bestPeer", peer },
             { "goals", verdict.text.trimmed() },
             { "met", verdict.met } };
}

QJsonObject reportFigure(const Figure &figure)
{
    const bool met = figure.bound == 0 || figure.value <= figure.bound;
    std::printf("\n%s: %.3f %s", qPrintable(figure.name), figure.value, qPrintable(figure.unit));
    if (figure.bound > 0)
        std::printf(" (<= %g)%s", figure.bound, met ? "" : " MISSED");
    std::printf("\n");
    return { { "row", figure.name },
             { "value", figure.value },
             { "unit", figure.unit },
             { "bound", figure.bound },
             { "met", met } };
}

bool writeJson(const QString &name, const QJsonArray &rows)
{
    QFile file(name);
    if (file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(rows).toJson()) >= 0
        && file.flush())
        return true;
    std::fprintf(stderr, "bench: %s: %s\n", qPrintable(name), qPrintable(file.errorString()));
    return false;
}

} // namespace

void Runner::run(const Row &row)
{
    QVector<QVector<double>> samples(row.contenders.size());
    for (int round = -1; round < row.rounds; ++round) { // the first one warms
        for (int i = 0; i < row.contenders.size(); ++i) {
            const Contender &contender = row.contenders[i];
            if (contender.prepare)
                contender.prepare();
            const double begin = now(row.clock);
            contender.round();
            const double taken = now(row.clock) - begin;
            if (round >= 0)
                samples[i].append(taken / contender.operations);
        }
    }
    Result result { row, {} };
    for (const QVector<double> &values : samples)
        result.medians.append(median(values));
    m_results.append(result);
    std::fprintf(stderr, "measured: %s\n", qPrintable(row.name));
}

void Runner::note(const Figure &figure)
{
    m_figures.append(figure);
    std::fprintf(stderr, "measured: %s\n", qPrintable(figure.name));
}

bool Runner::report(const QString &jsonFile) const
{
    bool allMet = true;
    QJsonArray rows;
    for (const Result &result : m_results)
        rows.append(reportRow(result.row, result.medians));
    for (const Figure &figure : m_figures)
        rows.append(reportFigure(figure));
    for (const QJsonValue &row : qAsConst(rows))
        allMet = allMet && row[QLatin1String("met")].toBool();
    std::printf("\n%s\n", allMet ? "All goals are met." : "Not all goals are met.");
    return (jsonFile.isEmpty() || writeJson(jsonFile, rows)) && allMet;
}

double processorTime()
{
    timespec own {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &own);
    rusage children {};
    getrusage(RUSAGE_CHILDREN, &children);
    const auto ns = [](const timeval &time) {
        return double(time.tv_sec) * 1e9 + double(time.tv_usec) * 1e3;
    };
    return double(own.tv_sec) * 1e9 + double(own.tv_nsec) + ns(children.ru_utime)
        + ns(children.ru_stime);
}

void pinToOneProcessor()
{
    cpu_set_t set;
    CPU_ZERO(&set);
    CPU_SET(0, &set);
    sched_setaffinity(0, sizeof set, &set);
}

void unpin()
{
    cpu_set_t set;
    CPU_ZERO(&set);
    for (int i = 0; i < CPU_SETSIZE; ++i)
        CPU_SET(i, &set);
    sched_setaffinity(0, sizeof set, &set);
}
