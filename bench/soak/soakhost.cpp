#include "soakhost.h"

#include "collectview.h"
#include "hostvocabulary.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QSettings>
#include <QTimer>

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr int tcpEvery = 5;   // every fifth client is on TCP...
constexpr int pollEvery = 4;  // ...and every fourth is polled by the host's thread
constexpr int commanders = 3; // threads that send commands

// What a host sends; an upgrade closes the port.
constexpr HostContract::Command commandIds[] = {
    HostContract::ClearFaultCommand,   HostContract::SelfTestCommand,
    HostContract::CancelTaskCommand,   HostContract::BuzzerOnCommand,
    HostContract::BuzzerOffCommand,    HostContract::SetTimeCommand,
    HostContract::UpgradeCommand,      HostContract::DownloadHistoryCommand,
    HostContract::SetParameterCommand,
};

QString configurationFolder()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/KOVA/TesselView/db");
}

void process(std::chrono::milliseconds time)
{
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace

SoakHost::SoakHost(CollectThread &plugin, int clients)
    : m_plugin(plugin)
    , m_devices(ownLines + sharedLines)
    , m_slots(size_t(clients))
{
}

SoakHost::~SoakHost()
{
    releaseAll();
}

void SoakHost::round(int seconds)
{
    for (int i = 0; i < int(m_slots.size()); ++i)
        fill(i);
    m_stop = false;
    m_mischief.start();
    std::vector<std::thread> threads;
    for (unsigned i = 0; i < commanders; ++i)
        threads.emplace_back([this, i] { sendCommands(i); });
    threads.emplace_back([this] { pollClients(); });
    QElapsedTimer clock;
    for (clock.start(); clock.elapsed() < seconds * 1000LL;) {
        act();
        process(5ms);
    }
    m_stop = true;
    m_mischief.stop();
    for (std::thread &thread : threads)
        thread.join();
    releaseAll();
}

void SoakHost::cycle()
{
    fill(0);
    const qint64 before = m_counts.reports;
    while (m_counts.reports == before)
        process(1ms);
    releaseAll();
}

void SoakHost::fill(int index)
{
    Slot &slot = m_slots[size_t(index)];
    CollectThread *client = m_plugin.create(nullptr);
    client->deviceName = QStringLiteral("ups%1").arg(index);
    connect(
        client, &CollectThread::postDEvent, this,
        [this, &slot](int type, const QMap<QString, QVariant> &map) { takeEvent(slot, type, map); },
        Qt::DirectConnection);
    writeConfiguration(index);
    client->loadConfig();
    slot.polled = m_slots.size() > 1 && index % pollEvery == 0;
    slot.hasView = false;
    if (!slot.polled)
        client->start();
    const std::lock_guard<std::mutex> lock(slot.mutex);
    slot.client = client;
}

// In the thread that polls. The report is copied value by value: ThreadSanitizer cannot see how
// Qt guards data that threads share.
void SoakHost::takeEvent(Slot &slot, int type, const QMap<QString, QVariant> &map)
{
    m_counts.lost += type == HostContract::LinkLostEvent;
    m_counts.restored += type == HostContract::LinkRestoredEvent;
    if (type != HostContract::DataReportEvent)
        return;
    const auto data = map.value(HostContract::Key::data()).value<QMap<int, QVariant>>();
    QMap<int, QVariant> report;
    for (auto it = data.begin(); it != data.end(); ++it)
        report.insert(report.end(), it.key(), it->toFloat());
    ++m_counts.reports;
    const std::lock_guard<std::mutex> lock(slot.reportMutex);
    slot.report = report;
}

// Half of the clients have a line of their own, the others share some; some are on TCP.
void SoakHost::writeConfiguration(int index)
{
    const QString directory = configurationFolder();
    QDir().mkpath(directory);
    const int line = index < ownLines ? index : ownLines + int(m_random() % sharedLines);
    QSettings file(directory + QStringLiteral("/dev.ini"), QSettings::IniFormat);
    file.beginGroup(QStringLiteral("ups%1").arg(index));
    file.setValue(QStringLiteral("portName"), m_devices.line(line));
    file.setValue(QStringLiteral("addr"), 1 + int(m_random() % 9));
    file.setValue(QStringLiteral("retries"), 1 + int(m_random() % 5));
    file.setValue(QStringLiteral("interval"), 1);
    file.setValue(QStringLiteral("commType"), index % tcpEvery == 1 ? 1 : 0);
    file.setValue(QStringLiteral("ipAddr"), QStringLiteral("127.0.0.1"));
    file.setValue(QStringLiteral("port"), m_devices.port());
}

// False when another thread uses the client at the moment.
bool SoakHost::release(int index)
{
    Slot &slot = m_slots[size_t(index)];
    const std::unique_lock<std::mutex> lock(slot.mutex, std::try_to_lock);
    if (!lock)
        return false;
    if (!slot.client)
        return true;
    ++m_leaving;
    ++m_counts.releases;
    connect(slot.client, &QObject::destroyed, this, [this] { --m_leaving; });
    CollectThread *const client = std::exchange(slot.client, nullptr);
    client->deleteLater();
    QElapsedTimer clock;
    clock.start();
    QCoreApplication::sendPostedEvents(client, QEvent::DeferredDelete);
    m_counts.slowestRelease = qMax(m_counts.slowestRelease, clock.elapsed());
    return true;
}

void SoakHost::releaseAll()
{
    for (int i = 0; i < int(m_slots.size()); ++i) {
        while (!release(i))
            process(1ms);
    }
    while (m_leaving > 0)
        process(1ms);
}

void SoakHost::act()
{
    const int index = int(m_random() % m_slots.size());
    Slot &slot = m_slots[size_t(index)];
    switch (m_random() % 20) {
    case 0:
        if (release(index))
            fill(index);
        break;
    case 1:
        configureAnew(index);
        break;
    case 2:
    case 3:
        toggleView(slot);
        break;
    case 4:
        m_mischief.spoilAFile();
        break;
    default:
        slot.client->flushUpsInfo(QStringLiteral("host"), index);
        if (slot.hasView) {
            CollectView *view = slot.client->getView();
            const std::lock_guard<std::mutex> lock(slot.reportMutex);
            view->flushData(slot.report);
        }
        break;
    }
}

void SoakHost::configureAnew(int index)
{
    ++m_counts.configurations;
    writeConfiguration(index);
    QElapsedTimer clock;
    clock.start();
    m_slots[size_t(index)].client->loadConfig();
    m_counts.slowestConfiguration = qMax(m_counts.slowestConfiguration, clock.elapsed());
}

QStringList SoakHost::filesToSpoil() const
{
    QStringList files { QStringLiteral("serial.ini"), QStringLiteral("history.txt"),
                        configurationFolder() + QStringLiteral("/param.ini") };
    for (int line = 0; line < ownLines + sharedLines; line += 5)
        files += QStringLiteral("log_%1.log").arg(m_devices.line(line).section('/', -1));
    return files;
}

void SoakHost::toggleView(Slot &slot)
{
    ++m_counts.views;
    slot.hasView = true;
    CollectView *view = slot.client->getView();
    view->setUserInfo(QStringLiteral("admin"), int(m_random() % 3));
    if (view->isVisible())
        view->close();
    else
        view->show();
}

void SoakHost::sendCommands(unsigned seed)
{
    std::mt19937 random(seed);
    while (!m_stop) {
        Slot &slot = m_slots[random() % m_slots.size()];
        const int id = commandIds[random() % std::size(commandIds)];
        {
            const std::lock_guard<std::mutex> lock(slot.mutex);
            if (slot.client && slot.client->control(id, QStringLiteral("3005,18")) == 1)
                ++m_counts.commands;
        }
        std::this_thread::sleep_for(20ms);
    }
}

void SoakHost::pollClients()
{
    while (!m_stop) {
        for (Slot &slot : m_slots) {
            const std::lock_guard<std::mutex> lock(slot.mutex);
            if (slot.client && slot.polled && !m_stop)
                slot.client->poll();
        }
        std::this_thread::sleep_for(20ms);
    }
}
