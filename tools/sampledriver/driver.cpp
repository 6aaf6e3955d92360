// A protocol driver by example: the two functions that the client calls, for the register map of
// the simulated UPS. docs/driver-contract.md explains what a driver may rely on.

#include "historydownload.h"
#include "measurementrows.h"
#include "modbusline.h"
#include "settingrows.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <cuchar>
#include <cwchar>
#include <iterator>

using namespace registermap;

namespace {

using namespace std::chrono_literals;

constexpr auto queryTime = 8000ms;
constexpr auto commandTime = 6000ms;
constexpr auto downloadTime = 120000ms; // 4000 records at 9600 baud take about a minute

/** Where a query's values go. */
struct Receiver
{
    DataCallback callback;
    void *context;
};

void deliver(const RegisterRow &row, const std::uint16_t *raw, const Receiver &receiver)
{
    for (int i = 0; i < row.count; ++i) {
        // A register without a value sends no point: zero would be a measurement.
        if (raw[i] == noValue(row.format))
            continue;
        const double value = rawNumber(row.format, raw[i]) * row.scale;
        receiver.callback(row.id + i, float(value), receiver.context);
    }
}

// Reads all blocks of one function; `values` begins at the area's first register.
bool readArea(ModbusLine &line, int function, std::uint16_t *values)
{
    return std::all_of(std::begin(blocks), std::end(blocks), [&](const Block &block) {
        return block.function != function
            || line.read(function, block.address, block.count, values + block.address)
            == Outcome::Answered;
    });
}

// "3005,18", or text such as "3081,ACME" in the local 8-bit encoding.
bool writeSetting(ModbusLine &line, int id, const char *value)
{
    const SettingRow *const row = settingRow(id);
    if (!row)
        return false;
    const RegisterRow &registers = row->registers;
    if (registers.format != Format::Character) {
        int number = 0;
        const char *const end = value + std::strlen(value);
        const auto [parsed, error] = std::from_chars(value, end, number);
        if (error != std::errc() || parsed != end || parsed == value || number < -0x8000
            || number > 0xFFFF)
            return false;
        return line.write(id - firstSetting, std::uint16_t(number)) == Outcome::Answered;
    }
    if (id != registers.id)
        return false;
    std::uint16_t codes[measurementCount] = {}; // a shorter text ends in zeros
    std::mbstate_t state {};
    const char *const end = value + std::strlen(value);
    for (int i = 0; i < registers.count && (value < end || !std::mbsinit(&state)); ++i) {
        char16_t code = 0;
        const std::size_t used = std::mbrtoc16(&code, value, std::size_t(end - value), &state);
        if (used == std::size_t(-1) || used == std::size_t(-2))
            return false; // not in the local encoding, or cut inside a character
        codes[i] = code;
        value += used == std::size_t(-3) ? 0 : used; // -3: the second half of a pair
    }
    return line.write(id - firstSetting, codes, registers.count) == Outcome::Answered;
}

bool isDeviceCommand(int code)
{
    return std::find(std::begin(deviceCommands), std::end(deviceCommands), code)
        != std::end(deviceCommands);
}

} // namespace

// Delivers all values of the device, or none: alarms are derived from one consistent reading.
extern "C" __attribute__((visibility("default"))) int Query(PortDescriptor *port, int unit,
                                                            DataCallback callback, void *context)
{
    if (!port || !port->device || !callback)
        return 0;
    const std::optional<Unit> station = Unit::at(*port, unit);
    if (!station)
        return 0;
    ModbusLine line(*port, *station, queryTime);
    std::uint16_t events[eventCount] = {};
    std::uint16_t settings[settingCount] = {};
    std::uint16_t measurements[measurementCount] = {};
    if (!readArea(line, 2, events) || !readArea(line, 3, settings)
        || !readArea(line, 4, measurements))
        return 0;

    const Receiver receiver { callback, context };
    for (int i = 0; i < eventCount; ++i)
        callback(firstEvent + i, events[i], context);
    for (const SettingRow &row : settingRows)
        deliver(row.registers, settings + (row.registers.id - firstSetting), receiver);
    for (const RegisterRow &row : measurementRows)
        deliver(row, measurements + (row.id - firstMeasurement), receiver);
    return 1;
}

// The command is "code,value", or "identifier,value" for a setting; anything else is refused. An
// empty text must not read as code 0, which would start a battery test.
extern "C" __attribute__((visibility("default"))) int Control(PortDescriptor *port, int unit,
                                                              char *command, void *)
{
    if (!port || !port->device || !command)
        return 0;
    const std::optional<Unit> station = Unit::at(*port, unit);
    if (!station)
        return 0;
    int code = -1;
    const char *const end = command + std::strlen(command);
    const auto [parsed, error] = std::from_chars(command, end, code);
    if (error != std::errc() || *command == '-' || (parsed != end && *parsed != ','))
        return 0;

    ModbusLine line(*port, *station, code == DownloadHistory ? downloadTime : commandTime);
    if (code == DownloadHistory)
        return downloadHistory(line);
    if (isDeviceCommand(code))
        return line.write(commandRegister, std::uint16_t(code)) == Outcome::Answered;
    if (code >= firstSetting && parsed != end)
        return writeSetting(line, code, parsed + 1);
    return 0;
}
