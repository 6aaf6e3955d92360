// What commands and settings do to the simulated UPS.

#include "upsmodel.h"

#include "kx300/identifiers.h"
#include "settingrows.h"

namespace upssim {

using namespace registermap;
namespace Id = kx300::Id;
using namespace upscontent;
using namespace upsevent;

namespace {

constexpr double testTime = 20; // s
constexpr double minimumChargeForTest = 0.2;

} // namespace

UpsModel::Answer UpsModel::command(int code)
{
    switch (code) {
    case BatteryTest:
        return startTask(Task::Test);
    case BatteryMaintenance:
        return startTask(Task::Maintenance);
    case CancelTest:
        if (m_task != Task::None)
            record(TestStopped, true);
        endTask(-1);
        return Answer::Accepted;
    case StartUp:
        return startUp();
    case TransferToInverter:
        return transferToInverter();
    case ShutDown:
        m_enabled = m_output = false;
        record(ManualShutDown, true);
        return Answer::Accepted;
    case ShutDownToBypass:
    case TransferToBypass:
        if (!bypassGood() || setting(Id::ForbidBypass) == 0 || !m_output)
            return Answer::NotNow;
        m_onBypass = true;
        m_enabled = m_enabled && code == TransferToBypass;
        record(ManualBypass, true);
        return Answer::Accepted;
    case ClearFault:
        m_latched.reset();
        record(FaultCleared, true);
        return Answer::Accepted;
    case ClearHistory:
        clearHistory();
        return Answer::Accepted;
    case BuzzerOn:
    case BuzzerOff:
        m_buzzer = code == BuzzerOn;
        return Answer::Accepted;
    }
    return Answer::BadValue;
}

UpsModel::Answer UpsModel::startTask(Task task)
{
    if (m_task == task)
        return Answer::Accepted;
    const bool possible = m_task == Task::None && m_path == Path::Inverter && mainsGood()
        && batteryUsable() && m_charge >= minimumChargeForTest;
    if (!possible)
        return Answer::NotNow;
    m_task = task;
    m_taskLeft = testTime;
    for (const int result : { TestSuccess, TestFail, MaintenanceSuccess, MaintenanceFail })
        m_latched.reset(std::size_t(result));
    record(task == Task::Test ? TestStarted : MaintenanceStarted, true);
    return Answer::Accepted;
}

UpsModel::Answer UpsModel::startUp()
{
    if (surroundings.epo || m_latched.test(Epo) || !(mainsGood() || batteryUsable())) {
        m_latched.set(ForbiddenStart);
        return Answer::NotNow;
    }
    m_enabled = m_output = true;
    m_onBypass = false;
    record(ManualStart, true);
    return Answer::Accepted;
}

UpsModel::Answer UpsModel::transferToInverter()
{
    const bool fault = m_latched.test(Overload) || m_latched.test(OverTemperature);
    if (!m_enabled || fault || !(mainsGood() || batteryUsable()))
        return Answer::NotNow;
    m_onBypass = false;
    record(ManualInverter, true);
    return Answer::Accepted;
}

UpsModel::Answer UpsModel::checkSetting(int id, quint16 raw) const
{
    const SettingRow *const row = settingRow(id);
    if (!row)
        return Answer::BadValue;
    const bool lithium = setting(Id::BatteryType) == 1;
    int min = row->min;
    int max = row->max;
    for (const CellBounds &cell : cellBounds) {
        if (cell.id == id && lithium)
            min = cell.lithiumMin;
        else if (cell.id == id)
            max = cell.vrlaMax;
    }
    const int number = rawNumber(row->registers.format, raw);
    return number < min || number > max ? Answer::BadValue : Answer::Accepted;
}

UpsModel::Answer UpsModel::writeSetting(int id, quint16 raw)
{
    const Answer answer = checkSetting(id, raw);
    if (answer == Answer::Accepted)
        m_settings[std::size_t(id - firstSetting)] = raw;
    return answer;
}

} // namespace upssim
