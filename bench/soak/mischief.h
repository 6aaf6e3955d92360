#pragma once

#include <QProcess>
#include <QStringList>

#include <random>

/**
 * What happens around a host: files of other kinds in the place of its own, settings that are none,
 * logs of gigabytes, and a second host that calls exit() with its clients at work, again and again.
 *
 * Threads: GUI thread.
 */
class Mischief : public QObject
{
    Q_OBJECT

public:
    /** @param files  to spoil; their folders are there */
    explicit Mischief(const QStringList &files);
    ~Mischief() override;

    /** Has hosts exit until stop(), which waits for the last one. */
    void start();
    void stop();

    /** Spoils one of the files, or removes what it did to it. */
    void spoilAFile();

    qint64 exits() const { return m_exits; }
    qint64 failedExits() const { return m_failedExits; }
    qint64 spoiltFiles() const { return m_spoiltFiles; }

private:
    void startHost();
    void takeExit();

    const QStringList m_files;
    QProcess m_host;
    bool m_isStopping = true;
    qint64 m_exits = 0;
    qint64 m_failedExits = 0;
    qint64 m_spoiltFiles = 0;
    std::mt19937 m_random { 3 };
};

class CollectThread;

/** The second host: runs clients and ends its process after so many milliseconds. */
[[noreturn]] void runAndExit(CollectThread &plugin, int milliseconds);
