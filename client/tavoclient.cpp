#include "tavoclient.h"

#include "atend.h"
#include "deviceconfig.h"
#include "hostfile.h"
#include "hostvocabulary.h"
#include "link/linehold.h"
#include "portmanage.h"
#include "serial/serialport.h"
#include "sharedvalue.h"
#include "tavofont.h"
#include "tavoview.h"
#include "threadloop.h"

#include <QDateTime>
#include <QDebug>
#include <QEvent>
#include <QProcess>
#include <QTimer>

using namespace HostContract;

void tavoDataProce(int id, float value, void *context)
{
    (*static_cast<tavoClient **>(context))->parseData(id, value);
}

tavoClient::tavoClient(CollectThread *parent)
    : CollectThread(parent)
    , m_settings(*this)
    , m_helper(new QProcess(this))
    , m_deletion(*this, m_stop, m_gate)
    , m_driver(deviceFamily().driverLibrary)
    , m_cycle(deviceFamily(), *this, { communicationState, failCount, reportedStates }, m_stop,
              m_driver, tavoDataProce, &m_self)
{
    giveEventLoop();
    connect(this, &QThread::finished, this, &tavoClient::giveEventLoop);
    retries = 5;
    qRegisterMetaType<QList<int>>("QList<int>");
    qRegisterMetaType<CollectThread *>("CollectThread*");
    LoadDriver();
}

tavoClient::~tavoClient()
{
    m_deletion.requestStop();
    m_gate.waitIdle();
    wait();
    m_cycle.dropConnection();
    FreeDriver();
    delete m_view;
    delete eventDispatcher(); // for a start that does not come
    qDebug() << "~tavoClient";
}

// For the next start. Not while the thread runs, and not before Qt has done with the last one.
void tavoClient::giveEventLoop()
{
    if (isRunning())
        return;
    wait();
    if (!eventDispatcher())
        setEventDispatcher(new ThreadLoop);
}

CollectThread *tavoClient::create(void *handle)
{
    auto *client = new tavoClient;
    client->setPortHandle(handle);
    return client;
}

void tavoClient::release(tavoClient *client)
{
    if (!client)
        return;
    client->m_deletion.requestStop();
    client->deleteLater();
}

bool tavoClient::event(QEvent *event)
{
    if (event->type() != QEvent::DeferredDelete)
        return CollectThread::event(event);
    m_deletion.endOrPutOff();
    return true;
}

bool tavoClient::LoadDriver()
{
    return m_driver.load();
}

bool tavoClient::FreeDriver()
{
    m_driver.unload();
    return true;
}

CollectView *tavoClient::getView()
{
    if (!m_view) {
        m_view = new tavoView;
        connect(m_view, SIGNAL(postDEvent(int, QMap<QString, QVariant>)), this,
                SIGNAL(postDEvent(int, QMap<QString, QVariant>)));
        m_view->follow(m_news);
        m_view->setUpgradeDevice(this);
    }
    m_view->refreshLayout();
    m_view->refreshData();
    m_view->setName(deviceName);
    return m_view;
}

QStringList tavoClient::getDataLogDesc()
{
    return tavoFont::instance()->getDataLogDesc();
}

QStringList tavoClient::changeLogData(QMap<int, QVariant> data)
{
    return tavoFont::instance()->changeLogData(data);
}

QStringList tavoClient::getEventLogDesc()
{
    return tavoFont::instance()->getEventLogDesc();
}

void tavoClient::loadConfig()
{
    const QString directory = hostDirectory();
    qDebug() << "tavo" << directory;
    DeviceConfig config =
        readDeviceConfig(directory + QLatin1String("/db"), deviceName, getEventLogDesc().size());
    for (const QString &problem : qAsConst(config.problems))
        qWarning().noquote() << "loadConfig" << problem;
    if (config.settings.communicationType == tcpCommunication)
        qDebug().noquote() << "loadConfig" << deviceName << "is polled over TCP at"
                           << peerText(config.settings) << "- port" << config.settings.portName
                           << "is opened, but not used";
    const SerialPort *port = settings().ports->getPortHandle(config.settings.portName);
    config.settings.portSettings = port ? port->getPortSettings() : QString();
    m_settings.replace(config.settings);
    setPort(config.settings.portName, config.settings.portSettings);
}

void tavoClient::setPort(QString portName, QString portSettings)
{
    m_settings.setPort(portName, portSettings);
    reopenPort();
}

// The port that is configured now, which a cycle must neither miss nor overwrite: the host may
// change it at any moment.
void tavoClient::reopenPort()
{
    settings().ports->ReOpen(m_settings.portToReopen());
}

void tavoClient::setDevId(int unit)
{
    m_settings.setUnit(unit);
}

QString tavoClient::utfToChina(QString text)
{
    return QString::fromUtf8(text.toLatin1());
}

DeviceSettings tavoClient::settings()
{
    return m_settings.current();
}

void tavoClient::run()
{
    const ActivityGate::Pass pass = m_gate.enter();
    const AtEnd drop([this] { m_cycle.dropConnection(); });
    m_settings.raiseInterval();
    QTimer timer;
    timer.setInterval(100);
    connect(&timer, SIGNAL(timeout()), this, SLOT(threadTimer()), Qt::DirectConnection);
    QTimer::singleShot(0, &timer, SLOT(start()));
    timer.start();
    exec();
}

void tavoClient::poll()
{
    if (const ActivityGate::Pass pass = m_gate.tryEnter())
        pollIfDue();
}

void tavoClient::pollIfDue()
{
    const qint64 now = QDateTime::currentSecsSinceEpoch();
    // A clock that was set back must not hold up the next cycle.
    const bool isEarly = now < nextPollTime && now >= m_lastPollTime;
    if (m_stop.requested()
        || (isEarly && !m_cycle.commands().hasCommands() && !m_cycle.hasToTurn()))
        return;
    setShared(workState, 1);
    const AtEnd idle([this] { setShared(workState, 0); });
    nextPollTime = now + settings().interval;
    m_lastPollTime = now;
    threadTimer();
}

void tavoClient::threadTimer()
{
    m_cycle.run();
}

QString tavoClient::location()
{
    return deviceLocation(settings());
}

std::unique_ptr<DeviceHold> tavoClient::hold()
{
    const DeviceSettings current = settings();
    auto hold = std::make_unique<LineHold>(deviceLocation(current));
    if (current.communicationType == 0)
        current.ports->Close(current.portName); // sockets are closed by the threads that poll
    return hold;
}

void tavoClient::post(int type, const QVariantMap &map)
{
    emit postDEvent(type, map);
}

void tavoClient::publish(LatestValues &values, const DeviceEntries &entries)
{
    const QMutexLocker lock(&mutex);
    values.writeTo(deviceInformation); // as flushData() does
    deviceInformation.insert(Key::manufacturer(), manufacturer);
    for (const auto &entry : entries)
        deviceInformation.insert(entry.first, entry.second);
}

void tavoClient::eventBegan(int event, const EventOnset &onset)
{
    m_news.eventBegan(event, onset);
}

void tavoClient::eventEnded(int event)
{
    m_news.eventEnded(event);
}

void tavoClient::linkChanged(int state, const QDateTime &time)
{
    m_news.setLink({ state, time });
}

void tavoClient::commandAnswered(const CommandAnswer &answer)
{
    m_news.tell(answer);
}

void tavoClient::historyExported(const HistoryOutcome &outcome)
{
    m_news.tell(outcome);
}

void tavoClient::parseData(int id, float value)
{
    m_cycle.store(id, value);
}

void tavoClient::reportData()
{
    m_cycle.report();
}

int tavoClient::control(int id, QString value)
{
    commandAnswered({ id, value, CommandAnswer::Kind::Taken }); // ahead of what becomes of it
    m_cycle.commands().append({ id, value });
    return 1;
}

int tavoClient::check_set_command()
{
    m_cycle.commands().drain();
    return 1;
}

void tavoClient::initHistoryInfo()
{
    m_cycle.commands().translateHistory();
}

void tavoClient::exportHistoryInfo(QString path)
{
    m_cycle.commands().exportHistoryTo(path);
}
