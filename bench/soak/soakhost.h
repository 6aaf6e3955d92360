#pragma once

#include "collectthread.h"
#include "devices.h"
#include "mischief.h"

#include <QMap>
#include <QVariant>

#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

/** What happened in all, for the report. */
struct SoakCounts
{
    std::atomic<qint64> reports { 0 };
    std::atomic<qint64> lost { 0 };
    std::atomic<qint64> restored { 0 };
    std::atomic<qint64> commands { 0 };
    qint64 releases = 0;
    qint64 configurations = 0;
    qint64 views = 0;
    qint64 slowestRelease = 0;       ///< how long the host waited, ms
    qint64 slowestConfiguration = 0; ///< the same
};

/**
 * A host that does everything that hosts do, at random: makes clients, starts or polls them, sends
 * commands from several threads, configures them anew, opens and closes views, releases them.
 *
 * Threads: GUI thread; commands and polls come from threads of its own.
 */
class SoakHost : public QObject
{
    Q_OBJECT

public:
    SoakHost(CollectThread &plugin, int clients);
    ~SoakHost() override;

    /** Runs all clients for so many seconds and gives them back. */
    void round(int seconds);

    /** Makes, runs and releases one client, which has delivered data then. */
    void cycle();

    static constexpr int ownLines = 20;
    static constexpr int sharedLines = 5;

    const SoakCounts &counts() const { return m_counts; }
    const Mischief &mischief() const { return m_mischief; }

private:
    struct Slot
    {
        std::mutex mutex;                // held while another thread uses the client
        CollectThread *client = nullptr; // guarded by mutex
        std::mutex reportMutex;
        QMap<int, QVariant> report; // guarded by reportMutex
        bool hasView = false;       // GUI thread
        bool polled = false;
    };

    void fill(int index);
    void takeEvent(Slot &slot, int type, const QMap<QString, QVariant> &map);
    void writeConfiguration(int index);
    void configureAnew(int index);
    QStringList filesToSpoil() const;
    bool release(int index);
    void releaseAll();
    void act();
    void toggleView(Slot &slot);
    void sendCommands(unsigned seed);
    void pollClients();

    CollectThread &m_plugin;
    Devices m_devices;
    Mischief m_mischief { filesToSpoil() };
    std::vector<Slot> m_slots;
    SoakCounts m_counts;
    std::mt19937 m_random { 2 }; // GUI thread
    int m_leaving = 0;           // released, but not deleted yet; GUI thread
    std::atomic<bool> m_stop { false };
};
