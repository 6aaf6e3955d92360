#include "controlbuttons.h"

#include <QLabel>
#include <QPushButton>

#include <algorithm>
#include <cstring>

namespace {

constexpr int LastButtonColumn = 4; // column 0 holds the titles
constexpr int ButtonHeight = 32;

const char *const outlineStyle =
    "QPushButton { border: 2px solid #B3261E; border-radius: 4px; padding: 4px 12px;"
    " background: transparent; color: palette(window-text); }"
    "QPushButton:hover, QPushButton:focus { background: rgba(179, 38, 30, 40); }"
    "QPushButton:focus { border-style: dashed; }"
    "QPushButton:pressed { background: rgba(179, 38, 30, 90); }"
    "QPushButton:disabled { border-color: gray; color: gray; }";

QPushButton *createButton(const ControlButtonRow &row, QObject *receiver, const char *clicked)
{
    auto *button = new QPushButton(ControlTables::tr(row.text));
    button->setObjectName(QString::fromLatin1(row.name));
    button->setFont(QFont(QStringLiteral("Microsoft YaHei"), 10)); // before it is measured
    button->setMinimumHeight(ButtonHeight);
    if (row.risk == ControlRisk::MovesLoad)
        button->setStyleSheet(QString::fromLatin1(outlineStyle));
    QObject::connect(button, SIGNAL(clicked()), receiver, clicked);
    return button;
}

QLabel *createTitle(const ControlButtonRow &row)
{
    auto *title = new QLabel;
    title->setTextFormat(Qt::PlainText);
    title->setText(ControlTables::tr(row.group));
    title->setObjectName(QStringLiteral("DevSubNameTit"));
    title->setFont(QFont(QStringLiteral("Microsoft YaHei"), 10, QFont::Bold));
    return title;
}

// The buttons of a row in reading order: first the harmless ones from the left.
void placeRow(QGridLayout &grid, int gridRow, const QList<QPushButton *> &harmless,
              const QList<QPushButton *> &risky)
{
    int column = 1;
    for (QPushButton *button : harmless)
        grid.addWidget(button, gridRow, column++);
    column = LastButtonColumn - risky.size() + 1;
    for (QPushButton *button : risky)
        grid.addWidget(button, gridRow, column++);
}

} // namespace

int addControlButtons(QGridLayout &grid, ControlPage page, QObject *receiver, const char *clicked)
{
    int gridRow = 0;
    int width = 0;
    QList<QPushButton *> all;
    const auto *row = std::begin(ControlTables::buttons);
    const auto *const end = std::end(ControlTables::buttons);
    while (row != end) {
        const ControlButtonRow &first = *row;
        QList<QPushButton *> harmless;
        QList<QPushButton *> risky;
        for (; row != end && std::strcmp(row->group, first.group) == 0; ++row) {
            if (row->page == page)
                (row->risk == ControlRisk::None ? harmless : risky)
                    .append(createButton(*row, receiver, clicked));
        }
        if (first.page != page)
            continue;
        grid.addWidget(createTitle(first), gridRow, 0);
        placeRow(grid, gridRow, harmless, risky);
        all += harmless + risky;
        ++gridRow;
    }
    for (const QPushButton *button : qAsConst(all))
        width = std::max(width, button->sizeHint().width());
    for (QPushButton *button : qAsConst(all))
        button->setMinimumWidth(width);
    grid.setColumnStretch(LastButtonColumn + 1, 1);
    return gridRow;
}
