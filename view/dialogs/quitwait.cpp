#include "dialogs/quitwait.h"

#include "dialogs/loading.h"
#include "dialogs/msgbox.h"
#include "upgrade.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>

void QuitWait::follow(Upgrade &upgrade)
{
    connect(&upgrade, &Upgrade::quitWaits, &upgrade,
            [&upgrade] { (new QuitWait(upgrade))->show(); });
}

QuitWait::QuitWait(Upgrade &upgrade)
{
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
    setObjectName(QStringLiteral("WhiteDialog"));
    setFont(QFont(QStringLiteral("Microsoft YaHei"), 11));
    auto *text = new QLabel(
        tr("The UPS is being upgraded. The program ends once the upgrade is done."), this);
    auto *spinner = new Loading(this);
    spinner->setFixedSize(72, 72);
    auto *giveUp = new QPushButton(tr("Break the upgrade off"), this);
    giveUp->setObjectName(QStringLiteral("btnWhite"));
    giveUp->setAutoDefault(false); // a stray Enter does not end it
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(30, 30, 30, 30);
    column->addWidget(text, 0, Qt::AlignCenter);
    column->addWidget(spinner, 0, Qt::AlignCenter);
    column->addWidget(giveUp, 0, Qt::AlignCenter);
    connect(giveUp, &QPushButton::clicked, &upgrade, [this, &upgrade] {
        const QPointer<Upgrade> alive(&upgrade);
        const QString question = tr("Break the upgrade off? The UPS may be left without firmware.");
        if (MsgBox::ask(this, MsgBox::Question, question) && alive)
            upgrade.abandon();
    });
    connect(&upgrade, &QObject::destroyed, this, &QObject::deleteLater);
}
