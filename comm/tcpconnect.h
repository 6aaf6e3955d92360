#pragma once

#include <chrono>
#include <QtGlobal>

class QString;
class QTcpSocket;

/** Connects `socket` to a Modbus TCP peer and waits for it.
 *
 *  Not QAbstractSocket::waitForConnected(): that neither ends when a client is to be deleted nor
 *  keeps its limit while a name is looked up.
 *
 *  Threads: the socket's thread; ends early when the thread's StopSource asks.
 *  @param host     IP address or host name; all its addresses are tried in turn
 *  @param timeout  for name look-up and all attempts together, which share what is left of it
 *  @return true when connected; else the socket is unconnected and the reason is logged, when it
 *          is another than the last one of this peer */
[[nodiscard]] bool connectToPeer(QTcpSocket &socket, const QString &host, quint16 port,
                                 std::chrono::milliseconds timeout);
