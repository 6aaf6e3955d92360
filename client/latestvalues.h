#pragma once

#include <QMap>
#include <QStringList>
#include <QVariant>

/** Data identifier -> value, a float; what a report carries. */
using DataStore = QMap<int, QVariant>;

/**
 * The latest value of every data identifier that the driver has delivered; none is ever dropped.
 *
 * A driver delivers its identifiers in much the same order in every cycle, so each value is first
 * looked for behind the one before it, and the texts of the identifiers are made only once: both
 * cost more than all the rest of a cycle.
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
    const DataStore &all() const { return m_values; }

    /** Sets one entry of `information` per value, its key the identifier in decimal. */
    void writeTo(QVariantMap &information);

private:
    DataStore m_values;
    DataStore::const_iterator m_next = m_values.constEnd(); // behind the value stored last
    QStringList m_keys;                                     // of m_values, as far as written once
};
