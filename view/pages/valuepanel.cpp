#include "pages/valuepanel.h"

#include "displaytext.h"
#include "pages/elidedlabel.h"
#include "style/viewcolors.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>

namespace {

constexpr double radius = 6;
constexpr int rowHeight = 18; // all cards fit into a window of 1000x640
constexpr int rowSpacing = 2;
constexpr int mostWidth = 420; // where an inch has 96 points

// Set on each label: what labels inherit is the desktop's, or the host's style sheet.
void setTextColor(QWidget &widget, const QColor &color)
{
    QPalette palette = widget.palette();
    palette.setColor(QPalette::WindowText, color);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, ViewColors::secondaryText);
    widget.setPalette(palette);
}

} // namespace

ValuePanel::ValuePanel(const QString &title, const QList<ParameterInformation *> &records,
                       QWidget *parent)
    : QFrame(parent)
    , m_records(records)
    , m_title(new QLabel(title, this))
{
    m_title->setObjectName(QStringLiteral("PanelTitle"));
    m_title->setFont(QFont(QStringLiteral("Microsoft YaHei"), 11, QFont::Bold));
    setTextColor(*m_title, ViewColors::text);
    m_title->setContentsMargins(12, 6, 12, 6);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(1, 1, 1, 1);
    column->setSpacing(0);
    column->addWidget(m_title);
    column->addWidget(createBody());
    column->addStretch();
    setMaximumWidth(mostWidth * logicalDpiX() / 96);
}

QWidget *ValuePanel::createBody()
{
    auto *body = new QWidget(this);
    body->setObjectName(QStringLiteral("PanelBody"));
    auto *rows = new QVBoxLayout(body);
    rows->setContentsMargins(12, 8, 12, 8);
    rows->setSpacing(rowSpacing);
    const QFont font(QStringLiteral("Microsoft YaHei"), 10);
    for (const ParameterInformation *record : m_records) {
        auto *name = new QLabel(record->name, body);
        name->setObjectName(QStringLiteral("PanalBodyKeyName")); // spelling is bound by name
        name->setFont(font);
        setTextColor(*name, ViewColors::secondaryText);
        const bool isDeviceText = record->type == TextValue;
        auto *value =
            isDeviceText ? new ElidedLabel(record->value, body) : new QLabel(record->value, body);
        value->setObjectName(QStringLiteral("PanalBodyKeyValue")); // spelling is bound by name
        value->setFont(font);
        setTextColor(*value, ViewColors::text);
        value->setTextFormat(Qt::PlainText); // device texts are no markup
        value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        auto *row = new QHBoxLayout;
        row->addWidget(name);
        row->addSpacerItem(new QSpacerItem(0, rowHeight, QSizePolicy::Expanding));
        row->addWidget(value);
        rows->addLayout(row);
        m_valueLabels.append(value);
    }
    return body;
}

void ValuePanel::showReport(const DataReport &report)
{
    for (int i = 0; i < m_records.size(); ++i) {
        const ParameterInformation &record = *m_records.at(i);
        const QString text =
            report.contains(record.dataId) ? displayText(record, report) : QStringLiteral("-");
        if (m_valueLabels.at(i)->text() != text)
            m_valueLabels.at(i)->setText(text);
    }
}

void ValuePanel::setStale(bool stale)
{
    for (QLabel *value : qAsConst(m_valueLabels)) {
        if (value->font().italic() == stale)
            continue;
        value->setEnabled(!stale);
        QFont font = value->font(); // the host's style sheet may set the colour
        font.setItalic(stale);
        value->setFont(font);
    }
}

void ValuePanel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath outline;
    outline.addRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    painter.fillPath(outline, ViewColors::card);
    painter.setClipPath(outline);
    painter.fillRect(QRect(0, 0, width(), m_title->geometry().bottom() + 1), ViewColors::band);
    painter.setClipping(false);
    painter.setPen(ViewColors::hairline);
    painter.drawPath(outline);
}
