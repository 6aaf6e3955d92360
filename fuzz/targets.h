#pragma once

#include <QByteArray>

#include <cstdlib>

/** One way for bytes from outside to come in, and the function that takes them. */
struct FuzzTarget
{
    const char *name; ///< also the folder of its corpus
    void (*run)(const QByteArray &input);
};

// Each ends the process when something does not hold. They need a QApplication and may write to
// the working directory.
void fuzzSettings(const QByteArray &input);
void fuzzHistory(const QByteArray &input);
void fuzzTcpReply(const QByteArray &input);
void fuzzParameter(const QByteArray &input);
void fuzzCommand(const QByteArray &input);
void fuzzScenario(const QByteArray &input);
void fuzzDriverReply(const QByteArray &input);
void fuzzValues(const QByteArray &input);

constexpr FuzzTarget fuzzTargets[] = {
    { "settings", fuzzSettings },       { "history", fuzzHistory }, { "tcpreply", fuzzTcpReply },
    { "parameter", fuzzParameter },     { "command", fuzzCommand }, { "scenario", fuzzScenario },
    { "driverreply", fuzzDriverReply }, { "values", fuzzValues },
};

inline void require(bool holds)
{
    if (!holds)
        std::abort();
}
