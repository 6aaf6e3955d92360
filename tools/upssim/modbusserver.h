#pragma once

#include "modbuslink.h"
#include "result.h"

#include <QString>

#include <vector>

namespace upssim {

/**
 * The simulator's ways in: Modbus TCP on a socket, Modbus RTU on a pseudo-terminal.
 *
 * Of 16 connections, the one whose last request is longest ago makes room for a new one.
 *
 * Threads:   the simulator's thread.
 * Ownership: the simulator stays the caller's and must outlive the server. Removes its symbolic
 *            link when it is deleted.
 */
class ModbusServer : public QObject
{
    Q_OBJECT

public:
    ModbusServer(Simulator &simulator, int address);
    ~ModbusServer() override;

    /** Listens on `host` (an IPv4 address).
     *  @param port  0 for any free port
     *  @return the port */
    Result<int> listen(const QString &host, int port);

    /** Opens a pseudo-terminal and leaves a symbolic link to it at `link`; replaces a symbolic
     *  link that is there, but nothing else. */
    Result<Done> openTerminal(const QString &link);

private:
    void accept();
    void makeRoom();
    void remove(ModbusLink *link);

    Simulator &m_simulator;
    const int m_address;
    ModbusContext m_listening { nullptr, modbus_free };
    Descriptor m_listener;
    std::unique_ptr<QSocketNotifier> m_listenNotifier;
    Descriptor m_terminal; // our end of what clients open, held so that the line never hangs up
    QString m_link;
    QString m_terminalName;
    std::vector<ModbusLink *> m_connections; // children
};

} // namespace upssim
