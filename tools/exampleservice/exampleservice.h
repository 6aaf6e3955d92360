#pragma once

#include "service.h"

#include <QFile>

/**
 * A stand-in for a background service of the host: its callbacks log, and misbehave on demand.
 *
 * What it shall do wrong is said by its own arguments, those after "--":
 * "fail" (the start fails), "crash" (ends with an error soon after the start), "deaf" (ignores
 * SIGTERM), "hang" (command 13 never returns), "stuck" (nor does the stop), "slow" (the start takes a second),
 * "log=FILE" (the callbacks append their names to that file as well).
 */
class ExampleService : public Service
{
public:
    ExampleService(int &argc, char **argv, const QString &name);

protected:
    bool start() override;
    void stop() override;
    bool pause() override;
    bool resume() override;
    bool processCommand(int command) override;

private:
    bool isAskedTo(const char *misbehave) const;
    void log(const QString &text);
};
