#include "upsmodel.h"

#include "kx300/identifiers.h"
#include "settingrows.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace upssim {

using namespace registermap;
namespace Id = kx300::Id;
using namespace upscontent;
using namespace upsevent;

namespace {

constexpr double daySeconds = 86'400;
constexpr double overloadAlarm = 105;  // %
constexpr double overloadTime = 10;    // s until the load goes to the bypass
constexpr double hotInverter = 85;     // °C
constexpr double dischargeSpan = 0.43; // V between a full and an empty cell under load
constexpr double chargeTime = 4;       // charging takes so many times as long as discharging

} // namespace

UpsModel::UpsModel(quint32 seed, double startSecond)
    : m_random(seed)
    , m_now(startSecond)
    , m_started(startSecond)
{
    m_settings.fill(0xFFFF);
    for (const SettingRow &row : settingRows) {
        for (int i = 0; i < row.registers.count; ++i)
            m_settings[std::size_t(row.registers.id - firstSetting + i)] = quint16(row.factory);
    }
    m_values.fill(std::numeric_limits<double>::quiet_NaN());
    record(Started, true);
    record(OutputFromInverter, true);
    measure();
}

void UpsModel::advance(double seconds)
{
    m_now += seconds;
    if (surroundings.epo) {
        m_latched.set(Epo);
        m_output = m_enabled = false;
    }
    runTask(seconds);
    choosePath();
    runBattery(seconds);
    runOverload(seconds);
    runTemperature(seconds);
    choosePath();
    updateEvents();
    noteChanges();
    measure();
}

void UpsModel::setCharge(double fraction)
{
    m_charge = std::clamp(fraction, 0.0, 1.0);
    m_empty = false;
}

void UpsModel::request(int index, bool raised)
{
    m_requested.set(std::size_t(index), raised);
}

// A setting in its unit.
double UpsModel::scaled(int id) const
{
    const RegisterRow &row = settingRow(id)->registers;
    return rawNumber(row.format, setting(id)) * row.scale;
}

quint16 UpsModel::setting(int id) const
{
    return m_settings.at(std::size_t(id - firstSetting));
}

double UpsModel::measurement(int id) const
{
    return m_values.at(std::size_t(id - firstMeasurement));
}

bool UpsModel::mainsGood() const
{
    const Surroundings &s = surroundings;
    return s.mains && s.mainsVoltage >= scaled(Id::InputVoltageLowAlarmPoint)
        && s.mainsVoltage <= scaled(Id::InputVoltageHighAlarmPoint)
        && s.mainsFrequency >= scaled(Id::InputFrequencyLowAlarmPoint)
        && s.mainsFrequency <= scaled(Id::InputFrequencyHighAlarmPoint);
}

bool UpsModel::bypassGood() const
{
    const Surroundings &s = surroundings;
    const double rated = scaled(Id::RatedOutputVoltage);
    return s.mains && s.bypass && s.mainsVoltage > 0.8 * rated && s.mainsVoltage < 1.15 * rated
        && std::abs(s.mainsFrequency - scaled(Id::RatedOutputFrequency)) <= 5;
}

bool UpsModel::batteryUsable() const
{
    return surroundings.battery && !m_empty && m_charge > 0;
}

// In this mode the inverter stands by while the bypass carries the load.
bool UpsModel::eco() const
{
    return setting(Id::SystemWorkMode) == 4 || setting(Id::SystemWorkMode) == 6;
}

bool UpsModel::rectifying() const
{
    return mainsGood() && m_task == Task::None && !m_events.test(Epo);
}

bool UpsModel::discharging() const
{
    return m_path == Path::Inverter && !rectifying() && batteryUsable();
}

// Falls with the charge under load, down to the end of discharge that is set.
double UpsModel::cellVoltage() const
{
    if (discharging())
        return scaled(Id::CellEodVoltageFor06c) + dischargeSpan * m_charge;
    if (!rectifying())
        return scaled(Id::CellEodVoltageFor06c) + dischargeSpan * (0.2 + 0.8 * m_charge);
    return m_charge < 0.9 ? scaled(Id::CellBoostVoltage) : scaled(Id::CellFloatVoltage);
}

bool UpsModel::batteryLow() const
{
    if (m_empty)
        return true;
    return discharging()
        && cellVoltage()
        < scaled(Id::CellEodVoltageFor06c) * scaled(Id::BatteryLowVoltageAlarmCoefficient);
}

int UpsModel::workingMode() const
{
    enum {
        Standby = 2,
        OnBypass = 3,
        Online = 4,
        OnBattery = 5,
        Testing = 6,
        Fault = 7,
        Eco = 9,
        OutputShutDown = 10
    };
    switch (m_path) {
    case Path::Inverter:
        return m_task != Task::None ? Testing : mainsGood() ? Online : OnBattery;
    case Path::Bypass:
        return eco() && !m_onBypass ? Eco : OnBypass;
    case Path::Off:
        break;
    }
    return m_latched.test(Epo) || m_latched.test(Overload) ? Fault
        : mainsGood()                                      ? Standby
                                                           : OutputShutDown;
}

void UpsModel::runTask(double seconds)
{
    if (m_task == Task::None)
        return;
    const bool test = m_task == Task::Test;
    if (!surroundings.battery || m_empty)
        return endTask(test ? TestFail : MaintenanceFail);
    if (!mainsGood() || m_path != Path::Inverter)
        return endTask(-1); // the real thing is under way
    m_taskLeft -= seconds;
    if (test && m_taskLeft <= 0)
        endTask(TestSuccess);
    else if (!test && batteryLow())
        endTask(MaintenanceSuccess);
}

void UpsModel::endTask(int event)
{
    m_task = Task::None;
    if (event >= 0)
        m_latched.set(std::size_t(event));
}

void UpsModel::choosePath()
{
    const bool forbidden = setting(Id::ForbidBypass) == 0; // 0 is "on" here
    const bool bypass = bypassGood() && !forbidden;
    const bool fault = m_latched.test(Overload) || m_latched.test(OverTemperature);
    const bool source = mainsGood() || batteryUsable();
    const bool inverter = m_enabled && !fault && source;
    if (!m_output)
        m_path = Path::Off;
    else if (bypass && (m_onBypass || !inverter || (eco() && m_task == Task::None)))
        m_path = Path::Bypass;
    else
        m_path = inverter ? Path::Inverter : Path::Off;
}

void UpsModel::runBattery(double seconds)
{
    if (mainsGood() && m_empty) {
        m_empty = false;
        if (setting(Id::PowerOnSelfStart) != 0) // no self-start
            m_enabled = m_output = false;
    }
    if (!surroundings.battery)
        return;
    const double step = seconds / std::max(1.0, surroundings.autonomy);
    if (discharging()) {
        m_onBattery += seconds;
        m_charge -= step * surroundings.load / 100;
    } else if (rectifying()) {
        m_onBattery = 0;
        m_charge += step / chargeTime;
    }
    m_charge = std::clamp(m_charge, 0.0, 1.0);
    if (m_charge <= 0 && !mainsGood())
        m_empty = true;
}

void UpsModel::runOverload(double seconds)
{
    const bool over = m_path == Path::Inverter && surroundings.load > overloadAlarm;
    m_overload = over ? m_overload + seconds : 0;
    if (m_overload >= overloadTime)
        m_latched.set(Overload);
}

void UpsModel::runTemperature(double seconds)
{
    const double load = m_path == Path::Inverter ? surroundings.load : 0;
    const double target = surroundings.fan ? 28 + 0.22 * load : 65 + 0.6 * load;
    m_inverterTemperature += (target - m_inverterTemperature) * (1 - std::exp(-seconds / 15));
    if (m_inverterTemperature > hotInverter)
        m_latched.set(OverTemperature);
}

void UpsModel::updateEvents()
{
    const Surroundings &s = surroundings;
    std::bitset<eventCount> now = m_requested | m_latched;
    const auto raise = [&now](int index, bool present) {
        if (present)
            now.set(std::size_t(index));
    };
    raise(FanFault, !s.fan);
    raise(OverloadAlarm, m_path != Path::Off && s.load > overloadAlarm);
    raise(BatteryDisconnected, !s.battery);
    raise(BatteryLow, batteryLow());
    raise(InputHigh, s.mains && s.mainsVoltage > scaled(Id::InputVoltageHighAlarmPoint));
    raise(InputFrequency,
          s.mains
              && (s.mainsFrequency < scaled(Id::InputFrequencyLowAlarmPoint)
                  || s.mainsFrequency > scaled(Id::InputFrequencyHighAlarmPoint)));
    raise(EndOfDischarge, m_empty);
    raise(AbnormalInput, !mainsGood());
    raise(AbnormalBypass, !bypassGood());
    raise(TestMode, m_task != Task::None);

    const auto changed = now ^ m_events;
    m_events = now;
    for (int i = 0; i < eventCount; ++i) {
        if (changed.test(std::size_t(i)))
            record(FirstEvent + i, event(i));
    }
}

void UpsModel::noteChanges()
{
    if (mainsGood() != m_hadMains) {
        m_hadMains = mainsGood();
        m_mainsFailures += m_hadMains ? 0 : 1;
        record(m_hadMains ? InputFromMains : InputFromBattery, true);
    }
    if (m_path == m_notedPath)
        return;
    m_notedPath = m_path;
    record(m_path == Path::Inverter     ? OutputFromInverter
               : m_path == Path::Bypass ? OutputFromBypass
                                        : OutputOff,
           true);
}

void UpsModel::record(int content, bool appeared)
{
    if (int(m_history.size()) >= historyCapacity) {
        m_history.erase(m_history.begin(), m_history.begin() + historyPage);
        ++m_generation;
    }
    const double days = std::floor(m_now / daySeconds);
    const HistoryRecord entry { ++m_recordNumber,
                                quint16(content),
                                quint16(appeared),
                                quint16(days),
                                quint32(m_now - days * daySeconds),
                                quint16(workingMode()) };
    m_history.push_back(entry);
    if (onRecord)
        onRecord(entry);
}

void UpsModel::clearHistory()
{
    m_history.clear();
    ++m_generation;
    record(HistoryCleared, true);
}

} // namespace upssim
