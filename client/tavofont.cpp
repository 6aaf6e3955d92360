#include "tavofont.h"

#include "lookup.h"

#include <QMutexLocker>

namespace {

// Readings below it come from a sensor that is not there.
constexpr int lowestTemperature = -10;

QString stateText(const QStringList &texts, int state)
{
    return texts.value(state, texts.first());
}

// Cut towards zero; whatever has no text, not-a-number included, reads as the first.
QString cutStateText(const QStringList &texts, float state)
{
    const bool known = state > -1.0f && state < float(texts.size());
    return texts.at(known ? int(state) : 0);
}

} // namespace

std::atomic<tavoFont *> tavoFont::m_instance { nullptr };

tavoFont::tavoFont(QObject *parent)
    : QObject(parent)
{
    const Family &family = deviceFamily();
    for (const char *title : family.dataLogTitles)
        m_dataLogTexts.append(tr(title));
    for (const DataLogColumn &column : family.dataLogColumns) {
        QStringList states;
        for (const char *state : column.states)
            states.append(tr(state));
        m_states.append(states);
    }
    for (const EventRow &row : family.events)
        m_eventTexts.append(row.use == EventUse::Reserved ? QString() : tr(row.text));
    for (const EventRow &row : family.events)
        m_eventTexts.append(tr(row.disappear));
}

tavoFont *tavoFont::instance()
{
    if (tavoFont *font = m_instance.load(std::memory_order_acquire))
        return font;
    static auto *const mutex = new QMutex; // never destroyed: clients may outlive main()
    const QMutexLocker lock(mutex);
    if (!m_instance.load(std::memory_order_relaxed))
        m_instance.store(new tavoFont, std::memory_order_release);
    return m_instance.load(std::memory_order_relaxed);
}

QList<QString> tavoFont::getDataLogDesc()
{
    QList<QString> titles;
    for (const DataLogColumn &column : deviceFamily().dataLogColumns)
        titles.append(m_dataLogTexts.at(column.title));
    return titles;
}

QList<QString> tavoFont::changeLogData(QMap<int, QVariant> data)
{
    const Rows<DataLogColumn> columns = deviceFamily().dataLogColumns;
    QList<QString> row;
    for (int i = 0; i < columns.size(); ++i)
        row.append(columnText(columns[i], m_states.at(i), data));
    return row;
}

QString tavoFont::columnText(const DataLogColumn &column, const QStringList &states,
                             const DataReport &data)
{
    switch (column.form) {
    case LogForm::Phases:
        return measuredAt(data, column.dataId, column.phaseId, 1);
    case LogForm::Temperature:
        if (integerAt(data, column.dataId) < lowestTemperature)
            return QStringLiteral("-");
        break;
    case LogForm::State:
        return stateText(states, integerAt(data, column.dataId));
    case LogForm::CutState:
        return cutStateText(states, numberAt(data, column.dataId));
    case LogForm::Number:
        break;
    }
    return decimalAt(data, column.dataId, 1);
}

void tavoFont::flushData(QMap<int, QVariant> data)
{
    const QMutexLocker lock(&m_mutex);
    m_lastData = data;
}
