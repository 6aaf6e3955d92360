#pragma once

#include "activitygate.h"
#include "clientdeletion.h"
#include "clientsettings.h"
#include "collectthread.h"
#include "cyclehost.h"
#include "link/driverbinding.h"
#include "pollcycle.h"
#include "stopsource.h"
#include "upgradedevice.h"

#include <QPointer>

class QProcess;
class tavoView;

/** Takes one decoded value from the driver.
 *  @param context  address of a pointer to the client, as given to the driver's "Query" */
extern "C" Q_DECL_EXPORT void tavoDataProce(int id, float value, void *context);

/**
 * The acquisition client of one UPS: polls it through the protocol driver and reports to the host.
 *
 * The names that the host binds to, over a PollCycle, which does what they promise.
 *
 * Threads:   a cycle runs in run()'s thread, or in the thread that calls poll(); one at a time.
 *            The other operations say theirs.
 * Ownership: owns driver library, socket, view and command queue; borrows the port manager.
 * Errors:    nothing throws; without a driver every query fails, which the host sees as "lost".
 *            Deleting a client that polls ends its waits at once and takes as long as the driver
 *            call that is under way.
 */
class tavoClient : public CollectThread, private CycleHost, private UpgradeDevice
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.orva.Qt.ProInterface")

public:
    explicit tavoClient(CollectThread *parent = nullptr);
    ~tavoClient() override;

    // Texts of tavoFont; any thread.
    QStringList getDataLogDesc() override;
    QStringList changeLogData(QMap<int, QVariant> data) override;
    QStringList getEventLogDesc() override;

    /** The device's view, made by the first call and refreshed by each. GUI thread.
     *  Ownership: the client's. */
    CollectView *getView() override;

    /** Reads "param.ini" and "dev.ini" and opens the device's port. Host's thread.
     *  Errors: missing files and keys read as defaults; what is wrong in a file is logged. */
    void loadConfig() override;

    /** Makes a client with `handle`, a `PortManage *`, as its port manager; null stands for the
     *  process's own. Host's thread. Ownership: the caller's. */
    CollectThread *create(void *handle) override;

    using CollectThread::release;
    /** Stops `client` and has it deleted by its thread's event loop; any thread. A client whose
     *  driver does not return within a second is deleted once it has. Null is passed over. */
    void release(tavoClient *client);

    /** Runs one cycle when the interval (s) has passed or a command waits, else returns at once;
     *  so it does while another thread polls. The host's thread; blocks for the whole cycle. */
    void poll() override;

    /** Names the port and its settings text and has the port manager open it anew. Any thread;
     *  counts from the next call of the driver. */
    void setPort(QString portName, QString settings);

    /** Sets the device's Modbus unit. Any thread; counts from the next call of the driver. */
    void setDevId(int unit);

    /** Repairs a text whose UTF-8 bytes were read as Latin-1. Any thread. */
    QString utfToChina(QString text);

    /** Loads the driver, and unloads it, while nobody polls.
     *  @return false when there is no driver to load */
    bool LoadDriver();
    bool FreeDriver();

    /** Stores the latest value of a data identifier. Polling thread. */
    void parseData(int id, float value);
    /** Tells the host of changed flags and of all data. Polling thread; ends a cycle. */
    void reportData();
    /** Carries out queued commands, at most 201 of them. Polling thread; blocks.
     *  @return 1 */
    int check_set_command();
    /** Translates the words of an exported history. Polling thread. */
    void initHistoryInfo();
    /** Turns "./history.txt" into comma-separated text at `path` and empties it.
     *  Polling thread; see exportHistory(). */
    void exportHistoryInfo(QString path);

public slots:
    /** Queues a command for the next cycle; any number is taken. Any thread.
     *  @return 1 */
    int control(int id, QString value) override;

protected:
    /** The polling thread: a cycle every 100 ms, or back to back when cycles take longer. */
    void run() override;

    /** Puts a deletion off that would have to wait for the driver. */
    bool event(QEvent *event) override;

private slots:
    /** One cycle. Polling thread. */
    void threadTimer();

private:
    // CycleHost
    DeviceSettings settings() override;
    void post(int type, const QVariantMap &map) override;
    void reopenPort() override;
    void publish(LatestValues &values, const DeviceEntries &entries) override;
    void eventBegan(int event, const EventOnset &onset) override;
    void eventEnded(int event) override;
    void linkChanged(int state, const QDateTime &time) override;
    void commandAnswered(const CommandAnswer &answer) override;
    void historyExported(const HistoryOutcome &outcome) override;

    // UpgradeDevice
    QString location() override;
    std::unique_ptr<DeviceHold> hold() override;

    void giveEventLoop();
    void pollIfDue();

    ClientSettings m_settings;
    qint64 m_lastPollTime = 0; // s since the epoch; polling thread
    tavoClient *m_self = this; // what the driver's context points to
    ClientNews m_news;
    QPointer<tavoView> m_view; // GUI thread
    QProcess *m_helper;        // a child
    StopSource m_stop;
    ActivityGate m_gate; // entered by the thread that polls
    ClientDeletion m_deletion;
    DriverBinding m_driver;
    PollCycle m_cycle; // polling thread
};
