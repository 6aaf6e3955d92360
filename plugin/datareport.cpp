#include "datareport.h"

#include <limits>

namespace {

constexpr int threePhases = 3; // value of a number of phases

} // namespace

int integerOf(const QVariant &value)
{
    // What a report holds; a tenth of the time that QVariant takes.
    const bool isFloat = value.userType() == QMetaType::Float;
    const float point = isFloat ? *static_cast<const float *>(value.constData()) : 0;
    const double number = isFloat ? double(point) : value.toDouble();
    // Written so that NaN fails too: converting what does not fit is undefined.
    const bool fits =
        number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max();
    if (!fits)
        return 0;
    return isFloat ? int(qRound64(point)) : value.toInt();
}

int integerAt(const DataReport &report, int id)
{
    const auto point = report.constFind(id);
    return point != report.constEnd() ? integerOf(*point) : 0;
}

float numberAt(const DataReport &report, int id)
{
    return report.value(id).toFloat();
}

QString textAt(const DataReport &report, int id, int length)
{
    QByteArray buffer;
    for (int i = 0; i < length; ++i) {
        const int code = integerAt(report, id + i);
        if (code > 0 && code < 0x80)
            buffer += char(code);
        else if (code != 0)
            buffer += QString(QChar(static_cast<ushort>(code))).toUtf8();
    }
    // A code above 16 bits may leave a NUL: the text ends there.
    return QString::fromUtf8(buffer.trimmed().constData());
}

QString decimalText(float value, int decimals)
{
    return QString::number(static_cast<double>(value), 'f', decimals);
}

QString decimalAt(const DataReport &report, int id, int decimals)
{
    return decimalText(numberAt(report, id), decimals);
}

bool hasThreePhases(const DataReport &report, int phaseId)
{
    return phaseId != 0 && integerAt(report, phaseId) == threePhases;
}

QString phasesAt(const DataReport &report, int id, int decimals)
{
    return decimalAt(report, id, decimals) + QLatin1Char('/') + decimalAt(report, id + 1, decimals)
        + QLatin1Char('/') + decimalAt(report, id + 2, decimals);
}

QString measuredAt(const DataReport &report, int id, int phaseId, int decimals)
{
    return hasThreePhases(report, phaseId) ? phasesAt(report, id, decimals)
                                           : decimalAt(report, id, decimals);
}
