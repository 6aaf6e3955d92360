// Runs many clients at once for as long as wanted and watches that nothing piles up.
//   kx300_soak PLUGIN SECONDS             50 clients, everything at random
//   kx300_soak PLUGIN SECONDS --cycles N  one client, made, run and released N times
#include "mischief.h"
#include "resources.h"
#include "soakhost.h"

#include <QApplication>
#include <QPluginLoader>

#include <atomic>
#include <cstdio>

namespace {

constexpr int clients = 50;
constexpr int rounds = 5;
// After the first round, which fills caches.
constexpr int moreDescriptors = 2;
// For each line that of the device, the port's, and its traffic log's.
constexpr int mostOfLines = 3 * (SoakHost::ownLines + SoakHost::sharedLines);
constexpr int moreThreads = 2;
constexpr qint64 moreHeap = 1024; // KiB, and a fifth. What is resident is the allocator's, too.

std::atomic<qint64> lines { 0 }; // of the log
std::atomic<qint64> warnings { 0 };

void print(const char *what, int number, const Resources &held)
{
    std::printf(
        "%s %d: %d descriptors, %d of lines, %d threads, %lld KiB resident, %lld KiB of heap\n",
        what, number, held.descriptors, held.lines, held.threads, held.memory, held.heap);
    std::fflush(stdout);
}

bool hasGrown(const Resources &first, const Resources &last)
{
    return last.descriptors > first.descriptors + moreDescriptors || last.lines > mostOfLines
        || last.threads > first.threads + moreThreads || last.heap > first.heap * 6 / 5 + moreHeap;
}

bool soak(CollectThread &plugin, int seconds)
{
    SoakHost host(plugin, clients);
    Resources first {};
    Resources last {};
    for (int i = 1; i <= rounds; ++i) {
        host.round(qMax(1, seconds / rounds));
        last = currentResources();
        print("round", i, last);
        first = i == 1 ? last : first;
    }
    const SoakCounts &counts = host.counts();
    std::printf("reports %lld, lost %lld, restored %lld, commands %lld, releases %lld (slowest "
                "%lld ms), configurations %lld, views %lld\n",
                counts.reports.load(), counts.lost.load(), counts.restored.load(),
                counts.commands.load(), counts.releases, counts.slowestRelease,
                counts.configurations, counts.views);
    const Mischief &mischief = host.mischief();
    std::printf("slowest configuration %lld ms, exits of a second host %lld, %lld of them failed, "
                "spoilt files %lld, lines of the log %lld, warnings %lld\n",
                counts.slowestConfiguration, mischief.exits(), mischief.failedExits(),
                mischief.spoiltFiles(), lines.load(), warnings.load());
    return counts.reports > 0 && counts.restored > 0 && mischief.failedExits() == 0
        && !hasGrown(first, last);
}

bool cycle(CollectThread &plugin, int count)
{
    SoakHost host(plugin, 1);
    Resources first {};
    Resources last {};
    for (int i = 1; i <= count; ++i) {
        host.cycle();
        if (i % qMax(1, count / 10) != 0)
            continue;
        last = currentResources();
        print("cycle", i, last);
        first = first.threads ? first : last;
    }
    return !hasGrown(first, last);
}

} // namespace

int main(int argc, char *argv[])
{
    // The clients' debug lines would drown the report.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &text) {
        ++lines;
        warnings += type != QtDebugMsg;
        if (type == QtFatalMsg)
            std::fprintf(stderr, "%s\n", qPrintable(text));
    });
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 3) {
        std::fprintf(stderr, "usage: kx300_soak PLUGIN SECONDS [--cycles N]\n");
        return 2;
    }
    QPluginLoader loader(arguments.at(1));
    // The plug-in has a meta-object of its own for the class, so qobject_cast would refuse.
    auto *plugin = static_cast<CollectThread *>(loader.instance());
    if (!plugin || !plugin->inherits("CollectThread")) {
        std::fprintf(stderr, "kx300_soak: %s\n", qPrintable(loader.errorString()));
        return 2;
    }
    if (arguments.at(2) == QLatin1String("--exit"))
        runAndExit(*plugin, arguments.value(3).toInt());
    const int cycles = arguments.indexOf(QStringLiteral("--cycles")) + 1;
    const bool fine = cycles > 0 ? cycle(*plugin, arguments.value(cycles).toInt())
                                 : soak(*plugin, arguments.at(2).toInt());
    delete plugin;
    std::printf("soak: %s\n", fine ? "fine" : "FAILED");
    return fine ? 0 : 1;
}
