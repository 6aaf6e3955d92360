#pragma once

#include "devicespec.h"
#include "hostevent.h"
#include "pollthread.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>

#include <memory>

class CollectThread;
class CollectView;

/**
 * One device of the host: the client that the plug-in made for it, and what the host knows of it.
 *
 * Threads:   main thread; the client's events arrive queued.
 * Ownership: owns the client from create() to release(). The plug-in's object is not owned.
 */
class HostDevice : public QObject
{
    Q_OBJECT

public:
    HostDevice(const DeviceSpec &spec, CollectThread &factory);
    ~HostDevice() override;

    /** Has the plug-in make the client and read its configuration, which must be written.
     *  @return false when the plug-in made none */
    bool create();

    /** Begins to give the client back; the destructor waits for it. Once; the device is of no use
     *  afterwards. */
    void release();

    enum class Drive { Thread, Poll };
    void start(Drive drive);

    const DeviceSpec &spec() const { return m_spec; }
    QString name() const { return m_spec.name; }
    int state() const { return m_state; } ///< -1 unknown, 0 communicating, 1 lost
    bool wasOnline() const { return m_wasOnline; }

    /** The latest report that came while the device communicated; empty before the first. */
    const DataMap &data() const { return m_data; }
    QDateTime dataTime() const { return m_dataTime; }
    /** Milliseconds since that report, independent of the clock; -1 before the first. */
    qint64 dataAge() const { return m_dataAge.isValid() ? m_dataAge.elapsed() : -1; }

    bool control(int id, const QString &value);
    QStringList eventTexts() const { return m_eventTexts; }
    QStringList dataTitles() const { return m_dataTitles; }
    QStringList dataRow(const DataMap &data);

    /** The client's view, made at the first call; null without one. Needs a QApplication. */
    CollectView *view();

    /** A copy of the map that the client keeps for the host. */
    EventMap information() const;

signals:
    void posted(const HostEvent &event);
    /** The client that was released is deleted. */
    void gone();

private slots:
    void take(int type, QMap<QString, QVariant> map);

private:
    void follow(const HostEvent &event);

    DeviceSpec m_spec;
    CollectThread &m_factory;
    QPointer<CollectThread> m_client;
    std::unique_ptr<PollThread> m_poller;
    QStringList m_eventTexts;
    QStringList m_dataTitles;
    DataMap m_data;
    QDateTime m_dataTime;
    QElapsedTimer m_dataAge;
    int m_state = -1;
    bool m_wasOnline = false;
    bool m_released = false;
};
