// The measurements of the simulated UPS, as they follow from its state.

#include "upsmodel.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace upssim {

using namespace registermap;

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
    { 4000, 16, "Simulated UPS" },
    { 4016, 16, "KX300 G4 20K 33" },
    { 4032, 16, "V1.04.07" },
    { 4064, 16, "SIM3G420K000001" },
    { 4080, 16, "Machine room" },
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
    put(4101,
        !connected           ? Disconnected
            : discharging()  ? Discharge
            : !charging      ? AtRest
            : m_charge < 0.9 ? Boost
                             : Float);
    put(4102, m_onBattery);
    const double drain = std::max(surroundings.load, 1.0) / 100;
    put(4103, connected ? std::min(m_charge * surroundings.autonomy / drain / 60, 6000.0) : 0);

    const double voltage = connected ? cellVoltage() * cellsInBattery * setting(3005) : 0;
    const double power = scaled(3015) * powerFactor * surroundings.load / 100 / efficiency;
    put(4105, voltage + jitter(0.2));
    put(4106,
        discharging()  ? -power / std::max(voltage, 1.0)
            : charging ? scaled(3011) * std::clamp((1 - m_charge) * 5, 0.05, 1.0)
                       : 0);
    put(4107,
        connected ? 24.5 + (discharging() ? 1.5 : 0) + jitter(0.1)
                  : std::numeric_limits<double>::quiet_NaN());
    put(4117, m_charge * 100);
    put(4118, m_mainsFailures);
}

void UpsModel::measureInput()
{
    const bool live = surroundings.mains;
    const double voltage = live ? surroundings.mainsVoltage : 0;
    const double charging =
        rectifying() && surroundings.battery ? measurement(4106) * 240 / 1000 : 0;
    const double load = scaled(3015) / 1000 * powerFactor * surroundings.load / 100 / efficiency;
    const double power = m_path == Path::Inverter && rectifying() ? load + charging : charging;
    put(4132, setting(3022) ? phases : 1);
    putPhases(4133, voltage, live ? 0.8 : 0);
    putPhases(4136, live ? power * 1000 / phases / std::max(voltage, 1.0) : 0, live ? 0.1 : 0);
    putPhases(4139, live ? surroundings.mainsFrequency : 0, live ? 0.02 : 0);
    putPhases(4142, power / phases, 0);
    putPhases(4145, power > 0 ? 0.99 : 0, 0);
}

void UpsModel::measureOutput()
{
    const bool on = m_path != Path::Off;
    const bool inverter = m_path == Path::Inverter;
    const double load = on ? surroundings.load : 0;
    const double apparent = scaled(3015) / 1000 * load / 100 / phases;
    const double voltage = inverter ? scaled(3019) + scaled(3003)
        : on                        ? surroundings.mainsVoltage
                                    : 0;
    put(4161, inverter ? 2 : on ? 1 : 0);
    put(4162, inverter ? scaled(3020) : on ? surroundings.mainsFrequency : 0);
    put(4163, phases);
    putPhases(4164, voltage, on ? 0.3 : 0);
    putPhases(4167, on ? apparent * 1000 / voltage : 0, on ? 0.2 : 0);
    putPhases(4170, apparent * powerFactor, 0);
    putPhases(4173, load, on ? 0.3 : 0);
    put(4176, load);
    putPhases(4177, on ? powerFactor : 0, 0);
    putPhases(4180, apparent, 0);
    putPhases(4183, apparent * std::sqrt(1 - powerFactor * powerFactor), 0);
}

void UpsModel::measureBypass()
{
    const bool live = surroundings.mains && surroundings.bypass;
    const bool used = m_path == Path::Bypass;
    const double voltage = live ? surroundings.mainsVoltage - 0.6 : 0;
    const double apparent = used ? scaled(3015) / 1000 * surroundings.load / 100 / phases : 0;
    put(4190, bypassGood());
    put(4191, live ? surroundings.mainsFrequency + jitter(0.02) : 0);
    put(4192, phases);
    putPhases(4193, voltage, live ? 0.8 : 0);
    putPhases(4196, used ? apparent * 1000 / std::max(voltage, 1.0) : 0, used ? 0.2 : 0);
    putPhases(4199, apparent * powerFactor, 0);
    putPhases(4202, used ? powerFactor : 0, 0);
}

void UpsModel::measureFlows()
{
    const bool inverter = m_path == Path::Inverter;
    const bool fromMains = rectifying() && (inverter || surroundings.battery);
    const bool charging = rectifying() && surroundings.battery && m_charge < 1;
    put(4216, m_path == Path::Bypass);
    put(4217, fromMains);
    put(4218, fromMains);
    put(4219, inverter);
    put(4220, inverter);
    put(4221, m_path != Path::Off);
    put(4222, discharging() || charging);
}

void UpsModel::measureState()
{
    enum { Off = 0, Running = 2, OnBattery = 3 };
    const bool inverter = m_path == Path::Inverter;
    put(4096, 299);
    put(4097, 1);
    put(4098, 104);
    put(4237, inverter ? measurement(4167) * 1.02 : 0);
    put(4238, m_inverterTemperature - 3 + jitter(0.2));
    put(4239, m_inverterTemperature + jitter(0.2));
    put(4240, 412 + std::floor((m_now - m_started) / 86'400));
    put(4241, workingMode());
    put(4242, discharging() ? OnBattery : rectifying() ? Running : Off);
    put(4243, inverter || (m_path == Path::Bypass && m_enabled) ? Running : Off);
    put(4244, m_buzzer);
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
