#include "style/noteline.h"

#include <QPainter>

namespace {

constexpr int margin = 6;

} // namespace

NoteLine::NoteLine(QWidget *parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setVisible(false);
}

void NoteLine::say(const QString &text, Tone tone)
{
    m_text = text;
    m_tone = tone;
    setAccessibleName(text);
    setToolTip(text); // the line may be cut
    setVisible(!text.isEmpty());
    updateGeometry();
    update();
}

QSize NoteLine::sizeHint() const
{
    return { 0, fontMetrics().height() + 2 * margin };
}

void NoteLine::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const bool isPlain = m_tone == Tone::Plain;
    painter.setPen(isPlain ? palette().color(QPalette::WindowText)
                           : toneColor(m_tone, pageGround(palette())));
    const QString whole = isPlain ? m_text : toneMark(m_tone) + QLatin1Char(' ') + m_text;
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter,
                     fontMetrics().elidedText(whole, Qt::ElideMiddle, width()));
}
