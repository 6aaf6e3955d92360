// Ends its process, after the microseconds that it is told, while threads use all of comm: as a host
// does that calls exit() with running clients. Ends with 0 unless a thread trips over what is gone.
#include "portmanage.h"
#include "ptypair.h"
#include "stopsource.h"
#include "tcpconnect.h"

#include <cstdlib>
#include <functional>
#include <QCoreApplication>
#include <QTcpSocket>
#include <thread>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

void keepDoing(const std::function<void(int round)> &work)
{
    // Like a client's, it is made before the thread, and it is there for as long as the thread.
    const auto *const source = new StopSource;
    std::thread([work, source] {
        const StopSource::Scope scope(*source);
        for (int round = 0;; ++round)
            work(round);
    }).detach();
}

} // namespace

int main(int argc, char **argv)
{
    // Not on the stack: a host that calls exit() does not end main() first.
    new QCoreApplication(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    const PtyPair line;
    for (const QString &name : { line.name(), QStringLiteral("absent") }) {
        keepDoing([name](int round) {
            SerialPort *port = PortManage::instance()->getLockedPort(name);
            port->writeData("x", round % 2);
            port->UnLock();
            PortManage::instance()->ReOpen(name);
        });
    }
    for (const char *host : { "127.0.0.1", "no.such.host.invalid" }) {
        keepDoing([host](int) {
            QTcpSocket socket;
            static_cast<void>(connectToPeer(socket, QString::fromLatin1(host), 1, 20ms));
        });
    }
    usleep(useconds_t(argc > 1 ? atoi(argv[1]) : 0));
    exit(0);
}
