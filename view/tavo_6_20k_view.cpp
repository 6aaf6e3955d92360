#include "tavo_6_20k_view.h"

#include "lookup.h"

namespace {

void addOptions(ParameterInformation &record, const char *context, Rows<OptionRow> options)
{
    QStringList texts;
    QList<float> values;
    for (const OptionRow &option : options) {
        texts.append(translated(context, option.text));
        values.append(option.value);
    }
    record.addCombo(texts, values);
}

} // namespace

tavo_6_20k_View::tavo_6_20k_View(tavoViewData *parent)
    : tavoViewData(parent)
{
    const Family &family = deviceFamily();
    m_devCode = family.deviceCode;
    const auto fill = [&](ParameterList &list, Rows<ParameterRow> rows) {
        for (const ParameterRow &row : rows) {
            const char *const context = family.parameterContext;
            ParameterInformation *record =
                addDataDesc(list, translated(context, row.label), QStringLiteral("-"),
                            translated(context, row.unit), row.scale, row.min, row.max);
            record->dataId = row.dataId;
            record->type = row.type;
            record->length = row.length;
            addOptions(*record, context, row.options);
        }
    };
    fill(m_deviceData, family.pages.device);
    fill(m_batteryData, family.pages.battery);
    fill(m_recInvData, family.pages.recInv);
    fill(m_inputData, family.pages.input);
    fill(m_outputData, family.pages.output);
    fill(m_bypassData, family.pages.bypass);
    fill(m_basicConfig, family.pages.basicConfig);
    fill(m_batteryConfig, family.pages.batteryConfig);
    fill(m_adjustConfig, family.pages.adjustConfig);
    fill(m_specialConfig, family.pages.specialConfig);
    fill(m_devInfoConfig, family.pages.devInfoConfig);
    for (const EventRow &row : family.events)
        m_alarmList.append(translated("tavoFont", row.text));
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
