#pragma once

#include <QMap>
#include <QMutex>
#include <QMutexLocker>
#include <QString>
#include <QStringList>
#include <QThread>
#include <QVariant>

class CollectView;

/**
 * The host's acquisition client: one per monitored device, running as its own thread.
 *
 * Shared word for word by the host and its plug-ins, so that both agree on the object's layout.
 * The order of the virtual functions, of the meta-object's methods and of the members is contract.
 *
 * Threads:   the host calls from its own threads while the client's cycle runs in run()'s thread,
 *            or in the host's thread that calls poll(). Members say who writes them and when;
 *            those marked "atomic" are read at any time, in any thread, by atomic loads.
 * Ownership: the host owns the client and ends it with deleteLater().
 * Errors:    never throws; the defaults answer with nothing, null or 0.
 */
class CollectThread : public QThread
{
    Q_OBJECT

public:
    explicit CollectThread(QObject *parent = nullptr)
        : QThread(parent)
    {
    }

    /** Sets one entry of the device information map; any thread. */
    void flushUpsInfo(QString key, QVariant value)
    {
        const QMutexLocker lock(&mutex);
        deviceInformation.insert(key, value);
    }

    /** Sets one entry per data identifier, its key the identifier in decimal; any thread.
     *  Entries whose identifier is absent from `data` stay. */
    void flushData(QMap<int, QVariant> data)
    {
        const QMutexLocker lock(&mutex);
        for (auto it = data.constBegin(); it != data.constEnd(); ++it)
            deviceInformation.insert(QString::number(it.key(), 10), it.value());
    }

signals:
    /** An event for the host; emitted in the client's polling thread, the view's in the GUI thread.
     *  @param type  event number of the host contract (1040, 1041, 2001, 2006, 2007, ...) */
    void postDEvent(int type, QMap<QString, QVariant> map);

public slots:
    /** Queues a control command; returns 1 when it was taken. Any thread. */
    virtual int control(int id, QString value)
    {
        Q_UNUSED(id)
        Q_UNUSED(value)
        return 0;
    }

    /** The column titles of the data log. Any thread. */
    virtual QStringList getDataLogDesc() { return {}; }

    /** One row of the data log, a text for each of getDataLogDesc(). Any thread. */
    virtual QStringList changeLogData(QMap<int, QVariant> data)
    {
        Q_UNUSED(data)
        return {};
    }

    /** The event texts: first all "appear" texts, then all "disappear" texts. Any thread. */
    virtual QStringList getEventLogDesc() { return {}; }

    /** The device's view, owned by the client; null when there is none. GUI thread. */
    virtual CollectView *getView() { return nullptr; }

    /** Reads the device's configuration files. Host's thread. */
    virtual void loadConfig() { }

    /** Makes a new client with `handle` as its port manager; the caller owns it. */
    virtual CollectThread *create(void *handle)
    {
        Q_UNUSED(handle)
        return nullptr;
    }

    /** Does nothing, here and in plug-ins that do not override it: a client ends by deleteLater(). */
    virtual void release(CollectThread *) { }

    /** Sets the port manager, a `PortManage *`; null means the process's own instance. */
    virtual void setPortHandle(void *handle)
    {
        __atomic_store_n(&portHandle, handle, __ATOMIC_RELEASE);
    }

    /** Sets one entry of the device information map. The spelling is bound by name. */
    void flushUpsInfoSLot(QString key, QVariant value) { flushUpsInfo(key, value); }

    /** Runs one cycle when it is due; for hosts that drive the clients themselves. */
    virtual void poll() { }

    /** 1 while poll() runs a cycle, 0 otherwise. Any thread. */
    virtual int getWorkState() { return __atomic_load_n(&workState, __ATOMIC_ACQUIRE); }

public:
    QString deviceName;          ///< set by the host before loadConfig()
    int protocol = 0;            ///< protocol number, set by loadConfig()
    int interval = 0;            ///< polling interval in s, set by loadConfig() and run(); atomic
    int retries = 0;             ///< failed queries until "lost", set by loadConfig()
    int failCount = 0;           ///< failed queries since the link came up; polling thread only
    QString ipAddress;           ///< TCP peer, set by loadConfig()
    int tcpPort = 0;             ///< TCP peer's port, 16 bits used, set by loadConfig()
    int hostValue1 = 0;          ///< the host's own
    int hostValue2 = 0;          ///< the host's own
    int hostValue3 = 1;          ///< the host's own
    int hostValue4 = 1;          ///< the host's own
    QString manufacturer;        ///< set by the host, sent back as "IdentManufacturer"; mutex
    QString hostText1;           ///< the host's own
    QString hostText2;           ///< the host's own
    QString hostText3;           ///< the host's own
    QString hostText4;           ///< the host's own
    QString hostText5;           ///< the host's own
    int communicationState = -1; ///< -1 unknown, 0 communicating, 1 lost; set by the cycle; atomic
    QMap<int, int> eventChoice;  ///< event index -> record it (0 or 1), set by loadConfig()
    QMap<int, int> reportedStates;             ///< last reported event flags; polling thread only
    QMap<QString, QVariant> hostMap;           ///< the host's own
    QMap<QString, QVariant> deviceInformation; ///< set by flushUpsInfo() and flushData(); mutex
    void *portHandle = nullptr; ///< port manager, set by create() and setPortHandle(); atomic
    int hostValue5 = 0;         ///< the host's own
    QString deviceText;         ///< the host's own
    int workState = 0;          ///< set by poll(); atomic
    qint64 nextPollTime = 0;    ///< s since the epoch, set by poll(); the thread that polls only
    QMutex mutex;               ///< guards the device information, and what is read with it
};
