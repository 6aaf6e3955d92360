#include "tavo_6_20k_view.h"

#include "alarmtexts.h"
#include "devicepages.h"

namespace {

constexpr int FamilyCode = 299;

// The texts are marked in the tables and translated here, in the family's context.
QString translated(const char *text)
{
    return *text == '\0' ? QString() : tavo_6_20k_View::tr(text);
}

void addOptions(ParameterInformation &record, const OptionList &options)
{
    QStringList texts;
    QList<float> values;
    for (std::size_t i = 0; i < options.count; ++i) {
        texts.append(translated(options.texts[i]));
        if (options.values)
            values.append(options.values[i]);
    }
    if (options.values)
        record.addCombo(texts, values);
    else
        record.addCombo(texts);
}

template <std::size_t Count>
void fill(tavoViewData &data, tavoViewData::ParameterList &list, const ParameterRow (&rows)[Count])
{
    for (const ParameterRow &row : rows) {
        ParameterInformation *record =
            data.addDataDesc(list, translated(row.label), QStringLiteral("-"), translated(row.unit),
                             row.scale, row.min, row.max);
        record->dataId = row.dataId;
        record->type = row.type;
        record->length = row.length;
        addOptions(*record, row.options);
    }
}

} // namespace

tavo_6_20k_View::tavo_6_20k_View(tavoViewData *parent)
    : tavoViewData(parent)
{
    m_devCode = FamilyCode;
    fill(*this, m_deviceData, DevicePages::deviceRows);
    fill(*this, m_batteryData, DevicePages::batteryRows);
    fill(*this, m_recInvData, DevicePages::recInvRows);
    fill(*this, m_inputData, DevicePages::inputRows);
    fill(*this, m_outputData, DevicePages::outputRows);
    fill(*this, m_bypassData, DevicePages::bypassRows);
    fill(*this, m_basicConfig, DevicePages::basicConfigRows);
    fill(*this, m_batteryConfig, DevicePages::batteryConfigRows);
    fill(*this, m_adjustConfig, DevicePages::adjustConfigRows);
    fill(*this, m_devInfoConfig, DevicePages::devInfoConfigRows);
    for (const char *text : AlarmTexts::texts)
        m_alarmList.append(translated(text));
}

tavo_6_20k_View::~tavo_6_20k_View()
{
    const ParameterList *const lists[] = { &m_deviceData,    &m_batteryData,   &m_recInvData,
                                           &m_inputData,     &m_outputData,    &m_bypassData,
                                           &m_basicConfig,   &m_batteryConfig, &m_adjustConfig,
                                           &m_specialConfig, &m_devInfoConfig };
    for (const ParameterList *list : lists)
        qDeleteAll(*list);
}
