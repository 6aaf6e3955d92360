#include "dialogs/msgbox.h"

#include "style/notetext.h"
#include "style/viewstyle.h"

#include <QBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QScreen>
#include <QToolButton>
#include <QWindow>

namespace {

constexpr int longestLine = 600; // in pixels

// Such as a path: words that no line takes get invisible blanks between their characters.
QString breakable(const QString &text, const QFontMetrics &metrics)
{
    QStringList words = text.split(QLatin1Char(' '));
    for (QString &word : words) {
        if (metrics.size(Qt::TextExpandTabs, word).width() <= longestLine)
            continue;
        for (int i = word.size() - 1; i > 0; --i) {
            if (!word.at(i).isLowSurrogate())
                word.insert(i, QChar(0x200B));
        }
    }
    return words.join(QLatin1Char(' '));
}

} // namespace

MsgBox::MsgBox(int type, QString text)
    : m_label(new QLabel(text, this))
    , m_okButton(new QPushButton(tr("Ok"), this))
    , m_cancelButton(new QPushButton(tr("Cancel"), this))
{
    const QFont messageFont(QStringLiteral("Microsoft YaHei"), 11);
    setFont(messageFont);
    m_label->setFont(messageFont);
    m_label->setAlignment(Qt::AlignCenter);
    m_label->setTextFormat(Qt::PlainText);
    wrapLongLines();
    m_okButton->setObjectName(QStringLiteral("btnBlue"));
    m_cancelButton->setObjectName(QStringLiteral("btnWhite"));

    auto *buttons = new QHBoxLayout;
    buttons->setAlignment(Qt::AlignCenter);
    buttons->setSpacing(20);
    buttons->addWidget(m_okButton);
    buttons->addWidget(m_cancelButton);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(30, 30, 30, 30);
    column->addWidget(m_label);
    column->addLayout(buttons);
    spreadFont(*this); // a style sheet of the host keeps the buttons from inheriting it

    connect(m_okButton, SIGNAL(clicked()), this, SLOT(okBtn_press()));
    connect(m_cancelButton, SIGNAL(clicked()), this, SLOT(cancleBtn_press()));

    const bool isQuestion = type == Question;
    m_cancelButton->setVisible(isQuestion);
    QPushButton *first = isQuestion ? m_cancelButton : m_okButton;
    first->setDefault(true);
    first->setFocus();

    setMinimumSize(300, 150);
    setProperty("canMove", true);
    setObjectName(QStringLiteral("WhiteDialog"));
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
}

void MsgBox::wrapLongLines()
{
    if (m_label->sizeHint().width() <= longestLine)
        return;
    m_label->setText(breakable(m_label->text(), m_label->fontMetrics()));
    m_label->setWordWrap(true);
    m_label->setFixedWidth(longestLine);
}

void MsgBox::tell(const BoxAbout &about)
{
    if (!about.details.isEmpty())
        addDetails(about.details);
    if (!about.consequence.isEmpty())
        addNote(0)->say(about.consequence, about.tone);
    if (about.device.isEmpty())
        return;
    NoteText *device = addNote(0);
    QFont bold = device->font();
    bold.setBold(true);
    device->setFont(bold);
    device->say(about.device);
    setWindowTitle(about.device);
}

void MsgBox::addDetails(const QString &details)
{
    auto *column = static_cast<QBoxLayout *>(layout());
    const int below = column->indexOf(m_label) + 1;
    NoteText *note = addNote(below);
    auto *more = new QToolButton(this);
    more->setText(tr("Details"));
    more->setFont(m_label->font());
    more->setCheckable(true);
    column->insertWidget(below, more, 0, Qt::AlignHCenter);
    connect(more, &QToolButton::toggled, this, [this, note, details](bool isWanted) {
        note->say(isWanted ? details : QString());
        adjustSize();
    });
}

NoteText *MsgBox::addNote(int place)
{
    auto *note = new NoteText(m_label, this);
    note->setWidest(longestLine);
    static_cast<QBoxLayout *>(layout())->insertWidget(place, note, 0, Qt::AlignHCenter);
    return note;
}

bool MsgBox::ask(QWidget *over, int type, const QString &text, const BoxAbout &about)
{
    MsgBox box(type, text);
    box.tell(about);
    placeOver(over, box);
    return box.exec() == Accepted;
}

void MsgBox::notify(QWidget &window, const QString &text)
{
    MsgBox box(Notice, text);
    placeOver(&window, box);
    box.move(
        besideWindow(window.frameGeometry(), box.size(), window.screen()->availableGeometry()));
    box.exec();
}

QPoint besideWindow(const QRect &window, const QSize &box, const QRect &screen)
{
    constexpr int gap = 8;
    const int below = window.bottom() + 1 + gap;
    const int above = window.top() - gap - box.height();
    const int y = below + box.height() <= screen.bottom() + 1 ? below : above;
    const int x = window.center().x() - box.width() / 2;
    return { qBound(screen.left(), x, screen.right() + 1 - box.width()), qMax(screen.top(), y) };
}

void MsgBox::okBtn_press()
{
    accept();
}

void MsgBox::cancleBtn_press()
{
    reject();
}

void MsgBox::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_dragging = true;
    m_pressPos = event->localPos().toPoint();
}

void MsgBox::mouseMoveEvent(QMouseEvent *event)
{
    if (m_dragging)
        move(event->globalPos() - m_pressPos);
}

void MsgBox::mouseReleaseEvent(QMouseEvent *)
{
    m_dragging = false;
}

void placeOver(QWidget *over, QDialog &dialog)
{
    QWidget *window = over->window();
    dialog.adjustSize();
    // Which takes no more than two thirds of a small screen, and would cut the text there.
    dialog.resize(dialog.sizeHint().expandedTo(dialog.size()));
    dialog.move(window->geometry().center() - dialog.rect().center());
    if (!window->windowHandle())
        return;
    dialog.winId(); // makes the native window that the next line needs
    dialog.windowHandle()->setTransientParent(window->windowHandle());
}
