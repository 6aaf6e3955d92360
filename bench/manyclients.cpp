// 1, 10, 100 and 500 clients in one process: processor time a cycle, memory a client.

#include "clients.h"
#include "rows.h"

#include <chrono>
#include <thread>

namespace {

constexpr double goalPerCycle = 1.3; // times one client's
constexpr double goalMemory = 150;   // KiB a client

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

} // namespace

void benchManyClients(Runner &runner)
{
    double onePoll = 0;
    double oneThread = 0;
    for (int count : { 1, 10, 100, 500 }) {
        const double before = memoryKiB("VmRSS");
        BenchClients clients(count);
        const double byPoll = costByPoll(clients);
        const double byThread = costByThread(clients);
        const double memory = (memoryKiB("VmRSS") - before) / count;
        if (count == 1) {
            onePoll = byPoll;
            oneThread = byThread;
        }
        const auto name = [count](const char *what) {
            return QStringLiteral("%1 clients, %2").arg(count).arg(QLatin1String(what));
        };
        runner.note(
            { name("by poll(): processor time a cycle"), byPoll / 1000, QStringLiteral("us"), 0 });
        runner.note({ name("by poll(): against one client"), byPoll / onePoll, QStringLiteral("x"),
                      goalPerCycle });
        runner.note({ name("by thread: processor time a cycle"), byThread / 1000,
                      QStringLiteral("us"), 0 });
        runner.note({ name("by thread: against one client"), byThread / oneThread,
                      QStringLiteral("x"), goalPerCycle });
        if (count >= 100) // below, what the process needs once outweighs the clients
            runner.note({ name("memory a client"), memory, QStringLiteral("KiB"), goalMemory });
    }
}
