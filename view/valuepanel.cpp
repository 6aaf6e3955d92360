#include "valuepanel.h"

#include "viewcolors.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>

namespace {

constexpr double Radius = 6;
constexpr int RowHeight = 18; // all cards fit into a window of 1000x640
constexpr int RowSpacing = 2;

// Set on each label: what labels inherit is the desktop's, or the host's style sheet.
void setTextColor(QWidget &widget, const QColor &color)
{
    QPalette palette = widget.palette();
    palette.setColor(QPalette::WindowText, color);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, ViewColors::SecondaryText);
    widget.setPalette(palette);
}

} // namespace

void showAsStale(QLabel &value, bool stale)
{
    if (value.font().italic() == stale)
        return;
    value.setEnabled(!stale);
    QFont font = value.font(); // the host's style sheet may set the colour
    font.setItalic(stale);
    value.setFont(font);
}

ValuePanel::ValuePanel(const QString &title, const QList<ParameterInformation *> &records,
                       QWidget *parent)
    : QFrame(parent)
    , m_title(new QLabel(title, this))
{
    m_title->setObjectName(QStringLiteral("PanelTitle"));
    m_title->setFont(QFont(QStringLiteral("Microsoft YaHei"), 11, QFont::Bold));
    setTextColor(*m_title, ViewColors::Text);
    m_title->setContentsMargins(12, 6, 12, 6);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(1, 1, 1, 1);
    column->setSpacing(0);
    column->addWidget(m_title);
    column->addWidget(createBody(records));
    column->addStretch();
}

QWidget *ValuePanel::createBody(const QList<ParameterInformation *> &records)
{
    auto *body = new QWidget(this);
    body->setObjectName(QStringLiteral("PanelBody"));
    auto *rows = new QVBoxLayout(body);
    rows->setContentsMargins(12, 8, 12, 8);
    rows->setSpacing(RowSpacing);
    const QFont font(QStringLiteral("Microsoft YaHei"), 10);
    for (const ParameterInformation *record : records) {
        auto *name = new QLabel(record->name, body);
        name->setObjectName(QStringLiteral("PanalBodyKeyName")); // spelling is bound by name
        name->setFont(font);
        setTextColor(*name, ViewColors::SecondaryText);
        auto *value = new QLabel(record->value, body);
        value->setObjectName(QStringLiteral("PanalBodyKeyValue")); // spelling is bound by name
        value->setFont(font);
        setTextColor(*value, ViewColors::Text);
        value->setTextFormat(Qt::PlainText); // device texts are no markup
        value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        auto *row = new QHBoxLayout;
        row->addWidget(name);
        row->addSpacerItem(new QSpacerItem(0, RowHeight, QSizePolicy::Expanding));
        row->addWidget(value);
        rows->addLayout(row);
        m_valueLabels.append(value);
    }
    return body;
}

void ValuePanel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath outline;
    outline.addRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Radius, Radius);
    painter.fillPath(outline, ViewColors::Card);
    painter.setClipPath(outline);
    painter.fillRect(QRect(0, 0, width(), m_title->geometry().bottom() + 1), ViewColors::Band);
    painter.setClipping(false);
    painter.setPen(ViewColors::Hairline);
    painter.drawPath(outline);
}
