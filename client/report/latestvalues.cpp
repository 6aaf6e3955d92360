#include "report/latestvalues.h"

#include "sharedwiththelast.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <iterator>

namespace {

// More than a device has. What grows bit by bit leaves small pieces that its thread keeps.
constexpr int mostExpected = 512;
// In a map, which take no longer than looking a key up.
constexpr int aFewSteps = 32;

// Compares bits: an unordered value equals itself.
bool isSame(float one, float other)
{
    return std::memcmp(&one, &other, sizeof one) == 0;
}

// Most keys were written here, and share the text.
bool isSame(const QString &key, const QString &text)
{
    return key.constData() == text.constData() || key == text;
}

// Of one that is a float and nobody else's; a third of the time that assigning a QVariant takes.
void setFloat(QVariant &variant, float value)
{
    std::memcpy(variant.data(), &value, sizeof value);
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
    int position = m_next;
    if (position == m_ids.size() || m_ids.at(position) != id)
        position = int(std::lower_bound(m_ids.cbegin(), m_ids.cend(), id) - m_ids.cbegin());
    m_next = position + 1;
    if (position == m_ids.size() || m_ids.at(position) != id) {
        if (m_ids.isEmpty()) {
            m_ids.reserve(mostExpected);
            m_values.reserve(mostExpected);
        }
        m_ids.insert(position, id);
        m_values.insert(m_values.begin() + position, value);
        m_hasNew = true;
        return;
    }
    float &known = m_values[std::size_t(position)];
    if (isSame(known, value))
        return;
    known = value;
    m_hasChanged = true;
    for (Turn *turn : { &m_latest, &m_spare }) {
        if (std::size_t(position) < turn->isStale.size())
            turn->isStale[std::size_t(position)] = true;
    }
}

DataReport LatestValues::report()
{
    if (m_hasNew) {
        m_ids.squeeze();
        m_ids = sharedWithTheLast(m_ids);
        m_values.shrink_to_fit();
        m_latest = made();
        m_spare = {};
    } else if (m_hasChanged) {
        takeTurns();
    }
    m_hasNew = m_hasChanged = false;
    return m_latest.values;
}

// A host that holds the last report shares the map. That of the report before is free again as soon
// as it has taken the last: to bring it up to date takes a third of making a new one.
void LatestValues::takeTurns()
{
    if (m_latest.values.isDetached()) {
        m_spare = {}; // this host keeps nothing
    } else {
        std::swap(m_latest, m_spare);
        if (!m_latest.values.isDetached()) { // there is none yet, or the host keeps it, too
            m_latest = made();
            return;
        }
    }
    bringUpToDate(m_latest);
}

// In ascending order, so that its nodes stand in the order in which they are walked.
LatestValues::Turn LatestValues::made() const
{
    Turn turn;
    for (int i = 0; i < m_ids.size(); ++i)
        turn.values.insert(turn.values.constEnd(), m_ids.at(i), m_values[std::size_t(i)]);
    turn.isStale.resize(m_values.size());
    return turn;
}

void LatestValues::bringUpToDate(Turn &turn) const
{
    auto entry = turn.values.begin();
    int at = 0;
    for (int i = 0; i < m_ids.size(); ++i) {
        if (!turn.isStale[std::size_t(i)])
            continue;
        if (i - at < aFewSteps)
            std::advance(entry, i - at);
        else
            entry = turn.values.find(m_ids.at(i));
        at = i;
        setFloat(*entry, m_values[std::size_t(i)]);
        turn.isStale[std::size_t(i)] = false;
    }
}

void LatestValues::writeTo(QVariantMap &information) const
{
    // Identifiers of as many digits sort alike as numbers and as texts.
    auto entry = information.begin();
    for (int i = 0; i < m_ids.size(); ++i, ++entry) {
        const float value = m_values[std::size_t(i)];
        const QString *const common = commonText(m_ids.at(i));
        const QString own = common ? QString() : QString::number(m_ids.at(i), 10);
        const QString &key = common ? *common : own;
        if (entry == information.end() || !isSame(entry.key(), key))
            entry = information.find(key);
        if (entry == information.end())
            entry = information.insert(key, value);
        else if (entry->userType() == QMetaType::Float)
            setFloat(*entry, value);
        else
            *entry = value;
    }
}
