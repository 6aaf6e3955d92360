#include "style/notetext.h"

#include <QLabel>
#include <QPainter>

#include <algorithm>

NoteText::NoteText(const QLabel *like, QWidget *parent)
    : QWidget(parent)
    , m_like(like)
{
    if (like)
        setFont(like->font());
    setVisible(false);
}

void NoteText::say(const QString &text, Tone tone)
{
    m_text = text;
    m_tone = tone;
    setAccessibleName(text);
    setVisible(!text.isEmpty());
    updateGeometry();
    update();
}

QString NoteText::shown() const
{
    return m_tone == Tone::Plain ? m_text : toneMark(m_tone) + QLatin1Char(' ') + m_text;
}

QSize NoteText::sizeHint() const
{
    const QSize size =
        fontMetrics().boundingRect(0, 0, m_widest, 10000, Qt::TextWordWrap, shown()).size();
    return { size.width() + 1, std::max(size.height(), fontMetrics().height()) };
}

void NoteText::paintEvent(QPaintEvent *)
{
    const QPalette look = m_like ? m_like->palette() : palette();
    const QColor ink = look.color(QPalette::WindowText);
    // The ground is a style sheet's, who knows of which widget: the ink tells what it is like.
    const QColor ground = contrast(ink, Qt::black) > contrast(ink, Qt::white)
        ? QColor(0x35, 0x35, 0x35)
        : QColor(Qt::white);
    QPainter painter(this);
    painter.setPen(m_tone == Tone::Plain ? ink : toneColor(m_tone, ground));
    painter.drawText(rect(), int(m_alignment) | Qt::TextWordWrap, shown());
}
