#include "parameterinformation.h"

void ParameterInformation::addCombo(const QStringList &options)
{
    for (int i = 0; i < options.size(); ++i)
        combo.insert(options.at(i), i);
}

void ParameterInformation::addCombo(const QStringList &options, const QList<float> &values)
{
    const int count = qMin(options.size(), values.size());
    for (int i = 0; i < count; ++i)
        combo.insert(options.at(i), static_cast<int>(values.at(i)));
}
