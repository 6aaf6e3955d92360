#include "pages/historynote.h"

#include "style/noteline.h"

#include <QBoxLayout>
#include <QDesktopServices>
#include <QFileInfo>
#include <QToolButton>
#include <QUrl>

namespace {

constexpr int tickMs = 1000;

QString elapsedText(qint64 ms)
{
    const qint64 seconds = ms / 1000;
    return QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

} // namespace

HistoryNote::HistoryNote(QWidget *parent)
    : QWidget(parent)
    , m_line(new NoteLine(this))
    , m_open(new QToolButton(this))
{
    m_open->setText(tr("Open folder"));
    m_open->setToolTip(tr("Shows the folder of the downloaded history"));
    m_open->hide();
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_line, 1);
    row->addWidget(m_open);
    connect(m_open, &QToolButton::clicked, this, &HistoryNote::openFolder);
    connect(&m_tick, &QTimer::timeout, this, &HistoryNote::showElapsed);
}

void HistoryNote::begin(const QString &file)
{
    m_open->hide();
    m_wasCancelled = file.isEmpty();
    m_since.invalidate();
    if (m_wasCancelled) {
        m_line->say(tr("The download was cancelled"), NoteLine::Tone::Plain);
        return;
    }
    m_since.start();
    showElapsed();
    if (isVisible())
        m_tick.start(tickMs);
}

void HistoryNote::showElapsed()
{
    if (m_since.isValid())
        m_line->say(
            tr("The history is being downloaded \u2026 %1").arg(elapsedText(m_since.elapsed())),
            NoteLine::Tone::Plain);
}

// A command without a file goes out after a cancelled choice, too: that nothing was saved is what
// the user wanted.
void HistoryNote::end(const HistoryOutcome &outcome)
{
    const bool isOfCancelled = m_wasCancelled && outcome.file.isEmpty();
    m_wasCancelled = false;
    if (isOfCancelled)
        return;
    m_tick.stop();
    m_since.invalidate();
    m_file = outcome.file;
    m_open->setVisible(outcome.problem.isEmpty() && outcome.records > 0);
    tell(outcome);
}

void HistoryNote::tell(const HistoryOutcome &outcome)
{
    if (!outcome.problem.isEmpty())
        m_line->say(tr("The history was not saved: %1").arg(outcome.problem),
                    NoteLine::Tone::Alarm);
    else if (outcome.records == 0)
        m_line->say(tr("No history records in %1").arg(outcome.file), NoteLine::Tone::Alarm);
    else if (outcome.records == 1)
        m_line->say(tr("1 record in %1").arg(outcome.file), NoteLine::Tone::Plain);
    else
        m_line->say(tr("%1 records in %2").arg(QString::number(outcome.records), outcome.file),
                    NoteLine::Tone::Plain);
}

void HistoryNote::openFolder()
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(m_file).absolutePath()));
}

void HistoryNote::showEvent(QShowEvent *)
{
    if (!m_since.isValid())
        return;
    showElapsed();
    m_tick.start(tickMs);
}

void HistoryNote::hideEvent(QHideEvent *)
{
    m_tick.stop();
}
