#pragma once

#include <QObject>

/**
 * Turns SIGINT, SIGTERM and SIGHUP into a Qt signal, by way of a pipe that the handler writes to.
 *
 * The first one asks for a clean end and puts the default action back, so that a second one ends
 * the process at once; once the object has gone they are ignored. Also ignores SIGPIPE and
 * SIGTTIN: they come back as errors of the call.
 *
 * Threads: main thread; one object in the process.
 */
class SignalWatch : public QObject
{
    Q_OBJECT

public:
    explicit SignalWatch(QObject *parent = nullptr);
    ~SignalWatch() override;

signals:
    void caught();
};
