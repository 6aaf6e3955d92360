#include "dialogs/loading.h"

#include <QPainter>
#include <QtMath>

namespace {

constexpr int phases = 12;
constexpr int tickMs = 50;
constexpr int headDots = 3;

QRect dotAt(int position, int radius)
{
    const double angle = position * M_PI / 6;
    const int x = static_cast<int>(std::sin(angle) * radius);
    const int y = static_cast<int>(std::cos(angle) * radius);
    return { QPoint(x - 10, y - 10), QPoint(x + 4, y + 4) };
}

} // namespace

Loading::Loading(QWidget *parent)
    : QWidget(parent)
{
    connect(&m_timer, &QTimer::timeout, this, &Loading::advance);
    m_timer.start(tickMs);
}

void Loading::advance()
{
    m_step = (m_step + 1) % phases;
    update();
}

void Loading::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    m_width = rect().width();
    m_height = rect().height();
    painter.translate(m_width / 2, m_height / 2);
    drawLoading(&painter);
}

void Loading::drawLoading(QPainter *painter)
{
    const int radius = (qMin(m_width, m_height) - 30) / 2;
    painter->setPen(Qt::NoPen);
    for (int i = 0; i < headDots; ++i) {
        painter->setBrush(QColor(50, 20, 40, (i + 1) * 80));
        painter->drawEllipse(dotAt(i - m_step, radius));
    }
    for (int i = 0; i < phases - headDots; ++i) {
        painter->setBrush(QColor(255, 190, 15, 255 - 30 * i));
        painter->drawEllipse(dotAt(i - m_step + headDots, radius));
    }
}
