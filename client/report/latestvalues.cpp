#include "report/latestvalues.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <iterator>

namespace {

// In a map, which take no longer than looking a key up.
constexpr std::size_t aFewSteps = 32;

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
    std::size_t position = m_next;
    if (position == m_points.size() || m_points[position].id != id)
        position = std::size_t(
            std::lower_bound(m_points.begin(), m_points.end(), id,
                             [](const Point &point, int sought) { return point.id < sought; })
            - m_points.begin());
    if (position == m_points.size() || m_points[position].id != id) {
        m_points.insert(m_points.begin() + std::ptrdiff_t(position), { id, value });
        m_hasNew = true;
    } else if (!isSame(m_points[position].value, value)) {
        m_points[position].value = value;
        m_hasChanged = true;
        for (Turn *turn : { &m_latest, &m_spare }) {
            if (position < turn->isStale.size())
                turn->isStale[position] = true;
        }
    }
    m_next = position + 1;
}

DataReport LatestValues::report()
{
    if (m_hasNew) {
        m_points.shrink_to_fit(); // they come all at once
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
        if (m_latest.values.size() != m_spare.values.size() || !m_latest.values.isDetached()) {
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
    for (const Point &point : m_points)
        turn.values.insert(turn.values.constEnd(), point.id, point.value);
    turn.isStale.resize(m_points.size());
    return turn;
}

void LatestValues::bringUpToDate(Turn &turn) const
{
    auto entry = turn.values.begin();
    std::size_t at = 0;
    for (std::size_t i = 0; i < m_points.size(); ++i) {
        if (!turn.isStale[i])
            continue;
        if (i - at < aFewSteps)
            std::advance(entry, i - at);
        else
            entry = turn.values.find(m_points[i].id);
        at = i;
        setFloat(*entry, m_points[i].value);
        turn.isStale[i] = false;
    }
}

void LatestValues::writeTo(QVariantMap &information) const
{
    // Identifiers of as many digits sort alike as numbers and as texts.
    auto entry = information.begin();
    for (const Point &point : m_points) {
        const QString *const common = commonText(point.id);
        const QString own = common ? QString() : QString::number(point.id, 10);
        const QString &key = common ? *common : own;
        if (entry == information.end() || !isSame(entry.key(), key))
            entry = information.find(key);
        if (entry == information.end())
            entry = information.insert(key, point.value);
        else if (entry->userType() == QMetaType::Float)
            setFloat(*entry, point.value);
        else
            *entry = point.value;
        ++entry;
    }
}
