#pragma once

#include <QByteArray>
#include <QSocketNotifier>

#include <functional>

namespace upssim {

class Simulator;

/**
 * Has the simulator do what comes as lines of text, until there are no more.
 *
 * Each line is answered with one: "ok" or "error", the line, and after a colon what was asked for
 * or the reason. "quit" ends the event loop.
 *
 * Threads:   the simulator's thread.
 * Ownership: simulator and descriptor stay the caller's.
 */
class Console : public QObject
{
public:
    using Say = std::function<void(const QString &)>;

    /** @param input  descriptor to read from
     *  @param say    takes the answers */
    Console(Simulator &simulator, int input, Say say);

private:
    void readInput();
    void take(const QByteArray &bytes);
    void execute(const QString &line);

    Simulator &m_simulator;
    const Say m_say;
    QSocketNotifier m_notifier;
    QByteArray m_pending;
    bool m_tooLong = false; // the line whose beginning was dropped
};

} // namespace upssim
