#include "answers/requeststatus.h"

#include <algorithm>

namespace {

constexpr int mostRequests = 32;

} // namespace

RequestStatus::RequestStatus(const Family &family, QObject *parent)
    : QObject(parent)
    , m_family(family)
{
}

void RequestStatus::follow(const QVariantMap &event)
{
    const auto request = requestOf(m_family, event, m_settings, QDateTime::currentDateTime());
    if (!request)
        return;
    if (m_requests.size() == mostRequests)
        m_requests.removeFirst(); // a host that answers nothing
    m_requests.append(*request);
    m_requests.last().number = ++m_count;
    m_shown = m_requests.constLast();
    say(statusText(m_shown), statusTone(m_shown));
}

void RequestStatus::answer(const CommandAnswer &answer)
{
    const auto request =
        std::find_if(m_requests.begin(), m_requests.end(), [&answer](const Request &r) {
            return r.state == Request::State::Waiting && r.command == answer.command
                && r.value == answer.value;
        });
    if (request == m_requests.end())
        return; // somebody else's
    takeAnswer(*request, answer.kind);
    show(*request);
}

void RequestStatus::takeReport(const DataReport &report)
{
    for (Request &request : m_requests) {
        if (::takeReport(request, m_family, report))
            show(request);
    }
}

// Good news cover neither a later request nor bad news.
void RequestStatus::show(const Request &request)
{
    const bool isCovering = request.number < m_shown.number || m_shown.isBad();
    if (isCovering && request.number != m_shown.number && !request.isBad())
        return;
    m_shown = request;
    say(statusText(request), statusTone(request));
}

void RequestStatus::tellUpgrade(const QString &what, const QString &state, Tone tone)
{
    const QString time = QDateTime::currentDateTime().toString(QStringLiteral("HH:mm:ss"));
    say(QStringList { time, what, state }.join(QStringLiteral(" \u00b7 ")), tone);
}

void RequestStatus::say(const QString &text, Tone tone)
{
    m_text = text;
    m_tone = tone;
    emit changed(text, tone);
}
