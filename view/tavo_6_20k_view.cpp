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

// A list, and the rows that fill it.
struct tavo_6_20k_View::Page
{
    ParameterList tavoViewData::*list;
    Rows<ParameterRow> ParameterPages::*rows;
};

// clang-format off
const tavo_6_20k_View::Page tavo_6_20k_View::pages[] = {
    { &tavo_6_20k_View::m_deviceData,    &ParameterPages::device        },
    { &tavo_6_20k_View::m_batteryData,   &ParameterPages::battery       },
    { &tavo_6_20k_View::m_recInvData,    &ParameterPages::recInv        },
    { &tavo_6_20k_View::m_inputData,     &ParameterPages::input         },
    { &tavo_6_20k_View::m_outputData,    &ParameterPages::output        },
    { &tavo_6_20k_View::m_bypassData,    &ParameterPages::bypass        },
    { &tavo_6_20k_View::m_basicConfig,   &ParameterPages::basicConfig   },
    { &tavo_6_20k_View::m_batteryConfig, &ParameterPages::batteryConfig },
    { &tavo_6_20k_View::m_adjustConfig,  &ParameterPages::adjustConfig  },
    { &tavo_6_20k_View::m_specialConfig, &ParameterPages::specialConfig },
    { &tavo_6_20k_View::m_devInfoConfig, &ParameterPages::devInfoConfig },
};
// clang-format on

tavo_6_20k_View::tavo_6_20k_View(tavoViewData *parent)
    : tavoViewData(parent)
{
    const Family &family = deviceFamily();
    const char *const context = family.parameterContext;
    m_devCode = family.deviceCode;
    for (const Page &page : pages) {
        for (const ParameterRow &row : family.pages.*page.rows) {
            ParameterInformation *record =
                addDataDesc(this->*page.list, translated(context, row.label), QStringLiteral("-"),
                            translated(context, row.unit), row.scale, row.min, row.max);
            record->dataId = row.dataId;
            record->type = row.type;
            record->length = row.length;
            addOptions(*record, context, row.options);
        }
    }
    for (const EventRow &row : family.events)
        m_alarmList.append(translated("tavoFont", row.text));
}

tavo_6_20k_View::~tavo_6_20k_View()
{
    for (const Page &page : pages)
        qDeleteAll(this->*page.list);
}
