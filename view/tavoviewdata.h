#pragma once

#include "parameterinformation.h"

#include <QObject>

/**
 * What the view of a model family shows: lists of parameter descriptions and the alarm texts.
 *
 * A family derives from it and fills the lists in its constructor.
 *
 * Threads:   GUI thread only.
 * Ownership: the getters' lists are copies, their records stay the property of this object; the
 *            derived class deletes them.
 */
class tavoViewData : public QObject
{
    Q_OBJECT

public:
    using ParameterList = QList<ParameterInformation *>;

    virtual int getDevCode() const;
    virtual ParameterList getDeviceData() const;
    virtual ParameterList getBatteryData() const;
    virtual ParameterList getRecInvData() const;
    virtual ParameterList getInputData() const;
    virtual ParameterList getOutputData() const;
    virtual ParameterList getBypassData() const;
    virtual ParameterList getBasicConfig() const;
    virtual ParameterList getBatteryConfig() const;
    virtual ParameterList getAdjustConfig() const;
    virtual ParameterList getSpecialConfig() const;
    virtual ParameterList getDevInfoConfig() const;
    virtual QList<QString> getAlarmList() const;

    /** The settings of all pages that are shown. */
    ParameterList settings() const;

    /** Appends a new record to `list`. The caller sets its identifier, type and options.
     *  @param min, max  raw bounds; both 0: no range */
    ParameterInformation *addDataDesc(ParameterList &list, const QString &name,
                                      const QString &value, const QString &unit, float scale,
                                      int min, int max);

    /** The same with the scale 1. */
    ParameterInformation *addDataDesc(ParameterList &list, const QString &name,
                                      const QString &value, const QString &unit, int min, int max);

    /** The same with the scale 0 and no range, for values that are only shown. */
    ParameterInformation *addDataDesc(ParameterList &list, const QString &name,
                                      const QString &value, const QString &unit);

protected:
    explicit tavoViewData(QObject *parent = nullptr);

    int m_devCode = 0;
    ParameterList m_deviceData;
    ParameterList m_batteryData;
    ParameterList m_recInvData;
    ParameterList m_inputData;
    ParameterList m_outputData;
    ParameterList m_bypassData;
    ParameterList m_basicConfig;
    ParameterList m_batteryConfig;
    ParameterList m_adjustConfig;
    ParameterList m_specialConfig;
    ParameterList m_devInfoConfig;
    QList<QString> m_alarmList;
};
