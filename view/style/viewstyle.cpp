#include "style/viewstyle.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFontMetrics>
#include <QScrollArea>
#include <QStackedWidget>
#include <QTabWidget>

QScrollArea *createScrollPage(const char *objectName, QWidget *contents, QWidget *parent)
{
    auto *page = new QScrollArea(parent);
    page->setObjectName(QString::fromLatin1(objectName));
    showInScrollArea(*page, contents);
    return page;
}

void showInScrollArea(QScrollArea &page, QWidget *contents)
{
    page.setFrameShape(QFrame::NoFrame);
    page.setWidgetResizable(true);
    page.setWidget(contents);
    // The ground is that of the tab, as on the other pages.
    page.viewport()->setAutoFillBackground(false);
    contents->setAutoFillBackground(false);
}

QStackedWidget *createStack(const char *objectName, QWidget *parent)
{
    auto *stack = new QStackedWidget(parent);
    stack->setObjectName(QString::fromLatin1(objectName));
    return stack;
}

void spreadFont(QWidget &top)
{
    const QList<QWidget *> widgets = top.findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        if (!widget->testAttribute(Qt::WA_SetFont))
            widget->setFont(top.font());
    }
}

void spreadPalette(QWidget &top)
{
    const QList<QWidget *> widgets = top.findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        QEvent again(QEvent::ApplicationPaletteChange);
        QCoreApplication::sendEvent(widget, &again);
    }
}

void keepDisabledTabs(QTabWidget &tabs, const QFont &font)
{
    const QFontMetrics metrics(font);
    int width = 0;
    for (int i = 0; i < tabs.count(); ++i)
        width = qMax(width, metrics.horizontalAdvance(tabs.tabText(i)));
    tabs.setStyleSheet(
        QStringLiteral("QTabBar::tab:disabled {min-width: %1px; color: gray;}").arg(width + 24));
}
