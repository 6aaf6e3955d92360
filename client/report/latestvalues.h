#pragma once

#include "datareport.h"

#include <QVector>

#include <vector>

/**
 * The latest value of every data identifier that the driver has delivered; none is ever dropped.
 *
 * They stand in one piece of memory, which a cycle compares with what the driver delivers, and only
 * what has changed goes into the host's map: to walk a map that has left the caches costs more than
 * the rest of a cycle. A driver delivers its identifiers in much the same order in every cycle, so
 * each is first looked for behind the one before it. A host that keeps each report until the next
 * makes two maps take turns.
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

    /** All values; the host may keep it. */
    DataReport report();

    /** Sets one entry of `information` per value, its key the identifier in decimal. */
    void writeTo(QVariantMap &information) const;

private:
    /** A map of all values. */
    struct Turn
    {
        DataReport values;
        std::vector<bool> isStale; // by position: changed since it was brought up to date
    };

    Turn made() const;
    void takeTurns();
    void bringUpToDate(Turn &turn) const;

    QVector<int> m_ids; // in ascending order; shared by clients of like devices
    std::vector<float> m_values;
    int m_next = 0;            // position behind the value stored last
    Turn m_latest;             // the map reported last
    Turn m_spare;              // for the next turn; empty unless the host keeps reports
    bool m_hasNew = false;     // identifiers that no map has yet
    bool m_hasChanged = false; // since the last report
};
