#include "tavofont.h"

#include "eventtexts.h"

#include <QMutexLocker>

namespace {

// clang-format off
constexpr const char *dataLogTitles[] = {
    QT_TRANSLATE_NOOP("tavoFont", "Battery state"),
    QT_TRANSLATE_NOOP("tavoFont", "Time on battery(s)"),
    QT_TRANSLATE_NOOP("tavoFont", "Remaining battery time(Min)"),
    QT_TRANSLATE_NOOP("tavoFont", "Remaining battery capacity(%)"),
    QT_TRANSLATE_NOOP("tavoFont", "Battery voltage(V)"),
    QT_TRANSLATE_NOOP("tavoFont", "Battery current(A)"),
    QT_TRANSLATE_NOOP("tavoFont", "Battery temperature(C)"),
    QT_TRANSLATE_NOOP("tavoFont", "Number of mains failure"),
    QT_TRANSLATE_NOOP("tavoFont", "Input voltage(V)"),
    QT_TRANSLATE_NOOP("tavoFont", "Input current(A)"),
    QT_TRANSLATE_NOOP("tavoFont", "Input frequency(Hz)"),
    QT_TRANSLATE_NOOP("tavoFont", "Input power(W)"),
    QT_TRANSLATE_NOOP("tavoFont", "Output mode"),
    QT_TRANSLATE_NOOP("tavoFont", "Output frequency(Hz)"),
    QT_TRANSLATE_NOOP("tavoFont", "Output voltage(V)"),
    QT_TRANSLATE_NOOP("tavoFont", "Output current(A)"),
    QT_TRANSLATE_NOOP("tavoFont", "Output power(W)"),
    QT_TRANSLATE_NOOP("tavoFont", "Output load(%)"),
    QT_TRANSLATE_NOOP("tavoFont", "Bypass frequency(Hz)"),
    QT_TRANSLATE_NOOP("tavoFont", "Bypass voltage(V)"),
    QT_TRANSLATE_NOOP("tavoFont", "Bypass current(A)"),
    QT_TRANSLATE_NOOP("tavoFont", "Bypass power(W)"),
    QT_TRANSLATE_NOOP("tavoFont", "Input voltage R/S/T(V)"),
    QT_TRANSLATE_NOOP("tavoFont", "Input current R/S/T(A)"),
    QT_TRANSLATE_NOOP("tavoFont", "Input frequency R/S/T(Hz)"),
    QT_TRANSLATE_NOOP("tavoFont", "Input power R/S/T(W)"),
    QT_TRANSLATE_NOOP("tavoFont", "Output voltage R/S/T(V)"),
    QT_TRANSLATE_NOOP("tavoFont", "Output current R/S/T(A)"),
    QT_TRANSLATE_NOOP("tavoFont", "Output power R/S/T(W)"),
    QT_TRANSLATE_NOOP("tavoFont", "Output load R/S/T(%)"),
    QT_TRANSLATE_NOOP("tavoFont", "Bypass voltage R/S/T(V)"),
    QT_TRANSLATE_NOOP("tavoFont", "Bypass current R/S/T(A)"),
    QT_TRANSLATE_NOOP("tavoFont", "Bypass power R/S/T(W)"),
};

constexpr const char *batteryStates[] = {
    QT_TRANSLATE_NOOP("tavoFont", "Disconnect"),
    QT_TRANSLATE_NOOP("tavoFont", "Standby"),
    QT_TRANSLATE_NOOP("tavoFont", "Equalized charge"),
    QT_TRANSLATE_NOOP("tavoFont", "Float charge"),
    QT_TRANSLATE_NOOP("tavoFont", "Discharge"),
};

constexpr const char *outputModes[] = {
    QT_TRANSLATE_NOOP("tavoFont", "None"),
    QT_TRANSLATE_NOOP("tavoFont", "Load on bypass"),
    QT_TRANSLATE_NOOP("tavoFont", "Load on inverter"),
    QT_TRANSLATE_NOOP("tavoFont", "Load on other"),
};

enum class Form { Value, Phases, Temperature, OutputMode, BatteryState };

struct Column
{
    int title;   // index into dataLogTitles
    Form form;
    int id;      // data identifier of the value, or of phase R
    int phaseId; // Phases: identifier of the number of phases
};

constexpr Column columns[] = {
    {  8, Form::Phases,       4133, 4132 },
    { 10, Form::Phases,       4139, 4132 },
    { 19, Form::Phases,       4193, 4192 },
    { 18, Form::Value,        4191, 0    },
    { 14, Form::Phases,       4164, 4163 },
    { 15, Form::Phases,       4167, 4163 },
    { 16, Form::Phases,       4170, 4163 },
    { 17, Form::Phases,       4173, 4163 },
    { 13, Form::Value,        4162, 0    },
    { 12, Form::OutputMode,   4161, 0    },
    {  3, Form::Value,        4117, 0    },
    {  4, Form::Value,        4105, 0    },
    {  5, Form::Value,        4106, 0    },
    {  6, Form::Temperature,  4107, 0    },
    {  0, Form::BatteryState, 4101, 0    },
};
// clang-format on

// Readings below it come from a sensor that is not there.
constexpr int lowestTemperature = -10;

using Data = QMap<int, QVariant>;

QString valueText(const Data &data, int id)
{
    return QString::asprintf("%.1f", double(data.value(id).toFloat()));
}

QString phasesText(const Data &data, const Column &column)
{
    if (data.value(column.phaseId).toInt() != 3)
        return valueText(data, column.id);
    return valueText(data, column.id) + QLatin1Char('/') + valueText(data, column.id + 1)
        + QLatin1Char('/') + valueText(data, column.id + 2);
}

QString temperatureText(const Data &data, int id)
{
    return data.value(id).toInt() < lowestTemperature ? QStringLiteral("-") : valueText(data, id);
}

// Truncated towards zero; whatever has no text, not-a-number included, reads as the first.
QString stateText(const QVector<QString> &texts, float state)
{
    const bool known = state > -1.0f && state < float(texts.size());
    return texts.at(known ? int(state) : 0);
}

QString modeText(const QVector<QString> &texts, int mode)
{
    return texts.at(mode >= 0 && mode < texts.size() ? mode : 0);
}

} // namespace

std::atomic<tavoFont *> tavoFont::m_instance { nullptr };

tavoFont::tavoFont(QObject *parent)
    : QObject(parent)
{
    for (const char *title : dataLogTitles)
        m_dataLogTexts.append(tr(title));
    for (const char *state : batteryStates)
        m_batteryStates.append(tr(state));
    for (const char *mode : outputModes)
        m_outputModes.append(tr(mode));
    // An empty text stays so: tr("") would give the catalogue's header.
    for (const EventTextRow &row : eventTextRows)
        m_eventTexts.append(*row.appear ? tr(row.appear) : QString());
    for (const EventTextRow &row : eventTextRows)
        m_eventTexts.append(tr(row.disappear));
}

tavoFont *tavoFont::instance()
{
    if (tavoFont *font = m_instance.load(std::memory_order_acquire))
        return font;
    static QMutex mutex;
    const QMutexLocker lock(&mutex);
    if (!m_instance.load(std::memory_order_relaxed))
        m_instance.store(new tavoFont, std::memory_order_release);
    return m_instance.load(std::memory_order_relaxed);
}

QList<QString> tavoFont::getDataLogDesc()
{
    QList<QString> titles;
    for (const Column &column : columns)
        titles.append(m_dataLogTexts.at(column.title));
    return titles;
}

QList<QString> tavoFont::changeLogData(QMap<int, QVariant> data)
{
    QList<QString> row;
    for (const Column &column : columns) {
        switch (column.form) {
        case Form::Value:
            row.append(valueText(data, column.id));
            break;
        case Form::Phases:
            row.append(phasesText(data, column));
            break;
        case Form::Temperature:
            row.append(temperatureText(data, column.id));
            break;
        case Form::OutputMode:
            row.append(modeText(m_outputModes, data.value(column.id).toInt()));
            break;
        case Form::BatteryState:
            row.append(stateText(m_batteryStates, data.value(column.id).toFloat()));
            break;
        }
    }
    return row;
}

void tavoFont::flushData(QMap<int, QVariant> data)
{
    const QMutexLocker lock(&m_mutex);
    m_lastData = data;
}
