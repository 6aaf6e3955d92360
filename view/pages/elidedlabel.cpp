#include "pages/elidedlabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

#include <algorithm>

namespace {

constexpr int leastChars = 8; // that are always seen

} // namespace

QSize ElidedLabel::minimumSizeHint() const
{
    const QSize whole = QLabel::minimumSizeHint();
    return { std::min(whole.width(), leastChars * fontMetrics().averageCharWidth()),
             whole.height() };
}

bool ElidedLabel::isCut() const
{
    return fontMetrics().horizontalAdvance(text()) > contentsRect().width();
}

bool ElidedLabel::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && isCut()) {
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), text(), this);
        return true;
    }
    return QLabel::event(event);
}

void ElidedLabel::paintEvent(QPaintEvent *event)
{
    if (!isCut())
        return QLabel::paintEvent(event);
    QPainter painter(this);
    drawFrame(&painter);
    style()->drawItemText(&painter, contentsRect(), int(alignment()), palette(), isEnabled(),
                          fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width()),
                          foregroundRole());
}
