#include "displaytext.h"

namespace {

constexpr int BatteryTypeId = 3045;

struct CellRange
{
    int dataId;
    int min[2]; // raw, by battery type: 0 VRLA, 1 lithium
    int max[2];
};

// clang-format off
constexpr CellRange cellRanges[] = {
    { 3007, { 210, 330 }, { 235, 415 } }, // float charge
    { 3008, { 220, 330 }, { 245, 415 } }, // boost charge
    { 3009, { 160, 260 }, { 185, 280 } }, // end of discharge at 0.6 C
    { 3010, { 165, 265 }, { 190, 285 } }, // end of discharge at 0.15 C
};
// clang-format on

QString decimal(const DataReport &report, int id, int precision)
{
    return QString::number(static_cast<double>(numberAt(report, id)), 'f', precision);
}

template <typename ToText> QString triple(const ParameterInformation &record, ToText toText)
{
    return QStringList { toText(record.dataId), toText(record.dataId + 1),
                         toText(record.dataId + 2) }
        .join(QLatin1Char('/'));
}

QString optionText(const ParameterInformation &record, const DataReport &report)
{
    // Two options with one value: the one that sorts first is shown, as QMap::key() finds it.
    const int value = integerAt(report, record.dataId);
    const QString option = record.combo.key(value);
    return option.isNull() ? QString() : option + record.unit;
}

} // namespace

QString displayText(const ParameterInformation &record, const DataReport &report)
{
    switch (record.type) {
    case IntegerValue:
        return QString::number(integerAt(report, record.dataId)) + record.unit;
    case DateValue:
        return triple(record, [&](int id) { return QString::number(integerAt(report, id)); })
            + record.unit;
    case OneDecimal:
        return decimal(report, record.dataId, 1) + record.unit;
    case ThreePhases:
        return triple(record, [&](int id) { return decimal(report, id, 1); }) + record.unit;
    case TwoDecimals:
        return decimal(report, record.dataId, 2) + record.unit;
    case TextValue:
        return textAt(report, record.dataId, record.length);
    case OptionValue:
        return optionText(record, report);
    default:
        return {};
    }
}

QString boundText(const ParameterInformation &record, int rawBound)
{
    return QString::number(static_cast<double>(static_cast<float>(rawBound) * record.scale), 'g');
}

QString rangeText(const ParameterInformation &record)
{
    if (!record.hasRange())
        return QStringLiteral("-");
    return QStringLiteral("%1-%2").arg(boundText(record, record.min),
                                       boundText(record, record.max));
}

void applyBatteryType(const QList<ParameterInformation *> &records, const DataReport &report)
{
    const int type = integerAt(report, BatteryTypeId);
    if (type != 0 && type != 1)
        return;
    for (ParameterInformation *record : records) {
        for (const CellRange &range : cellRanges) {
            if (record->dataId != range.dataId)
                continue;
            record->min = range.min[type];
            record->max = range.max[type];
        }
    }
}
