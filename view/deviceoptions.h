#pragma once

#include "parameterrow.h"

#include <QCoreApplication>

/**
 * The option lists of the 6-20 kVA models' parameters.
 *
 * A value is part of the device protocol: lists in an odd order, and the parameters whose
 * "Enable" is 0, are so on purpose.
 */
class DeviceOptions
{
    Q_DECLARE_TR_FUNCTIONS(tavo_6_20k_View)

protected:
    // clang-format off
    static constexpr const char *workingModeTexts[] = {
        QT_TR_NOOP("Fault and alarm clear"),
        QT_TR_NOOP("Power on"),
        QT_TR_NOOP("Standby"),
        QT_TR_NOOP("Bypass"),
        QT_TR_NOOP("Online"),
        QT_TR_NOOP("Battery"),
        QT_TR_NOOP("Battery test"),
        QT_TR_NOOP("Fault"),
        QT_TR_NOOP("Frequency conversion"),
        QT_TR_NOOP("ECO"),
        QT_TR_NOOP("Shutdown"),
        QT_TR_NOOP("Test"),
    };
    static constexpr OptionList workingMode = numbered(workingModeTexts);

    static constexpr const char *batteryStatusTexts[] = {
        QT_TR_NOOP("Disconnect"),
        QT_TR_NOOP("Standby"),
        QT_TR_NOOP("Equalized charge"),
        QT_TR_NOOP("Float charge"),
        QT_TR_NOOP("Discharge"),
    };
    static constexpr OptionList batteryStatus = numbered(batteryStatusTexts);

    static constexpr const char *inverterStatusTexts[] = {
        QT_TR_NOOP("Off"),
        QT_TR_NOOP("Soft start"),
        QT_TR_NOOP("Normal run"),
    };
    static constexpr OptionList inverterStatus = numbered(inverterStatusTexts);

    static constexpr const char *rectifierStatusTexts[] = {
        QT_TR_NOOP("Off"),
        QT_TR_NOOP("Soft start"),
        QT_TR_NOOP("PFC mode"),
        QT_TR_NOOP("Battery mode"),
    };
    static constexpr OptionList rectifierStatus = numbered(rectifierStatusTexts);

    static constexpr const char *outputLoadStatusTexts[] = {
        QT_TR_NOOP("None"),
        QT_TR_NOOP("Load on bypass"),
        QT_TR_NOOP("Load on inverter"),
        QT_TR_NOOP("Load on other"),
    };
    static constexpr OptionList outputLoadStatus = numbered(outputLoadStatusTexts);

    static constexpr const char *bypassStateTexts[] = {
        QT_TR_NOOP("Abnormal"),
        QT_TR_NOOP("Normal"),
    };
    static constexpr OptionList bypassState = numbered(bypassStateTexts);

    static constexpr const char *systemWorkModeTexts[] = {
        QT_TR_NOOP("Stand alone"),
        QT_TR_NOOP("Parallel operation"),
        QT_TR_NOOP("ECO"),
        QT_TR_NOOP("Parallels ECO"),
        QT_TR_NOOP("Self ageing"),
    };
    static constexpr float systemWorkModeValues[] = { 1, 2, 4, 6, 8 };
    static constexpr OptionList systemWorkMode = valued(systemWorkModeTexts, systemWorkModeValues);

    static constexpr const char *ratedPowerTexts[] = {
        QT_TR_NOOP("6000"),
        QT_TR_NOOP("10000"),
        QT_TR_NOOP("20000"),
    };
    static constexpr float ratedPowerValues[] = { 6000, 10000, 20000 };
    static constexpr OptionList ratedPower = valued(ratedPowerTexts, ratedPowerValues);

    static constexpr const char *ratedVoltageTexts[] = {
        QT_TR_NOOP("100"),
        QT_TR_NOOP("110"),
        QT_TR_NOOP("120"),
        QT_TR_NOOP("125"),
        QT_TR_NOOP("200"),
        QT_TR_NOOP("208"),
        QT_TR_NOOP("220"),
        QT_TR_NOOP("230"),
        QT_TR_NOOP("240"),
    };
    static constexpr float ratedVoltageValues[] = { 100, 110, 120, 125, 200, 208, 220, 230, 240 };
    static constexpr OptionList ratedVoltage = valued(ratedVoltageTexts, ratedVoltageValues);

    static constexpr const char *ratedFrequencyTexts[] = {
        QT_TR_NOOP("50"),
        QT_TR_NOOP("60"),
    };
    static constexpr float ratedFrequencyValues[] = { 50, 60 };
    static constexpr OptionList ratedFrequency = valued(ratedFrequencyTexts, ratedFrequencyValues);

    static constexpr const char *disableFirstTexts[] = {
        QT_TR_NOOP("Disable"),
        QT_TR_NOOP("Enable"),
    };
    static constexpr OptionList disableFirst = numbered(disableFirstTexts);

    static constexpr const char *derateOutputPfTexts[] = {
        QT_TR_NOOP("1"),
        QT_TR_NOOP("0.9"),
    };
    static constexpr OptionList derateOutputPf = numbered(derateOutputPfTexts);

    static constexpr const char *enableFirstTexts[] = {
        QT_TR_NOOP("Enable"),
        QT_TR_NOOP("Disable"),
    };
    static constexpr OptionList enableFirst = numbered(enableFirstTexts);

    static constexpr const char *connectionTexts[] = {
        QT_TR_NOOP("Unconnect"),
        QT_TR_NOOP("Connect"),
    };
    static constexpr OptionList connection = numbered(connectionTexts);

    static constexpr const char *snmpProtocolTexts[] = {
        QT_TR_NOOP("Modbus ascii"),
        QT_TR_NOOP("Modbus rtu"),
        QT_TR_NOOP("Megatec"),
    };
    static constexpr OptionList snmpProtocol = numbered(snmpProtocolTexts);

    static constexpr const char *batteryTypeTexts[] = {
        QT_TR_NOOP("VRLA battery"),
        QT_TR_NOOP("Lithium battery"),
    };
    static constexpr OptionList batteryType = numbered(batteryTypeTexts);

    static constexpr const char *chargeCurrentLimitTexts[] = {
        QT_TR_NOOP("0.5"),
        QT_TR_NOOP("1.0"),
        QT_TR_NOOP("2.0"),
        QT_TR_NOOP("3.0"),
        QT_TR_NOOP("4.0"),
        QT_TR_NOOP("5.0"),
        QT_TR_NOOP("6.0"),
        QT_TR_NOOP("7.0"),
        QT_TR_NOOP("8.0"),
        QT_TR_NOOP("9.0"),
        QT_TR_NOOP("10.0"),
        QT_TR_NOOP("11.0"),
        QT_TR_NOOP("12.0"),
    };
    static constexpr float chargeCurrentLimitValues[] = { 0.5f, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12 };
    static constexpr OptionList chargeCurrentLimit = valued(chargeCurrentLimitTexts, chargeCurrentLimitValues);

    static constexpr const char *bypassVoltageUpperLimitTexts[] = {
        QT_TR_NOOP("+15"),
        QT_TR_NOOP("+10"),
    };
    static constexpr OptionList bypassVoltageUpperLimit = numbered(bypassVoltageUpperLimitTexts);

    static constexpr const char *bypassVoltageLowerLimitTexts[] = {
        QT_TR_NOOP("-20"),
        QT_TR_NOOP("-10"),
        QT_TR_NOOP("-15"),
        QT_TR_NOOP("-30"),
        QT_TR_NOOP("-40"),
    };
    static constexpr OptionList bypassVoltageLowerLimit = numbered(bypassVoltageLowerLimitTexts);

    static constexpr const char *bypassFrequencyRangeTexts[] = {
        QT_TR_NOOP("+-5"),
        QT_TR_NOOP("+-1"),
        QT_TR_NOOP("+-3"),
        QT_TR_NOOP("Unlimited"),
    };
    static constexpr OptionList bypassFrequencyRange = numbered(bypassFrequencyRangeTexts);

    static constexpr const char *selfAgeingCurrentPercentTexts[] = {
        QT_TR_NOOP("30"),
        QT_TR_NOOP("40"),
        QT_TR_NOOP("50"),
        QT_TR_NOOP("60"),
        QT_TR_NOOP("70"),
        QT_TR_NOOP("80"),
        QT_TR_NOOP("90"),
        QT_TR_NOOP("100"),
    };
    static constexpr OptionList selfAgeingCurrentPercent = numbered(selfAgeingCurrentPercentTexts);

    static constexpr const char *deviceTypeSelectTexts[] = {
        QT_TR_NOOP("Input one phase"),
        QT_TR_NOOP("Input three phase"),
    };
    static constexpr OptionList deviceTypeSelect = numbered(deviceTypeSelectTexts);
    // clang-format on
};
