#include "answers/requeststatus.h"

#include <QCoreApplication>
#include <QTimer>

namespace {

using namespace std::chrono_literals;

constexpr int mostRequests = 32;
constexpr auto takingTime = 3s;

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
    QTimer::singleShot(takingTime, this, [this, number = m_count] { miss(number); });
}

// A host may ask its user something first, and hands the request on later, or never.
void RequestStatus::miss(int number)
{
    for (Request &request : m_requests) {
        if (request.number != number || request.isTaken)
            continue;
        request.state = Request::State::NotTaken;
        if (number == m_shown.number)
            show(request);
    }
}

void RequestStatus::answer(const CommandAnswer &answer)
{
    Request *answered = nullptr; // somebody else's, if it stays so
    for (Request &request : m_requests) {
        const bool isFirst = !answered || answer.kind == CommandAnswer::Kind::Taken;
        if (isFirst && isAnsweredBy(request, answer))
            answered = &request;
    }
    if (!answered)
        return;
    takeAnswer(*answered, answer.kind);
    show(*answered);
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

void RequestStatus::beginUpgrade()
{
    tellUpgrade(QCoreApplication::translate("tavoView", "under way"), Tone::Plain);
}

void RequestStatus::endUpgrade(bool isGood)
{
    if (isGood)
        tellUpgrade(QCoreApplication::translate("tavoView", "ended without a problem"), Tone::Good);
    else
        tellUpgrade(QCoreApplication::translate("tavoView", "ended with a problem"), Tone::Alarm);
}

void RequestStatus::tellUpgrade(const QString &state, Tone tone)
{
    const QString what = QCoreApplication::translate("tavoView", "UPS upgrade");
    const QString time = QDateTime::currentDateTime().toString(QStringLiteral("HH:mm:ss"));
    say(QStringList { time, what, state }.join(QStringLiteral(" \u00b7 ")), tone);
}

void RequestStatus::say(const QString &text, Tone tone)
{
    m_text = text;
    m_tone = tone;
    emit changed(text, tone);
}
