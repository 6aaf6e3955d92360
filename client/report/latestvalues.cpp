#include "report/latestvalues.h"

#include <array>
#include <atomic>
#include <cstring>

namespace {

// Compares bits: an unordered value equals itself.
bool holds(const QVariant &point, float value)
{
    return std::memcmp(point.constData(), &value, sizeof value) == 0;
}

// Most keys were written here, and share the text.
bool isSame(const QString &key, const QString &text)
{
    return key.constData() == text.constData() || key == text;
}

// Of two that are floats; a third of the time that assigning a QVariant takes.
void setFloat(QVariant &value, const QVariant &source)
{
    std::memcpy(value.data(), source.constData(), sizeof(float));
}

// One text for all clients, each of which has some four hundred in its device information; null for
// identifiers that no driver has. Never destroyed: polling threads may outlive the end of main().
const QString *commonText(int id)
{
    static std::array<std::atomic<const QString *>, 8192> texts;
    if (id < 0 || id >= int(texts.size()))
        return nullptr;
    std::atomic<const QString *> &text = texts[std::size_t(id)];
    const QString *known = text.load(std::memory_order_acquire);
    if (known)
        return known;
    const auto *const made = new QString(QString::number(id, 10));
    if (text.compare_exchange_strong(known, made, std::memory_order_acq_rel))
        return made;
    delete made;
    return known;
}

} // namespace

void LatestValues::store(int id, float value)
{
    auto point = m_next;
    if (point == m_values.constEnd() || point.key() != id)
        point = m_values.constFind(id);
    if (point == m_values.constEnd())
        point = m_values.insert(id, value);
    else if (!holds(*point, value))
        point = change(point, value);
    m_next = ++point;
}

DataReport::const_iterator LatestValues::change(DataReport::const_iterator point, float value)
{
    if (!m_values.isDetached()) {
        const int id = point.key();
        takeTurns();
        point = m_values.constFind(id);
    } else if (m_isReported) {
        m_spare.clear(); // this host keeps nothing
    }
    m_isReported = false;
    // Nobody shares the map now. Each point was stored as a float.
    std::memcpy(const_cast<void *>(point->constData()), &value, sizeof value);
    return point;
}

// A host that holds the last report shares the values. The map of the report before is free again
// as soon as it has taken the last: to bring that up to date takes a third of making a new one.
void LatestValues::takeTurns()
{
    if (!m_spare.isDetached() || m_spare.size() != m_values.size()) {
        m_spare = m_values;
        m_values.detach();
        return;
    }
    auto latest = m_values.constBegin();
    for (QVariant &value : m_spare) {
        setFloat(value, *latest);
        ++latest;
    }
    m_values.swap(m_spare);
}

void LatestValues::writeTo(QVariantMap &information) const
{
    // Identifiers of as many digits sort alike as numbers and as texts.
    auto entry = information.begin();
    for (auto point = m_values.begin(); point != m_values.end(); ++point, ++entry) {
        const QString *const common = commonText(point.key());
        const QString own = common ? QString() : QString::number(point.key(), 10);
        const QString &key = common ? *common : own;
        if (entry == information.end() || !isSame(entry.key(), key))
            entry = information.find(key);
        if (entry == information.end())
            entry = information.insert(key, *point);
        else if (entry->userType() == QMetaType::Float)
            setFloat(*entry, *point);
        else
            *entry = *point;
    }
}
