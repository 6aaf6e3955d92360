// What the view goes by beside the reports: the link, and what was asked for.

#include "tavoview.h"

#include "answers/requeststatus.h"
#include "answers/statuslines.h"
#include "banner/statebanner.h"
#include "diagram/energyline.h"
#include "hostvocabulary.h"
#include "pages/alarmpage.h"
#include "pages/controlactions.h"
#include "pages/controlbuttons.h"
#include "pages/controlpage.h"
#include "pages/maintenancepage.h"
#include "pages/realdatapage.h"
#include "pages/settingseditor.h"
#include "pages/settingstabs.h"
#include "trends/trendclock.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>

using namespace HostContract;

namespace {

constexpr int newEventS = 60; // an event that began before is no news

} // namespace

void tavoView::connectRequests()
{
    m_requests->setSettings(m_viewData.getBasicConfig() + m_viewData.getBatteryConfig()
                            + m_viewData.getAdjustConfig() + m_viewData.getDevInfoConfig());
    connect(this, &CollectView::postDEvent, m_requests,
            [this](int, const QVariantMap &event) { m_requests->follow(event); });
    connect(m_actions, &ControlActions::upgradeBegins, m_requests,
            [this] { m_requests->tellUpgrade(tr("UPS upgrade"), tr("under way"), Tone::Plain); });
    connect(m_actions, &ControlActions::upgradeEnded, m_requests, [this](bool isGood) {
        m_requests->tellUpgrade(tr("UPS upgrade"),
                                isGood ? tr("ended without a problem") : tr("ended with a problem"),
                                isGood ? Tone::Good : Tone::Alarm);
    });
    for (StatusLines *lines : { &m_controlPage->status(), &m_maintenancePage->status() })
        connect(m_requests, &RequestStatus::changed, lines, &StatusLines::showAnswer);
}

void tavoView::follow(ClientNews &news)
{
    m_news = &news;
    connect(&news, &ClientNews::historyExported, this, &tavoView::tellOfHistory);
    connect(&news, &ClientNews::commandAnswered, m_requests, &RequestStatus::answer);
    connect(&news, &ClientNews::linkChanged, this, &tavoView::takeNews);
    takeNews();
}

void tavoView::takeNews()
{
    if (m_link.take(m_news->link()) && m_tabs)
        showStale();
}

void tavoView::flushUpsInfo(QString key, QVariant value)
{
    CollectView::flushUpsInfo(key, value);
    if (key != Key::state())
        return;
    const bool hasChanged = m_link.take(value.toInt(), QDateTime::currentDateTime());
    if (hasChanged && m_tabs)
        showStale();
}

void tavoView::showStale()
{
    m_diagram->setStale(m_link.isLost(), m_link.text(QDate::currentDate()));
    m_realData->setStale(m_link.isLost());
    showAlarms();
    setLinked(*m_controlPage, m_family.commands, !m_link.isLost());
    setLinked(*m_maintenancePage, m_family.commands, !m_link.isLost());
    m_controlPage->setLinked(!m_link.isLost());
    m_settings->setStale(m_link.isLost());
    m_editor->setObstacle(m_link.text(QDate::currentDate()));
    showReason();
    showState();
}

// Why buttons are disabled.
void tavoView::showReason()
{
    const bool isLost = m_link.isLost();
    const QString link = m_link.text(QDate::currentDate());
    const QString reason = isLost ? tr("%1: nothing can be sent").arg(link)
        : userLevel == 0          ? tr("Only to look at: this user may not control the device")
                                  : QString();
    m_controlPage->status().showReason(reason, isLost ? Tone::Alarm : Tone::Plain);
    const QString rest = isLost ? tr("%1: only the upgrade is possible").arg(link) : QString();
    m_maintenancePage->status().showReason(rest, Tone::Alarm);
}

// Nobody reads the banner of a hidden view.
void tavoView::showState()
{
    if (m_banner && isVisible())
        m_banner->say(bannerText(
            m_family,
            { m_link.isLost(), m_link.sinceText(QDate::currentDate()), m_hasReport, dataReport }));
}

void tavoView::changeEvent(QEvent *event)
{
    CollectView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        QTimer::singleShot(0, this, &tavoView::spreadPalette);
}

// Widgets are told of a new palette in any order, and below a style sheet once: who was told before
// its parent keeps the old one.
void tavoView::spreadPalette()
{
    for (QWidget *widget : findChildren<QWidget *>()) {
        QEvent again(QEvent::ApplicationPaletteChange);
        QCoreApplication::sendEvent(widget, &again);
    }
}

void tavoView::showEvent(QShowEvent *event)
{
    showState();
    CollectView::showEvent(event);
}

// Whichever tab is current, and whether or not the view is seen: what is not kept is lost.
void tavoView::keepTrends(const QVector<RecordedEvent> &appeared, const QDateTime &now)
{
    if (m_link.isLost())
        return m_trends.loseSight(trendClock());
    if (!m_hasReport)
        return;
    m_trends.take(dataReport, trendClock());
    for (const RecordedEvent &event : appeared) {
        const bool isNew = event.onset.isExact && event.onset.since.secsTo(now) < newEventS;
        if (isNew)
            m_trends.mark(event.index);
    }
}

void tavoView::showAlarms()
{
    m_alarms->show({ m_eventRecord.events(), m_eventRecord.lastCleared(), m_hasReport,
                     m_link.text(QDate::currentDate()) },
                   m_viewData.getAlarmList());
}
