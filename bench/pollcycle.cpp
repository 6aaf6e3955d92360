// One poll cycle of 420 values without I/O, the host keeping the report or not.

#include "clients.h"
#include "rows.h"

#include <QDateTime>
#include <QMutexLocker>

namespace {

constexpr int cycles = 20; // a round

// The values of a cycle, as the bench driver delivers them.
template <typename Take> void deliver(long turn, Take take)
{
    for (int i = 0; i < 420; ++i) {
        const int id = i < 96 ? 2000 + i : i < 196 ? 3000 + i - 96 : 4000 + i - 196;
        take(id, id < 3000 ? 0.0F : float(i + turn % 100));
    }
}

using Report = QMap<QString, QVariant>;

/** The data movement of a cycle and nothing else: each container is written in place, keys and
 *  texts are made once. */
class HandWritten
{
public:
    HandWritten()
    {
        deliver(0, [this](int id, float value) {
            m_store.insert(id, value);
            m_keys.append(QString::number(id));
            m_information.insert(m_keys.last(), value);
        });
    }

    void cycle()
    {
        auto slot = m_store.begin();
        deliver(++m_turn, [&slot](int, float value) { *slot++ = value; });
        for (int k = 0; k < 96; ++k)
            m_changes += m_store.constFind(2000 + k)->toInt() != m_states[k];
        Report report { { m_name, m_device }, { m_protocol, 0 },
                        { m_lost, 0 },        { m_port, m_device },
                        { m_time, m_device }, { m_data, QVariant::fromValue(m_store) } };
        m_kept = report; // the host's copy of the last report
        const QMutexLocker lock(&m_mutex);
        auto entry = m_information.begin();
        for (auto it = m_store.constBegin(); it != m_store.constEnd(); ++it)
            *entry++ = it.value();
    }

private:
    const QString m_name = QStringLiteral("name"), m_protocol = QStringLiteral("protocol"),
                  m_lost = QStringLiteral("lost"), m_port = QStringLiteral("port"),
                  m_time = QStringLiteral("timeStr"), m_data = QStringLiteral("data"),
                  m_device = QStringLiteral("ups0");
    QMap<int, QVariant> m_store;
    QStringList m_keys;
    QMap<QString, QVariant> m_information;
    int m_states[96] = {};
    int m_changes = 0;
    Report m_kept;
    QMutex m_mutex;
    long m_turn = 0;
};

/** The least that leaves the same behind when nobody takes the report: values in an array, and the
 *  device information, which a host may read at any time. */
class FlatArrays
{
public:
    FlatArrays()
    {
        deliver(0,
                [this](int id, float value) { m_information.insert(QString::number(id), value); });
    }

    void cycle()
    {
        float *slot = m_values;
        deliver(++m_turn, [&slot](int, float value) { *slot++ = value; });
        for (int k = 0; k < 96; ++k)
            m_changes += int(m_values[k]) != m_states[k];
        const QMutexLocker lock(&m_mutex);
        const float *value = m_values;
        for (QVariant &entry : m_information)
            entry = *value++;
    }

private:
    float m_values[420] = {};
    int m_states[96] = {};
    int m_changes = 0;
    QMap<QString, QVariant> m_information;
    QMutex m_mutex;
    long m_turn = 0;
};

/** What one writes first: everything by key, every text made anew. */
class Straightforward
{
public:
    void cycle()
    {
        deliver(++m_turn, [this](int id, float value) { m_store.insert(id, value); });
        const QString now = QDateTime::currentDateTime().toString("yyyy-MM-dd hh:mm:ss");
        Report poll;
        poll.insert("name", "ups0");
        poll.insert("timeStr", now);
        QStringList texts;
        for (int i = 0; i < 192; ++i)
            texts.append(QObject::tr("Bus over voltage"));
        Report report;
        report.insert("name", "ups0");
        report.insert("protocol", 0);
        report.insert("lost", 0);
        report.insert("port", "ups0");
        report.insert("timeStr", QDateTime::currentDateTime().toString("yyyy-MM-dd hh:mm:ss"));
        for (int k = 0; k < texts.size() / 2; ++k) {
            const int value = m_store.value(2000 + k).toInt();
            if (value != m_states.value(k))
                report.insert("alarmId", k);
            m_states[k] = value;
        }
        report.insert("data", QVariant::fromValue(m_store));
        m_kept = report;
        for (auto it = m_store.constBegin(); it != m_store.constEnd(); ++it) {
            const QMutexLocker lock(&m_mutex);
            m_information.insert(QString::number(it.key(), 10), it.value());
        }
    }

private:
    QMap<int, QVariant> m_store;
    QMap<int, int> m_states;
    QMap<QString, QVariant> m_information;
    Report m_kept;
    QMutex m_mutex;
    long m_turn = 0;
};

} // namespace

void benchPollCycle(Runner &runner)
{
    BenchClients clients(2);
    tavoClient *client = clients.all().front().get();
    tavoClient *other = clients.all().back().get();
    Report kept; // the host keeps the last report, as a view does
    QObject::connect(
        client, &CollectThread::postDEvent, client, [&kept](int, Report map) { kept = map; },
        Qt::DirectConnection);
    HandWritten hand;
    Straightforward straight;
    const auto round = [](auto cycle) {
        return [cycle] {
            for (int i = 0; i < cycles; ++i)
                cycle();
        };
    };
    Row row { QStringLiteral("Poll cycle of 420 values, the host keeping the report"),
              { { QStringLiteral("data movement by hand"), Role::Limit, cycles,
                  round([&] { hand.cycle(); }) },
                { QStringLiteral("poll()"), Role::Ours, cycles, round([&] { client->poll(); }) },
                { QStringLiteral("straightforward Qt"), Role::Naive, cycles,
                  round([&] { straight.cycle(); }) } } };
    row.toLimit = 1.5;
    row.fasterThanNaive = 3;
    runner.run(row);
    FlatArrays flat;
    Row unkept { QStringLiteral("Poll cycle of 420 values, nobody keeping the report"),
                 { { QStringLiteral("flat arrays, one map refreshed"), Role::Limit, cycles,
                     round([&] { flat.cycle(); }) },
                   { QStringLiteral("poll()"), Role::Ours, cycles,
                     round([&] { other->poll(); }) } } };
    unkept.toLimit = 4;
    runner.run(unkept);
}
