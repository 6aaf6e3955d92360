#pragma once

/** What a descriptor is taken for. */
enum class DescriptorUse {
    Needed,  ///< without it a device cannot be reached; some are left to the host all the same
    Helpful, ///< something is slower without it; half of them are left
};

/** Keeps a descriptor that has just been opened only if enough others are free: a host that finds
 *  none for a thread of its own is ended by GLib.
 *  @return `descriptor`; -1, with errno as it was or EMFILE, when there is none */
[[nodiscard]] int affordable(int descriptor, DescriptorUse use);

/** The same before opening what may take its time, so that many who try do not take all meanwhile. */
[[nodiscard]] bool isAffordable(DescriptorUse use);

/**
 * A descriptor that wakes a poll().
 *
 * Threads:   set() from any thread.
 * Ownership: owns the descriptor.
 * Errors:    there is none when half of the process's descriptors are in use, which a warning
 *            tells, once: whoever waits has to look now and then.
 */
class WakeUp
{
public:
    WakeUp();
    ~WakeUp();
    WakeUp(const WakeUp &) = delete;
    WakeUp &operator=(const WakeUp &) = delete;

    /** Readable from set() to clear(); -1 for none. */
    int descriptor() const { return m_descriptor; }

    void set() const;
    void clear() const;

private:
    int m_descriptor;
};
