#include "dialogs/settingvalue.h"

#include <cmath>
#include <limits>

namespace {

// A float counts in ones up to here.
constexpr float largestWhole = 16777216.0f;
constexpr double largestFloat = std::numeric_limits<float>::max();

} // namespace

bool nearlyEqual(float a, float b)
{
    return std::fabs(a - b) * 100000.0f <= std::fmin(std::fabs(a), std::fabs(b));
}

float typedNumber(const QString &text)
{
    bool ok = false;
    const double number = text.toDouble(&ok); // always the C locale
    const bool isOverflow = !ok && std::isinf(number);
    const bool isWord = std::isinf(number) && ok; // "inf" is no number that a user means
    if (isOverflow || (ok && std::fabs(number) > largestFloat && !isWord))
        return std::copysign(std::numeric_limits<float>::infinity(), number < 0 ? -1.0f : 1.0f);
    return ok && !isWord && !std::isnan(number) ? static_cast<float>(number) : 0.0f;
}

float rawFromTyped(float typed, float scale)
{
    if (nearlyEqual(scale, 1.0f))
        return typed;
    if (nearlyEqual(scale, 0.1f))
        return typed * 10.0f;
    if (nearlyEqual(scale, 0.01f))
        return typed * 100.0f;
    return scale == 0.0f ? std::numeric_limits<float>::quiet_NaN() : typed / scale;
}

float rawFromOption(int value, const QString &text, float scale)
{
    float raw = static_cast<float>(value);
    if (value == 0 && text == QLatin1String("0.5"))
        raw = 0.5f;
    return scale == 0.0f ? raw : raw / scale;
}

bool isSendable(float raw)
{
    return std::fabs(raw) <= largestWhole; // false for NaN
}

int roundedRaw(float raw)
{
    return isSendable(raw) ? static_cast<int>(std::floor(static_cast<double>(raw) + 0.5)) : 0;
}

QString requestText(const ParameterInformation &record, const QString &text, int raw)
{
    const QString value =
        record.type == TextValue ? text.left(record.length) : QString::number(raw);
    // Not with arg(): a text may hold a place marker of its own.
    return QString::number(record.dataId) + QLatin1Char(',') + value;
}
