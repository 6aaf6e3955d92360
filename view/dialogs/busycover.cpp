#include "dialogs/busycover.h"

#include "dialogs/loading.h"
#include "dialogs/msgbox.h"
#include "dialogs/quitwait.h"
#include "upgrade.h"

#include <QEvent>
#include <QPointer>
#include <QVBoxLayout>

BusyCover::BusyCover(QWidget *covered)
    : QWidget(covered->parentWidget())
{
    constexpr int indicatorSize = 120;
    auto *indicator = new Loading(this);
    indicator->setFixedSize(indicatorSize, indicatorSize);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(indicator, 0, Qt::AlignCenter);
    covered->installEventFilter(this);
    setGeometry(covered->geometry());
    show();
    raise();
}

bool BusyCover::eventFilter(QObject *covered, QEvent *event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::Move)
        setGeometry(static_cast<QWidget *>(covered)->geometry());
    return QWidget::eventFilter(covered, event);
}

void BusyCover::during(Upgrade &upgrade, QWidget &page)
{
    QuitWait::follow(upgrade);
    page.setEnabled(false);
    const QPointer<BusyCover> cover = new BusyCover(&page);
    connect(&upgrade, &Upgrade::finished, &page, [cover, &page](const QStringList &failures) {
        delete cover;
        page.setEnabled(true);
        if (!failures.isEmpty())
            MsgBox::ask(&page, MsgBox::Notice, tr("The upgrade ended with a problem."),
                        { {}, {}, Tone::Plain, failures.join(QLatin1Char('\n')) });
    });
}
