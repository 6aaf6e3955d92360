#include "answers/statuslines.h"

#include "style/noteline.h"

#include <QBoxLayout>

StatusLines::StatusLines(QWidget *parent)
    : QWidget(parent)
    , m_answer(new NoteLine(this))
    , m_reason(new NoteLine(this))
{
    QSizePolicy keeping = m_answer->sizePolicy();
    keeping.setRetainSizeWhenHidden(true);
    m_answer->setSizePolicy(keeping);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_answer);
    column->addWidget(m_reason);
}

void StatusLines::showAnswer(const QString &text, Tone tone)
{
    m_answer->say(text, tone);
}

void StatusLines::showReason(const QString &text, Tone tone)
{
    m_reason->say(text, tone);
}

QString StatusLines::answer() const
{
    return m_answer->text();
}

QString StatusLines::reason() const
{
    return m_reason->text();
}
