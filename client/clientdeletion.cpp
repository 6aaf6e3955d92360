#include "clientdeletion.h"

#include "activitygate.h"
#include "atend.h"
#include "collectthread.h"
#include "deletionbudget.h"
#include "stopsource.h"

#include <QDebug>
#include <QTimer>

namespace {

using namespace std::chrono_literals;

// After so long a driver that has not returned is worth a word; at the end of an event loop, which
// does nothing later, it is waited for so long.
constexpr auto patience = 900ms;

} // namespace

ClientDeletion::ClientDeletion(CollectThread &client, StopSource &stop, ActivityGate &gate)
    : m_client(client)
    , m_stop(stop)
    , m_gate(gate)
{
}

void ClientDeletion::requestStop()
{
    m_stop.request();
    m_client.quit();
}

void ClientDeletion::endOrPutOff()
{
    const auto again = [this] { endOrPutOff(); };
    const bool hasLoop = QThread::currentThread()->loopLevel() > 0;
    if (hasLoop && !DeletionBudget::hasTime()) {
        QTimer::singleShot(DeletionBudget::window, &m_client, again);
        return;
    }
    const auto start = std::chrono::steady_clock::now();
    const AtEnd spend([start] { DeletionBudget::spendSince(start); });
    requestStop(); // takes its time too, with a thousand clients
    // A slot or a driver may run an event loop within poll(): the cycle below it needs the client.
    if (m_gate.isInside() || !m_gate.waitIdle(hasLoop ? 0ms : patience))
        putOff();
    else if (hasLoop && m_client.isRunning())
        QTimer::singleShot(DeletionBudget::window, &m_client, again);
    else
        delete &m_client;
}

// Never by another deleteLater(): Qt drops that while the client has any event to come.
void ClientDeletion::putOff()
{
    if (!m_isPutOff) {
        m_isPutOff = true;
        QTimer::singleShot(patience, &m_client, [this] {
            qWarning() << "tavoClient" << m_client.deviceName
                       << "is deleted later: its driver has not returned yet";
        });
    }
    m_gate.whenIdle([this] {
        QMetaObject::invokeMethod(
            &m_client, [this] { endOrPutOff(); }, Qt::QueuedConnection);
    });
}
