#include "upswalk.h"

#include "hostvocabulary.h"

using namespace HostContract;

UpsWalk::UpsWalk()
    : m_view(m_client.getView())
{
    connect(&m_client, &CollectThread::postDEvent, this, &UpsWalk::take);
}

bool UpsWalk::start()
{
    if (!m_ups.start())
        return false;
    m_client.deviceName = QStringLiteral("walk");
    m_client.interval = 0;
    m_client.setPort(m_ups.terminalName(), QStringLiteral("9600,n,8,1"));
    view().setUserInfo(QStringLiteral("operator"), 1);
    return poll();
}

bool UpsWalk::poll()
{
    m_report.clear();
    m_client.poll();
    return !m_report.isEmpty() && m_client.communicationState == LinkUp;
}

void UpsWalk::take(int type, const QVariantMap &map)
{
    m_posts.append({ type, map });
    if (type == DataReportEvent) {
        m_report = map.value(Key::data()).value<DataReport>();
        view().flushData(m_report);
    } else if (type != HistoryDownloadedEvent && map.contains(Key::controlId())) {
        m_client.control(map.value(Key::controlId()).toInt(),
                         map.value(Key::controlValue()).toString());
    }
}

QByteArray UpsWalk::takeWrite()
{
    const QByteArray write = m_ups.ask("show write");
    if (write == std::exchange(m_lastWrite, write))
        return {};
    return write.mid(write.indexOf(' ') + 1);
}
