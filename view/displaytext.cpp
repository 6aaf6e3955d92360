#include "displaytext.h"

#include <cmath>

namespace {

QString dateText(const ParameterInformation &record, const DataReport &report)
{
    QStringList numbers;
    for (int i = 0; i < 3; ++i)
        numbers.append(QString::number(integerAt(report, record.dataId + i)));
    return numbers.join(QLatin1Char('/'));
}

QString optionText(const ParameterInformation &record, const DataReport &report)
{
    // Two options with one value: the one that sorts first is shown, as QMap::key() finds it.
    const QString option = record.combo.key(optionAt(record, report));
    return option.isNull() ? QString() : option + record.unit;
}

} // namespace

QString displayText(const ParameterInformation &record, const DataReport &report)
{
    switch (record.type) {
    case IntegerValue:
        return QString::number(integerAt(report, record.dataId)) + record.unit;
    case DateValue:
        return dateText(record, report) + record.unit;
    case OneDecimal:
        return decimalAt(report, record.dataId, 1) + record.unit;
    case ThreePhases:
        return phasesAt(report, record.dataId, 1) + record.unit;
    case TwoDecimals:
        return decimalAt(report, record.dataId, 2) + record.unit;
    case TextValue:
        return textAt(report, record.dataId, record.length);
    case OptionValue:
        return optionText(record, report);
    default:
        return {};
    }
}

int optionAt(const ParameterInformation &record, const DataReport &report)
{
    const auto half = record.combo.constFind(QStringLiteral("0.5"));
    const bool isHalf = half != record.combo.constEnd()
        && std::fabs(numberAt(report, record.dataId) - 0.5f) < 0.01f;
    return isHalf ? *half : integerAt(report, record.dataId);
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

void applyBatteryType(const Family &family, const tavoViewData &data, const DataReport &report)
{
    const int type = integerAt(report, family.ids.batteryType);
    if (type < 0 || type >= batteryTypeCount)
        return;
    const auto settings = data.settings();
    for (ParameterInformation *record : settings) {
        for (const CellRangeRow &row : family.cellRanges) {
            if (record->dataId != row.dataId)
                continue;
            record->min = row.byBatteryType[type].min;
            record->max = row.byBatteryType[type].max;
        }
    }
}
