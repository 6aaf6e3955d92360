#pragma once

#include "datareport.h"

/**
 * The latest value of every data identifier that the driver has delivered; none is ever dropped.
 *
 * A driver delivers its identifiers in much the same order in every cycle, so each value is first
 * looked for behind the one before it, and the texts of the identifiers are made only once. A host
 * that keeps each report until the next makes two maps take turns. All three would cost more than
 * the rest of a cycle.
 *
 * Threads: one.
 */
class LatestValues
{
public:
    LatestValues() = default;
    LatestValues(const LatestValues &) = delete;
    LatestValues &operator=(const LatestValues &) = delete;

    void store(int id, float value);

    /** All values; a copy shares them until one changes. */
    const DataReport &all() const { return m_values; }

    /** The same, for a host that may keep it. */
    const DataReport &report()
    {
        m_isReported = true;
        return m_values;
    }

    /** Sets one entry of `information` per value, its key the identifier in decimal. */
    void writeTo(QVariantMap &information) const;

private:
    DataReport::const_iterator change(DataReport::const_iterator point, float value);
    void takeTurns();

    DataReport m_values;
    DataReport m_spare;        // for the next turn; empty unless the host keeps reports
    bool m_isReported = false; // with no change since
    DataReport::const_iterator m_next = m_values.constEnd(); // behind the value stored last
};
