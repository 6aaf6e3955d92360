#include "latestvalues.h"

#include <cstring>

namespace {

// Compares bits: an unordered value equals itself.
bool holds(const QVariant &point, float value)
{
    return std::memcmp(point.constData(), &value, sizeof value) == 0;
}

} // namespace

void LatestValues::store(int id, float value)
{
    auto point = m_next;
    if (point == m_values.constEnd() || point.key() != id)
        point = m_values.constFind(id);
    // A host that holds the last report shares the values: one that stays spares the copy.
    if (point == m_values.constEnd() || !holds(*point, value))
        point = m_values.insert(point, id, value);
    m_next = ++point;
}

void LatestValues::writeTo(QVariantMap &information)
{
    if (m_keys.size() != m_values.size()) {
        m_keys.clear();
        for (auto point = m_values.keyBegin(); point != m_values.keyEnd(); ++point)
            m_keys.append(QString::number(*point, 10));
    }
    // Identifiers of as many digits sort alike as numbers and as texts.
    auto entry = information.begin();
    auto key = m_keys.constBegin();
    for (const QVariant &value : qAsConst(m_values)) {
        if (entry == information.end() || entry.key() != *key)
            entry = information.find(*key);
        if (entry == information.end())
            entry = information.insert(*key, value);
        else
            *entry = value;
        ++entry;
        ++key;
    }
}
