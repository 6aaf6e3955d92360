#include "rows.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QTemporaryDir>

#include <cstdio>

namespace {

struct Bench
{
    const char *name;
    void (*run)(Runner &);
};

constexpr Bench benches[] = {
    { "rtu", benchRtuExchange },       { "short-read", benchShortRead },
    { "tcp", benchTcpExchange },       { "crc", benchCrc },
    { "cycle", benchPollCycle },       { "clients", benchManyClients },
    { "history", benchHistoryExport }, { "view", benchView },
    { "hidden", benchHiddenView },     { "shown", benchShownView },
};

// The traffic of debug lines is the same for all contenders; a terminal must not be measured.
void dropDebug(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type == QtFatalMsg)
        std::fprintf(stderr, "%s\n", qPrintable(text));
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Measures the plug-in beside its peers."));
    parser.addHelpOption();
    const QCommandLineOption json(QStringLiteral("json"),
                                  QStringLiteral("Write the results to FILE."),
                                  QStringLiteral("FILE"));
    parser.addOption(json);
    parser.addPositionalArgument(QStringLiteral("bench"), QStringLiteral("Only these benches."),
                                 QStringLiteral("[bench...]"));
    parser.process(application);

    const QString jsonFile =
        parser.isSet(json) ? QDir::current().absoluteFilePath(parser.value(json)) : QString();
    const QTemporaryDir folder; // log and history files go to the working directory
    QDir::setCurrent(folder.path());
    qInstallMessageHandler(dropDebug);

    Runner runner;
    const QStringList chosen = parser.positionalArguments();
    for (const Bench &bench : benches) {
        if (chosen.isEmpty() || chosen.contains(QLatin1String(bench.name)))
            bench.run(runner);
    }
    return runner.report(jsonFile) ? 0 : 1;
}
