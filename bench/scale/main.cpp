// What many clients cost in one host, beside the exchanges alone: kx300_scale PLUGIN [COUNT ...]
// The device is a process of its own; all clients poll it over TCP as fast as their tick lets them.
#include "fleet.h"
#include "loopbackdevice.h"
#include "runner.h"
#include "standstill.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QPluginLoader>

#include <cstdio>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

constexpr double goalOfRaw = 4;       // times the exchanges alone
constexpr double goalGrowth = 1.2;    // times the cost a report of the fewest clients
constexpr double goalMemory = 100;    // KiB a client
constexpr double goalStandStill = 20; // ms while they poll
constexpr double goalRelease = 50;    // ms while they are deleted
constexpr auto slice = 4s;

/** Function, first register, count: what the sample driver reads for one report. */
constexpr int reads[][3] = { { 2, 0, 96 }, { 3, 0, 105 }, { 4, 0, 125 }, { 4, 125, 120 } };

void exchange(int peer, const int (&read)[3])
{
    const unsigned char request[] = { 0, 1,
                                      0, 0,
                                      0, 6,
                                      1, static_cast<unsigned char>(read[0]),
                                      0, static_cast<unsigned char>(read[1]),
                                      0, static_cast<unsigned char>(read[2]) };
    unsigned char reply[300];
    const int payload = read[0] == 2 ? (read[2] + 7) / 8 : 2 * read[2];
    if (send(peer, request, sizeof request, 0) != ssize_t(sizeof request)
        || recv(peer, reply, std::size_t(9 + payload), MSG_WAITALL) != 9 + payload)
        qFatal("bench: a raw exchange failed");
}

std::vector<int> connectAll(int count, quint16 port)
{
    std::vector<int> peers;
    sockaddr_in address {};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    for (int i = 0; i < count; ++i) {
        const int on = 1;
        peers.push_back(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
        setsockopt(peers.back(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        if (connect(peers.back(), reinterpret_cast<sockaddr *>(&address), sizeof address) != 0)
            qFatal("bench: no raw connection");
    }
    return peers;
}

// What the exchanges of a report take with nothing around them, ns, over as many connections.
double rawCost(int count, quint16 port)
{
    const std::vector<int> peers = connectAll(count, port);
    const double begin = processorTime();
    const QDeadlineTimer end(slice);
    long reports = 0;
    for (; !end.hasExpired(); ++reports) {
        for (const auto &read : reads)
            exchange(peers[std::size_t(reports % count)], read);
    }
    const double taken = processorTime() - begin;
    for (const int peer : peers)
        close(peer);
    return taken / double(reports);
}

double memoryKiB()
{
    QFile status(QStringLiteral("/proc/self/statm"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    return status.readAll().split(' ').at(1).toDouble() * double(sysconf(_SC_PAGESIZE)) / 1024;
}

double waits()
{
    rusage usage {};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_nvcsw);
}

void noteStandStill(Runner &runner, const QString &when, const StandStill &gaps, double goal)
{
    runner.note({ when + ", longest stand-still", gaps.longestMs(), "ms", goal });
    runner.note({ when + ", longest work in one go", gaps.longestWorkMs(), "ms", 0 });
}

/** Cost a report of the fewest clients, ns. */
double measure(Runner &runner, CollectThread &plugin, int count, double fewest)
{
    const QString name = QStringLiteral("%1 clients: ").arg(count);
    const LoopbackDevice device;
    const double raw = rawCost(count, device.port());
    const double memoryBefore = memoryKiB();
    Fleet fleet(plugin, count, device.port());
    if (!fleet.waitForAll())
        qFatal("bench: not every client reported");
    process(1s);
    runner.note({ name + "memory a client", (memoryKiB() - memoryBefore) / count, "KiB",
                  count >= 100 ? goalMemory : 0 }); // below, what the process needs once outweighs
    const long reportsBefore = fleet.reports();
    const double waitsBefore = waits();
    const double before = processorTime();
    process(slice);
    const double reports = double(fleet.reports() - reportsBefore);
    const double cost = (processorTime() - before) / reports;
    runner.note(
        { name + "waits of all threads, a report", (waits() - waitsBefore) / reports, "", 0 });
    runner.note({ name + "a report", cost / 1000, "us", 0 });
    runner.note({ name + "its exchanges alone", raw / 1000, "us", 0 });
    runner.note({ name + "a report, of its exchanges alone", cost / raw, "x", goalOfRaw });
    if (fewest > 0)
        runner.note(
            { name + "a report, of that of the fewest clients", cost / fewest, "x", goalGrowth });
    {
        const StandStill gaps;
        process(slice);
        noteStandStill(runner, name + "while they poll", gaps, goalStandStill);
    }
    const StandStill gaps;
    fleet.releaseAll();
    noteStandStill(runner, name + "while all are deleted", gaps, goalRelease);
    return cost;
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &text) {
        if (type == QtFatalMsg)
            std::fprintf(stderr, "%s\n", qPrintable(text));
    });
    rlimit files {};
    getrlimit(RLIMIT_NOFILE, &files);
    files.rlim_cur = files.rlim_max;
    setrlimit(RLIMIT_NOFILE, &files);
    QPluginLoader loader(QString::fromLocal8Bit(argc > 1 ? argv[1] : ""));
    auto *const plugin = static_cast<CollectThread *>(loader.instance());
    if (!plugin)
        qFatal("bench: %s", qPrintable(loader.errorString()));
    Runner runner;
    std::vector<int> counts { 10, 100, 1000 };
    if (argc > 2) {
        counts.clear();
        for (int i = 2; i < argc; ++i)
            counts.push_back(atoi(argv[i]));
    }
    double fewest = 0;
    for (const int count : counts) {
        const double cost = measure(runner, *plugin, count, fewest);
        fewest = fewest > 0 ? fewest : cost;
    }
    return runner.report({}) ? 0 : 1;
}
