#include "tavoclient.h"

#include "comm/portmanage.h"
#include "comm/serialport.h"
#include "deviceconfig.h"
#include "tavofont.h"
#include "upgrade.h"
#include "view/tavoview.h"

#include <QDebug>
#include <QEvent>
#include <QLoggingCategory>
#include <QProcess>

namespace {

// How long the host's event loop waits for a driver when a client is deleted.
constexpr std::chrono::milliseconds deletionPatience { 900 };

PortManage *portManager(void *handle)
{
    return handle ? static_cast<PortManage *>(handle) : PortManage::instance();
}

} // namespace

tavoClient::tavoClient(CollectThread *parent)
    : CollectThread(parent)
    , m_helper(new QProcess(this))
    , m_link(m_driver, tavoDataProce, &m_self)
{
    retries = 5;
    qRegisterMetaType<QList<int>>("QList<int>");
    qRegisterMetaType<CollectThread *>("CollectThread*");
    LoadDriver();
    // The plug-in's own instance goes at the end of the process, when it is too late to set up logging.
    QLoggingCategory::defaultCategory();
}

tavoClient::~tavoClient()
{
    requestStop();
    m_gate.waitIdle();
    wait();
    m_link.dropSocket();
    FreeDriver();
    delete m_view;
    qDebug() << "~tavoClient";
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
    client->requestStop();
    client->deleteLater();
}

bool tavoClient::event(QEvent *event)
{
    if (event->type() != QEvent::DeferredDelete)
        return CollectThread::event(event);
    requestStop();
    // A slot or a driver may run an event loop within poll(): the cycle below it needs the client.
    const bool isOwnCycle = m_gate.isInside();
    if (!isOwnCycle && m_gate.waitIdle(deletionPatience))
        return CollectThread::event(event);
    if (!isOwnCycle)
        qWarning() << "tavoClient" << settings().deviceName
                   << "is deleted later: its driver has not returned yet";
    m_gate.whenIdle([this] { deleteLater(); });
    return true;
}

// Ends the waits of a cycle and the event loop of run(); the driver has to return by itself.
void tavoClient::requestStop()
{
    m_stop.request();
    quit();
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
        m_view->setUpgradePlanner([this] { return planUpgrade(settings()); });
    }
    m_view->refreshLayout();
    m_view->refreshData();
    m_view->setName(settings().deviceName);
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
    const QString directory = configurationDirectory();
    qDebug() << "tavo" << directory;
    const CycleSettings before = settings();
    const DeviceConfig config = readDeviceConfig(directory + QLatin1String("/db"),
                                                 before.deviceName, getEventLogDesc().size());
    for (const QString &problem : config.problems)
        qWarning().noquote() << "loadConfig" << problem;
    const SerialPort *port = before.ports->getPortHandle(config.portName);
    const QString portSettings = port ? port->getPortSettings() : QString();
    {
        const QMutexLocker lock(&mutex);
        m_languageFlag = config.languageFlag;
        m_portName = config.portName;
        m_portSettings = portSettings;
        m_address = config.address;
        retries = config.retries;
        protocol = config.protocol;
        interval = config.interval;
        m_communicationType = config.communicationType;
        ipAddress = config.ipAddress;
        tcpPort = config.tcpPort;
        eventChoice = config.eventChoice;
    }
    setPort(config.portName, portSettings);
}

void tavoClient::setPort(QString portName, QString portSettings)
{
    {
        const QMutexLocker lock(&mutex);
        m_portName = portName;
        m_portSettings = portSettings;
    }
    reopenPort();
}

// The port that is configured now, which a cycle must neither miss nor overwrite: the host may
// change it at any moment.
void tavoClient::reopenPort()
{
    QString name;
    PortManage *ports = nullptr;
    {
        const QMutexLocker lock(&mutex);
        m_portReopened = 1;
        name = m_portName;
        ports = portManager(portHandle);
    }
    ports->ReOpen(name);
}

void tavoClient::setDevId(int address)
{
    const QMutexLocker lock(&mutex);
    m_address = address;
}

QString tavoClient::utfToChina(QString text)
{
    return QString::fromUtf8(text.toLatin1());
}

CycleSettings tavoClient::settings()
{
    const QMutexLocker lock(&mutex);
    CycleSettings current;
    current.deviceName = deviceName;
    current.protocol = protocol;
    current.retries = retries;
    current.ipAddress = ipAddress;
    current.tcpPort = tcpPort;
    current.manufacturer = manufacturer;
    current.portName = m_portName;
    current.portSettings = m_portSettings;
    current.address = m_address;
    current.communicationType = m_communicationType;
    current.ports = portManager(portHandle);
    return current;
}
