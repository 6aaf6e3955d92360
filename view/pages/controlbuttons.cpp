#include "pages/controlbuttons.h"

#include "lookup.h"
#include "style/tone.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

#include <algorithm>
#include <cstring>

namespace {

constexpr int lastButtonColumn = 4; // column 0 holds the titles
constexpr int buttonHeight = 32;    // at least, as far as the font allows
constexpr int buttonAir = 20;       // as far as the page is wide

// %1: the red of an alarm on the ground at hand
const char *const outlineStyle =
    "QPushButton { border: 2px solid %1; border-radius: 4px; padding: 4px 2px;"
    " background: transparent; color: palette(window-text); }"
    "QPushButton:hover, QPushButton:focus { background: rgba(179, 38, 30, 40); }"
    "QPushButton:focus { border-style: dashed; }"
    "QPushButton:pressed { background: rgba(179, 38, 30, 90); }";

/** Keeps the outline of a button in sight on light and dark desktops. What cannot be pressed is no
 *  risk, and looks like all others. */
class RiskOutline : public QObject
{
public:
    explicit RiskOutline(QPushButton *button)
        : QObject(button)
        , m_button(*button)
    {
        button->installEventFilter(this);
        draw();
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const bool isNewLook = event->type() == QEvent::Show
            || event->type() == QEvent::ApplicationPaletteChange
            || event->type() == QEvent::EnabledChange;
        if (isNewLook)
            QTimer::singleShot(0, this, [this] { draw(); }); // the page's own may come later
        return QObject::eventFilter(watched, event);
    }

private:
    void draw()
    {
        const QWidget *page = m_button.parentWidget(); // whose palette no style sheet has changed
        const QColor ground = pageGround(page ? page->palette() : QApplication::palette());
        const QColor outline = toneColor(Tone::Alarm, ground, visibleContrast);
        const QString style = m_button.isEnabled()
            ? QString::fromLatin1(outlineStyle).arg(outline.name())
            : QString();
        if (style != m_button.styleSheet())
            m_button.setStyleSheet(style);
    }

    QPushButton &m_button;
};

QPushButton *createButton(const ControlButtonRow &row, QObject *receiver, const char *clicked)
{
    auto *button = new QPushButton(translated("tavoView", row.text));
    button->setObjectName(QString::fromLatin1(row.name));
    button->setFont(QFont(QStringLiteral("Microsoft YaHei"), 10)); // before it is measured
    button->setMinimumHeight(std::max(buttonHeight, button->sizeHint().height()));
    button->setToolTip(translated("tavoView", row.consequence));
    button->setAccessibleDescription(button->toolTip());
    if (row.risk != ControlRisk::None)
        new RiskOutline(button);
    QObject::connect(button, SIGNAL(clicked()), receiver, clicked);
    return button;
}

QLabel *createTitle(const ControlButtonRow &row)
{
    auto *title = new QLabel;
    title->setTextFormat(Qt::PlainText);
    title->setText(translated("tavoView", row.group));
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
    column = lastButtonColumn - risky.size() + 1;
    for (QPushButton *button : risky)
        grid.addWidget(button, gridRow, column++);
}

void makeEquallyWide(const QList<QPushButton *> &buttons)
{
    int width = 0;
    for (const QPushButton *button : buttons)
        width = std::max(width, button->sizeHint().width());
    for (QPushButton *button : buttons) {
        button->setMinimumWidth(width);
        button->setMaximumWidth(width + buttonAir);
    }
}

} // namespace

int addControlButtons(QGridLayout &grid, Rows<CommandRow> commands, ButtonPage page,
                      QObject *receiver, const char *clicked)
{
    int gridRow = 0;
    QList<QPushButton *> all;
    for (const auto *row = commands.begin(); row != commands.end();) {
        const ControlButtonRow &first = row->button;
        if (first.page != page) {
            ++row;
            continue;
        }
        QList<QPushButton *> harmless;
        QList<QPushButton *> risky;
        for (; row != commands.end() && std::strcmp(row->button.group, first.group) == 0; ++row) {
            const bool isRisky = row->button.risk == ControlRisk::MovesLoad;
            (isRisky ? risky : harmless).append(createButton(row->button, receiver, clicked));
        }
        grid.addWidget(createTitle(first), gridRow, 0);
        placeRow(grid, gridRow, harmless, risky);
        all += harmless + risky;
        ++gridRow;
    }
    makeEquallyWide(all);
    grid.setHorizontalSpacing(4); // all of them in 900 pixels
    for (int column = 1; column <= lastButtonColumn; ++column)
        grid.setColumnStretch(column, 10);
    grid.setColumnStretch(lastButtonColumn + 1, 1);
    return gridRow;
}

void setLinked(QWidget &page, Rows<CommandRow> commands, bool isLinked)
{
    for (const CommandRow &row : commands) {
        auto *button = page.findChild<QPushButton *>(QString::fromLatin1(row.button.name));
        // An upgrade makes its own way, and may be what a device needs that answers no more.
        if (button && *row.button.name != '\0' && row.form != CommandForm::ClosePort)
            button->setEnabled(isLinked);
    }
}
