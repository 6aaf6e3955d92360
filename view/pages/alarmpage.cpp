#include "pages/alarmpage.h"

#include "family.h"
#include "pages/recordtable.h"
#include "style/noteline.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QToolButton>

#include <algorithm>

namespace {

EventSeverity severityOf(const RecordedEvent &event)
{
    return deviceFamily().events[event.index].severity;
}

bool isWorse(const RecordedEvent &a, const RecordedEvent &b)
{
    return severityOf(a) > severityOf(b);
}

// Titles follow the cells: the time stands first.
QStringList headers()
{
    return { QCoreApplication::translate("tavoView", "Data/Time"),
             QCoreApplication::translate("tavoView", "Event description") };
}

} // namespace

bool areAlike(const AlarmState &a, const AlarmState &b)
{
    return a.events.constData() == b.events.constData() && a.isKnown == b.isKnown
        && a.lastCleared == b.lastCleared && a.lost == b.lost;
}

QString alarmText(const AlarmState &state, const QDate &today)
{
    if (!state.isKnown && state.lost.isEmpty())
        return AlarmPage::tr("Nothing received yet");
    if (!state.lost.isEmpty())
        return AlarmPage::tr("Unknown \u2013 %1").arg(state.lost);
    const QString active = AlarmPage::tr("%1 active").arg(state.events.size());
    if (!state.lastCleared.isValid())
        return active;
    const bool isToday = state.lastCleared.date() == today;
    const QString time = state.lastCleared.toString(isToday ? QStringLiteral("HH:mm")
                                                            : QStringLiteral("yyyy-MM-dd HH:mm"));
    return AlarmPage::tr("%1 \u00b7 last cleared %2").arg(active, time);
}

AlarmPage::AlarmPage(const QStringList &texts, QWidget *parent)
    : QWidget(parent)
    , m_texts(texts)
    , m_line(new NoteLine(this))
    , m_worstFirst(new QToolButton(this))
    , m_table(new RecordTable(headers(), this))
{
    setObjectName(QStringLiteral("AlarmTable"));
    m_worstFirst->setText(tr("Worst first"));
    m_worstFirst->setToolTip(tr("Critical events first; otherwise the newest first"));
    m_worstFirst->setCheckable(true);
    connect(m_worstFirst, &QToolButton::toggled, this, &AlarmPage::write);
    auto *head = new QHBoxLayout;
    head->addWidget(m_line, 1);
    head->addWidget(m_worstFirst);
    auto *column = new QVBoxLayout(this);
    column->addLayout(head);
    column->addWidget(m_table);
    write();
}

void AlarmPage::show(const AlarmState &state)
{
    if (areAlike(state, m_state) && m_today == QDate::currentDate())
        return;
    m_state = state;
    write();
}

void AlarmPage::write()
{
    m_today = QDate::currentDate();
    const QString line = alarmText(m_state, m_today);
    const bool isLost = !m_state.lost.isEmpty();
    const auto tone = isLost ? NoteLine::Tone::Alarm : NoteLine::Tone::Plain;
    if (line != m_line->text() || tone != m_line->tone())
        m_line->say(line, tone);
    QVector<RecordedEvent> events = m_state.events;
    if (m_worstFirst->isChecked())
        std::stable_sort(events.begin(), events.end(), isWorse);
    m_table->setStale(isLost);
    m_table->showEvents(events, m_texts);
    m_table->setEmptyNote(m_state.isKnown && !isLost ? RecordTable::tr("No events") : line);
}
