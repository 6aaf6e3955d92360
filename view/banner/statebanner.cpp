#include "banner/statebanner.h"

#include <QPainter>

#include <algorithm>

namespace {

constexpr int leastHeight = 40;
constexpr int air = 4;
constexpr int indent = 16;

} // namespace

StateBanner::StateBanner(QWidget *parent)
    : QWidget(parent)
{
    setFont(QFont(QStringLiteral("Microsoft YaHei"), 16, QFont::Bold));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void StateBanner::say(const BannerText &state)
{
    if (state.text == m_state.text && state.tone == m_state.tone)
        return;
    m_state = state;
    setAccessibleName(state.text);
    setToolTip(state.text); // the line may be cut
    update();
}

QString StateBanner::text() const
{
    return toneMark(m_state.tone) + QLatin1Char(' ') + m_state.text;
}

QSize StateBanner::sizeHint() const
{
    return { 0, std::max(leastHeight, fontMetrics().height() + 2 * air) };
}

void StateBanner::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QColor ground = toneGround(m_state.tone, palette().color(QPalette::Window));
    painter.fillRect(rect(), ground);
    painter.setPen(toneColor(m_state.tone, ground));
    const QRect line = rect().adjusted(indent, 0, -indent, 0);
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                     fontMetrics().elidedText(text(), Qt::ElideRight, line.width()));
}
