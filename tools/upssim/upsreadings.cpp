// The measurements of the simulated UPS, as they follow from its state.

#include "kx300/identifiers.h"
#include "upsmodel.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace upssim {

using namespace registermap;
namespace Id = kx300::Id;

namespace {

constexpr int phases = 3;
constexpr double powerFactor = 0.9;
constexpr double efficiency = 0.95;
constexpr int cellsInBattery = 6; // of a 12 V battery

struct Text
{
    int id;
    int length;
    const char *text;
};

// clang-format off
constexpr Text texts[] = {
    { Id::ManufacturerText, 16, "Simulated UPS" },
    { Id::TypeText, 16, "KX300 G4 20K 33" },
    { Id::SoftwareVersionText, 16, "V1.04.07" },
    { Id::SerialNumberText, 16, "SIM3G420K000001" },
    { Id::NameText, 16, "Machine room" },
};
// clang-format on

} // namespace

void UpsModel::measure()
{
    for (const Text &text : texts)
        putText(text.id, text.length, text.text);
    measureBattery();
    measureInput();
    measureOutput();
    measureBypass();
    measureFlows();
    measureState();
}

void UpsModel::measureBattery()
{
    enum { Disconnected, AtRest, Boost, Float, Discharge };
    const bool connected = surroundings.battery;
    const bool charging = connected && rectifying();
    put(Id::BatteryStatus,
        !connected           ? Disconnected
            : discharging()  ? Discharge
            : !charging      ? AtRest
            : m_charge < 0.9 ? Boost
                             : Float);
    put(Id::TimeOnBattery, m_onBattery);
    const double drain = std::max(surroundings.load, 1.0) / 100;
    put(Id::RemainingTime,
        connected ? std::min(m_charge * surroundings.autonomy / drain / 60, 6000.0) : 0);

    const double voltage =
        connected ? cellVoltage() * cellsInBattery * setting(Id::BatteryNumbers) : 0;
    const double power =
        scaled(Id::RatedPower) * powerFactor * surroundings.load / 100 / efficiency;
    put(Id::BatteryVoltage, voltage + jitter(0.2));
    put(Id::BatteryCurrent,
        discharging()  ? -power / std::max(voltage, 1.0)
            : charging ? scaled(Id::ChargeCurrentLimit) * std::clamp((1 - m_charge) * 5, 0.05, 1.0)
                       : 0);
    put(Id::BatteryTemperature,
        connected ? 24.5 + (discharging() ? 1.5 : 0) + jitter(0.1)
                  : std::numeric_limits<double>::quiet_NaN());
    put(Id::RemainingCapacity, m_charge * 100);
    put(Id::MainsFailures, m_mainsFailures);
}

void UpsModel::measureInput()
{
    const bool live = surroundings.mains;
    const double voltage = live ? surroundings.mainsVoltage : 0;
    const double charging =
        rectifying() && surroundings.battery ? measurement(Id::BatteryCurrent) * 240 / 1000 : 0;
    const double load =
        scaled(Id::RatedPower) / 1000 * powerFactor * surroundings.load / 100 / efficiency;
    const double power = m_path == Path::Inverter && rectifying() ? load + charging : charging;
    put(Id::InputPhases, setting(Id::DeviceTypeSelect) ? phases : 1);
    putPhases(Id::InputVoltage, voltage, live ? 0.8 : 0);
    putPhases(Id::InputCurrent, live ? power * 1000 / phases / std::max(voltage, 1.0) : 0,
              live ? 0.1 : 0);
    putPhases(Id::InputFrequency, live ? surroundings.mainsFrequency : 0, live ? 0.02 : 0);
    putPhases(Id::InputPower, power / phases, 0);
    putPhases(Id::InputPowerFactor, power > 0 ? 0.99 : 0, 0);
}

void UpsModel::measureOutput()
{
    const bool on = m_path != Path::Off;
    const bool inverter = m_path == Path::Inverter;
    const double load = on ? surroundings.load : 0;
    const double apparent = scaled(Id::RatedPower) / 1000 * load / 100 / phases;
    const double voltage = inverter
        ? scaled(Id::RatedOutputVoltage) + scaled(Id::OutputVoltageAdjust)
        : on ? surroundings.mainsVoltage
             : 0;
    put(Id::OutputMode, inverter ? 2 : on ? 1 : 0);
    put(Id::OutputFrequency,
        inverter ? scaled(Id::RatedOutputFrequency)
            : on ? surroundings.mainsFrequency
                 : 0);
    put(Id::OutputPhases, phases);
    putPhases(Id::OutputVoltage, voltage, on ? 0.3 : 0);
    putPhases(Id::OutputCurrent, on ? apparent * 1000 / voltage : 0, on ? 0.2 : 0);
    putPhases(Id::OutputActivePower, apparent * powerFactor, 0);
    putPhases(Id::OutputLoad, load, on ? 0.3 : 0);
    put(Id::TotalLoad, load);
    putPhases(Id::OutputPowerFactor, on ? powerFactor : 0, 0);
    putPhases(Id::OutputApparentPower, apparent, 0);
    putPhases(Id::OutputReactivePower, apparent * std::sqrt(1 - powerFactor * powerFactor), 0);
}

void UpsModel::measureBypass()
{
    const bool live = surroundings.mains && surroundings.bypass;
    const bool used = m_path == Path::Bypass;
    const double voltage = live ? surroundings.mainsVoltage - 0.6 : 0;
    const double apparent =
        used ? scaled(Id::RatedPower) / 1000 * surroundings.load / 100 / phases : 0;
    put(Id::BypassState, bypassGood());
    put(Id::BypassFrequency, live ? surroundings.mainsFrequency + jitter(0.02) : 0);
    put(Id::BypassPhases, phases);
    putPhases(Id::BypassVoltage, voltage, live ? 0.8 : 0);
    putPhases(Id::BypassCurrent, used ? apparent * 1000 / std::max(voltage, 1.0) : 0,
              used ? 0.2 : 0);
    putPhases(Id::BypassPower, apparent * powerFactor, 0);
    putPhases(Id::BypassPowerFactor, used ? powerFactor : 0, 0);
}

void UpsModel::measureFlows()
{
    const bool inverter = m_path == Path::Inverter;
    const bool fromMains = rectifying() && (inverter || surroundings.battery);
    const bool charging = rectifying() && surroundings.battery && m_charge < 1;
    put(Id::BypassPath, m_path == Path::Bypass);
    put(Id::InputPath, fromMains);
    put(Id::RectifierPath, fromMains);
    put(Id::InverterInputPath, inverter);
    put(Id::InverterOutputPath, inverter);
    put(Id::LoadPath, m_path != Path::Off);
    put(Id::BatteryPath, discharging() || charging);
}

void UpsModel::measureState()
{
    enum { Off = 0, Running = 2, OnBattery = 3 };
    const bool inverter = m_path == Path::Inverter;
    put(Id::DeviceIdentifier, 299);
    put(Id::ModbusDecodeVersion, 1);
    put(Id::FirmwareVersion, 104);
    put(Id::InverterCurrent, inverter ? measurement(Id::OutputCurrent) * 1.02 : 0);
    put(Id::RectifierTemperature, m_inverterTemperature - 3 + jitter(0.2));
    put(Id::InverterTemperature, m_inverterTemperature + jitter(0.2));
    put(Id::RunningTime, 412 + std::floor((m_now - m_started) / 86'400));
    put(Id::WorkingMode, workingMode());
    put(Id::RectifierStatus, discharging() ? OnBattery : rectifying() ? Running : Off);
    put(Id::InverterStatus, inverter || (m_path == Path::Bypass && m_enabled) ? Running : Off);
    put(Id::BuzzerState, m_buzzer);
}

void UpsModel::put(int id, double value)
{
    m_values[std::size_t(id - firstMeasurement)] = value;
}

// Three neighbouring identifiers, each a little beside `value`.
void UpsModel::putPhases(int id, double value, double spread)
{
    for (int phase = 0; phase < phases; ++phase)
        put(id + phase, std::max(0.0, value + (phase - 1) * spread + jitter(spread)));
}

void UpsModel::putText(int id, int length, const char *text)
{
    for (int i = 0; i < length; ++i) {
        put(id + i, *text);
        text += *text ? 1 : 0;
    }
}

double UpsModel::jitter(double range)
{
    return range * (double(m_random() % 2001) / 1000 - 1);
}

} // namespace upssim
