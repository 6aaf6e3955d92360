#include "tavoviewdata.h"

tavoViewData::tavoViewData(QObject *parent)
    : QObject(parent)
{
}

int tavoViewData::getDevCode() const
{
    return m_devCode;
}

tavoViewData::ParameterList tavoViewData::getDeviceData() const
{
    return m_deviceData;
}

tavoViewData::ParameterList tavoViewData::getBatteryData() const
{
    return m_batteryData;
}

tavoViewData::ParameterList tavoViewData::getRecInvData() const
{
    return m_recInvData;
}

tavoViewData::ParameterList tavoViewData::getInputData() const
{
    return m_inputData;
}

tavoViewData::ParameterList tavoViewData::getOutputData() const
{
    return m_outputData;
}

tavoViewData::ParameterList tavoViewData::getBypassData() const
{
    return m_bypassData;
}

tavoViewData::ParameterList tavoViewData::getBasicConfig() const
{
    return m_basicConfig;
}

tavoViewData::ParameterList tavoViewData::getBatteryConfig() const
{
    return m_batteryConfig;
}

tavoViewData::ParameterList tavoViewData::getAdjustConfig() const
{
    return m_adjustConfig;
}

tavoViewData::ParameterList tavoViewData::getSpecialConfig() const
{
    return m_specialConfig;
}

tavoViewData::ParameterList tavoViewData::getDevInfoConfig() const
{
    return m_devInfoConfig;
}

QList<QString> tavoViewData::getAlarmList() const
{
    return m_alarmList;
}

tavoViewData::ParameterList tavoViewData::settings() const
{
    return getBasicConfig() + getBatteryConfig() + getAdjustConfig() + getDevInfoConfig();
}

ParameterInformation *tavoViewData::addDataDesc(ParameterList &list, const QString &name,
                                                const QString &value, const QString &unit,
                                                float scale, int min, int max)
{
    auto *record = new ParameterInformation;
    record->name = name;
    record->value = value;
    record->unit = unit;
    record->scale = scale;
    record->min = min;
    record->max = max;
    list.append(record);
    return record;
}

ParameterInformation *tavoViewData::addDataDesc(ParameterList &list, const QString &name,
                                                const QString &value, const QString &unit, int min,
                                                int max)
{
    return addDataDesc(list, name, value, unit, 1.0f, min, max);
}

ParameterInformation *tavoViewData::addDataDesc(ParameterList &list, const QString &name,
                                                const QString &value, const QString &unit)
{
    return addDataDesc(list, name, value, unit, 0.0f, 0, 0);
}
