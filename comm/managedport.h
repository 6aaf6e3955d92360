#pragma once

#include "serial/serialport.h"

#include <atomic>
#include <memory>

class LineUse;

/**
 * A serial port of the port manager, with what is to be done to it as soon as it is free.
 *
 * Who finds the line in use leaves a note instead of waiting; whoever gets the line next sees to it.
 *
 * Threads:   note() and isDue() from any; all else under the port's lock, as in SerialPort.
 * Ownership: owned by the manager.
 * Errors:    as SerialPort.
 */
class ManagedPort : public SerialPort
{
public:
    /** What is to be done; the later one in this list does what those before would. */
    enum class Due : int {
        Nothing,
        IdleClose, ///< unless the port is marked as in use
        Close,
        ReOpen, ///< with the settings that "serial.ini" then has
    };

    /** @param name  node, and key in "serial.ini" */
    explicit ManagedPort(const QString &name);
    ~ManagedPort() override;

    void note(Due due);
    bool isDue() const { return m_due.load(std::memory_order_relaxed) != Due::Nothing; }

    /** What a LinePause keeps it from stays due. */
    void doDue();
    /** Does what is due at once. @return false when that would have to wait: for the lock, for
     *  what is being sent, or for the end of a LinePause */
    bool tryDue();

    /** Refused during a LinePause, whoever asks. An open port keeps a pause from being quiet. */
    bool open(OpenMode mode) override;
    void close() override;

    /** Opens the port as "serial.ini" has it now. */
    void openAsConfigured();
    /** Does what is due, then opens the port as it was if it is closed or hung up. It stays closed
     *  when it does not open, and during a LinePause. */
    void makeReady();

private:
    const QString m_name;
    std::unique_ptr<LineUse> m_use; // while it is open
    std::atomic<Due> m_due { Due::Nothing };
};
