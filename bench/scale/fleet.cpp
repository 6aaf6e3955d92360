#include "fleet.h"

#include "hostvocabulary.h"
#include "standstill.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QTextStream>

using namespace std::chrono_literals;

namespace {

constexpr auto patience = 60s;

QString nameOf(int index)
{
    return QStringLiteral("ups%1").arg(index);
}

void writeConfiguration(int count, quint16 port)
{
    const QString folder = QCoreApplication::applicationDirPath() + "/KOVA/TesselView/db";
    QDir().mkpath(folder);
    QFile file(folder + "/dev.ini");
    if (!file.open(QIODevice::WriteOnly))
        qFatal("bench: %s", qPrintable(file.errorString()));
    QTextStream text(&file);
    for (int i = 0; i < count; ++i)
        text << '[' << nameOf(i) << "]\naddr=1\ncommType=1\nipAddr=127.0.0.1\nport=" << port
             << '\n';
}

} // namespace

Fleet::Fleet(CollectThread &plugin, int count, quint16 port)
    : m_kept(std::size_t(count))
    , m_alive(count)
{
    writeConfiguration(count, port);
    for (int i = 0; i < count; ++i) {
        CollectThread *client = plugin.create(nullptr);
        client->deviceName = nameOf(i);
        client->loadConfig();
        connect(client, &CollectThread::postDEvent, this,
                [this, i](int type, const QMap<QString, QVariant> &map) {
                    if (type == HostContract::DataReportEvent)
                        take(std::size_t(i), map);
                });
        connect(client, &QObject::destroyed, this, [this] { --m_alive; });
        m_clients.push_back(client);
        client->start();
    }
}

Fleet::~Fleet()
{
    releaseAll();
}

void Fleet::take(std::size_t index, const QMap<QString, QVariant> &map)
{
    const auto report = map.value(HostContract::Key::data()).value<QMap<int, QVariant>>();
    if (report.isEmpty()) // nothing has answered yet
        return;
    m_reported += m_kept[index].isEmpty();
    m_kept[index] = report;
    ++m_reports;
}

bool Fleet::waitForAll()
{
    const QDeadlineTimer deadline(patience);
    while (m_reported < size() && !deadline.hasExpired())
        process(20ms);
    return m_reported == size();
}

void Fleet::releaseAll()
{
    for (CollectThread *client : m_clients)
        client->deleteLater();
    m_clients.clear();
    while (m_alive > 0)
        process(5ms);
}
