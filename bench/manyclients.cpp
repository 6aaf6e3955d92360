// 1, 10, 100 and 500 clients in one process: processor time a cycle, memory a client.

#include "clients.h"
#include "rows.h"
#include "standstill.h"

#include <chrono>
#include <numeric>
#include <thread>

namespace {

constexpr double goalPerCycle = 1.3;  // times one client's
constexpr double goalStandStill = 50; // ms
constexpr double goalMemory = 150;    // KiB a client

double costByPoll(const BenchClients &clients)
{
    const int rounds = std::max(2, int(2000 / clients.all().size()));
    const double begin = processorTime();
    for (int round = 0; round < rounds; ++round) {
        for (const auto &client : clients.all())
            client->poll();
    }
    return (processorTime() - begin) / double(rounds) / double(clients.all().size());
}

// One client whose memory has left the caches, as it has when a cycle comes once a second: what
// many clients must be compared with, because none of them finds its memory there either.
double costFromColdCaches(const BenchClients &clients)
{
    constexpr int rounds = 200;
    std::vector<int> sweep(64 * 1024 * 1024 / sizeof(int));
    double cost = 0;
    for (int round = 0; round < rounds; ++round) {
        std::iota(sweep.begin(), sweep.end(), round);
        const double begin = processorTime();
        clients.all().front()->poll();
        cost += processorTime() - begin;
    }
    return cost / rounds;
}

double costByThread(const BenchClients &clients)
{
    for (const auto &client : clients.all())
        client->start();
    std::this_thread::sleep_for(std::chrono::seconds(1)); // until all are up
    const long queries = benchQueries();
    const double begin = processorTime();
    std::this_thread::sleep_for(std::chrono::seconds(4));
    return (processorTime() - begin) / double(benchQueries() - queries);
}

void noteCost(Runner &runner, const QString &name, double cost, double one)
{
    runner.note({ name, cost / 1000, QStringLiteral("us a cycle"), 0 });
    if (one > 0)
        runner.note({ name + QStringLiteral(", against one client"), cost / one,
                      QStringLiteral("x"), goalPerCycle });
}

// The host's thread, while it deletes clients whose drivers do not return.
void noteHangingDrivers(Runner &runner)
{
    constexpr int count = 50;
    BenchClients clients(count);
    benchHang(true);
    int alive = count;
    for (const auto &client : clients.all()) {
        QObject::connect(client.get(), &QObject::destroyed, [&alive] { --alive; });
        client->start();
    }
    process(std::chrono::milliseconds(500));
    const StandStill gaps;
    clients.deleteLater();
    process(std::chrono::seconds(2));
    runner.note({ QStringLiteral("50 clients whose drivers hang are deleted, longest stand-still"),
                  gaps.longestMs(), QStringLiteral("ms"), goalStandStill });
    benchHang(false);
    while (alive > 0)
        process(std::chrono::milliseconds(5));
}

} // namespace

void benchManyClients(Runner &runner)
{
    noteHangingDrivers(runner);
    double onePoll = 0;
    double oneThread = 0;
    for (const int count : { 1, 10, 100, 500 }) {
        const QString name = QStringLiteral("%1 clients ").arg(count);
        const double before = memoryKiB("VmRSS");
        BenchClients clients(count);
        const double byPoll = costByPoll(clients);
        noteCost(runner, name + QStringLiteral("by poll()"), byPoll, onePoll);
        if (count == 1) {
            onePoll = costFromColdCaches(clients);
            noteCost(runner, name + QStringLiteral("by poll(), from cold caches"), onePoll, 0);
        }
        const double byThread = costByThread(clients);
        noteCost(runner, name + QStringLiteral("by thread"), byThread, oneThread);
        if (count == 1)
            oneThread = byThread;
        if (count >= 100) // below, what the process needs once outweighs the clients
            runner.note({ name + QStringLiteral("memory a client"),
                          (memoryKiB("VmRSS") - before) / count, QStringLiteral("KiB"),
                          goalMemory });
    }
}
