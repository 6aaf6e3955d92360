#include "markdown.h"
#include "sections.h"

#include <algorithm>

namespace {

QString option(const ParameterRow &row, int value)
{
    for (const OptionRow &option : row.options) {
        if (static_cast<int>(option.value) == value)
            return QString::fromUtf8(option.text);
    }
    return {};
}

QString state(Rows<const char *> states, int value)
{
    return value < states.size() ? QString::fromUtf8(states[value]) : QString();
}

Rows<const char *> overviewStates(const Family &family, int id)
{
    for (const DiagramLineRow &row : family.diagram.lines) {
        if (row.dataId == id && row.kind == LineKind::State)
            return row.states;
    }
    return {};
}

Rows<const char *> dataLogStates(const Family &family, int id)
{
    for (const DataLogColumn &column : family.dataLogColumns) {
        if (column.dataId == id)
            return column.states;
    }
    return {};
}

struct MeaningRow
{
    DeviceState state;
    const char *text;
};

constexpr MeaningRow meanings[] = {
    { DeviceState::Unknown, "" },
    { DeviceState::Normal, "normal" },
    { DeviceState::Eco, "on bypass on purpose, inverter at hand" },
    { DeviceState::Starting, "starting" },
    { DeviceState::Standby, "standby" },
    { DeviceState::Testing, "testing the battery" },
    { DeviceState::OnBypass, "on bypass" },
    { DeviceState::OnBattery, "on battery" },
    { DeviceState::Fault, "fault" },
    { DeviceState::Shutdown, "shut down" },
    { DeviceState::OutputOff, "output off" },
};

// What the view's banner goes by; nothing for other identifiers.
QString meaning(const StateTables &tables, int id, int value)
{
    const Rows<StateRow> rows = id == tables.modeId ? tables.modes
        : id == tables.outputId                     ? tables.outputs
                                                    : Rows<StateRow>();
    for (const StateRow &row : rows) {
        if (row.value != value)
            continue;
        for (const MeaningRow &known : meanings) {
            if (known.state == row.state)
                return QString::fromUtf8(known.text);
        }
    }
    return {};
}

void addStates(const Family &family, const ParameterRow &row, QList<QStringList> &rows)
{
    const Rows<const char *> overview = overviewStates(family, row.dataId);
    const Rows<const char *> logged = dataLogStates(family, row.dataId);
    const int count = qMax(row.options.size(), qMax(overview.size(), logged.size()));
    for (int value = 0; value < count; ++value)
        rows.append({ QString::number(row.dataId), QString::number(value), option(row, value),
                      state(overview, value), state(logged, value),
                      meaning(family.states, row.dataId, value) });
}

} // namespace

QString stateSection(const Family &family)
{
    const ParameterPages &pages = family.pages;
    QList<QStringList> rows;
    for (const Rows<ParameterRow> &page :
         { pages.device, pages.battery, pages.recInv, pages.input, pages.output, pages.bypass }) {
        for (const ParameterRow &row : page) {
            if (row.type == OptionValue)
                addStates(family, row, rows);
        }
    }
    std::stable_sort(rows.begin(), rows.end(), [](const QStringList &a, const QStringList &b) {
        return a.first() < b.first();
    });
    return QStringLiteral("## States and modes\n\n\"Means\" is what the view's banner goes by.\n\n")
        + Markdown::table({ QStringLiteral("Identifier"), QStringLiteral("Value"),
                            QStringLiteral("\"RT-data\""), QStringLiteral("\"Overview\""),
                            QStringLiteral("Data log"), QStringLiteral("Means") },
                          rows);
}
