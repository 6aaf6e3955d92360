#include "upgraderun.h"

#include "loading.h"
#include "msgbox.h"

#include <QCoreApplication>
#include <QDebug>
#include <QEvent>
#include <QVBoxLayout>

#include <algorithm>

namespace {

/**
 * A busy indicator over the whole of a widget, whatever its size becomes.
 *
 * It lies beside that widget: a stack of pages would raise its new page above it.
 */
class BusyCover : public QWidget
{
public:
    explicit BusyCover(QWidget *covered)
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

protected:
    bool eventFilter(QObject *covered, QEvent *event) override
    {
        if (event->type() == QEvent::Resize || event->type() == QEvent::Move)
            setGeometry(static_cast<QWidget *>(covered)->geometry());
        return QWidget::eventFilter(covered, event);
    }
};

// Those that have not ended. Confined to the GUI thread.
QList<UpgradeRun *> &runs()
{
    static QList<UpgradeRun *> all;
    return all;
}

// Nothing was stopped, because there is nothing to stop.
bool isAbsent(ServiceError error)
{
    return error == ServiceError::UnitMissing || error == ServiceError::NotSupported;
}

} // namespace

UpgradeRun *UpgradeRun::begin(QWidget *page, const UpgradePlan &plan)
{
    auto *run = new UpgradeRun(page, plan);
    run->stopService();
    return run;
}

UpgradeRun::UpgradeRun(QWidget *page, const UpgradePlan &plan)
    : m_plan(plan)
    , m_controller(plan.service)
    , m_page(page)
    , m_cover(new BusyCover(page))
{
    runs().append(this);
    page->setEnabled(false);
    m_controller.setScope(plan.scope);
    m_controller.setAuthorization(ServiceAuthorization::Interactive);
    connect(&m_controller, &ServiceController::finished, this, &UpgradeRun::serviceDone);
    connect(&m_program, &QProcess::errorOccurred, this, &UpgradeRun::programFailed);
    connect(&m_program, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            &UpgradeRun::programFinished);
    connect(qApp, &QCoreApplication::aboutToQuit, this, &UpgradeRun::finishBeforeQuit);
}

bool UpgradeRun::isAlone() const
{
    const QList<UpgradeRun *> &all = runs();
    return std::none_of(all.begin(), all.end(), [this](const UpgradeRun *other) {
        return other != this && other->m_plan.service == m_plan.service;
    });
}

void UpgradeRun::stopService()
{
    // A start that is under way would overtake the stop: it ends first.
    for (const UpgradeRun *other : qAsConst(runs())) {
        if (other->m_isStarting && other->m_plan.service == m_plan.service) {
            connect(other, &UpgradeRun::finished, this, &UpgradeRun::stopService);
            return;
        }
    }
    m_controller.requestStop();
}

void UpgradeRun::serviceDone(ServiceAction action, const ServiceResult &result)
{
    if (action == ServiceAction::Stop)
        serviceStopped(result);
    else
        serviceStarted(result);
}

void UpgradeRun::serviceStopped(const ServiceResult &result)
{
    m_stopError = result.error;
    if (!result.ok())
        addFailure(tr("The service %1 could not be stopped: %2").arg(m_plan.service, result.text));
    if (!result.ok() && !isAbsent(result.error)) {
        startService();
        return;
    }
    m_program.setProcessChannelMode(QProcess::ForwardedChannels);
    m_program.start(m_plan.program, m_plan.arguments);
}

void UpgradeRun::programFailed(QProcess::ProcessError error)
{
    if (error != QProcess::FailedToStart)
        return; // finished() follows
    addFailure(tr("The upgrade program %1 could not be started: %2")
                   .arg(m_plan.program, m_program.errorString()));
    startService();
}

void UpgradeRun::programFinished(int exitCode, QProcess::ExitStatus status)
{
    if (status == QProcess::CrashExit)
        addFailure(tr("The upgrade program crashed."));
    else if (exitCode != 0)
        addFailure(tr("The upgrade program ended with code %1.").arg(exitCode));
    startService();
}

void UpgradeRun::startService()
{
    if (!isAlone())
        return conclude();
    m_isStarting = true;
    m_controller.requestStart();
}

void UpgradeRun::serviceStarted(const ServiceResult &result)
{
    // A service that is not there was reported when it should have been stopped.
    if (!result.ok() && !(isAbsent(result.error) && result.error == m_stopError))
        addFailure(
            tr("The service %1 could not be started again: %2").arg(m_plan.service, result.text));
    conclude();
}

void UpgradeRun::finishBeforeQuit()
{
    disconnect(&m_program, nullptr, this, nullptr);
    disconnect(&m_controller, nullptr, this, nullptr);
    if (m_program.state() != QProcess::NotRunning)
        m_program.waitForFinished(-1);
    runs().removeOne(this);
    if (isAlone() && !m_controller.start())
        qWarning("upgrade: %s", qPrintable(m_controller.errorString()));
}

void UpgradeRun::addFailure(const QString &text)
{
    qWarning("upgrade: %s", qPrintable(text));
    m_failures.append(text);
}

void UpgradeRun::conclude()
{
    disconnect(qApp, nullptr, this, nullptr);
    runs().removeOne(this);
    delete m_cover;
    if (m_page)
        m_page->setEnabled(true);
    deleteLater();
    const QPointer<QWidget> page = m_page;
    const QStringList failures = m_failures;
    emit finished(failures);
    if (page && !failures.isEmpty())
        MsgBox::ask(page, MsgBox::Notice, failures.join(QLatin1Char('\n')));
}
