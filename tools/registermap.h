#pragma once

#include <cstddef>
#include <cstdint>

/**
 * The Modbus register map of the simulated UPS, shared by the simulator and the sample driver.
 *
 * Each area is a plain shift of the data identifiers: address 5 of the settings is identifier
 * 3005. docs/register-map.md describes the map for readers.
 */
namespace registermap {

/** How a register's 16 bits read. */
enum class Format {
    Unsigned,  ///< 0 to 65534; 0xFFFF stands for "no value"
    Signed,    ///< -32768 to 32766; 0x7FFF stands for "no value"
    Character, ///< one UTF-16 code unit of a text; texts are filled up with zeros
};

/** A run of registers that read alike: identifiers `id` to `id` + `count` - 1. */
struct RegisterRow
{
    int id;
    int count;
    Format format;
    double scale; ///< raw * scale = value in `unit`
    const char *unit;
    const char *meaning;
};

/** A setting: raw bounds (the same for every register of the run) and the raw factory value. */
struct SettingRow
{
    RegisterRow registers;
    int min;
    int max;
    int factory;
};

/** One read that covers a stretch of identifiers. No two have the same length, so that a late
 *  reply to one is never taken for the reply to another. */
struct Block
{
    int function; ///< 2 discrete inputs, 3 holding registers, 4 input registers
    int address;
    int count;
    int firstId; ///< identifier at `address`
};

// clang-format off
constexpr Block blocks[] = {
    { 2,   0,  96, 2000 },
    { 3,   0, 105, 3000 },
    { 4,   0, 125, 4000 },
    { 4, 125, 120, 4125 },
};
// clang-format on

constexpr int eventCount = 96;   ///< discrete inputs from 0, identifiers from 2000
constexpr int firstEvent = 2000; ///< identifier of event 0
constexpr int firstSetting = 3000;
constexpr int settingCount = 105;
constexpr int firstMeasurement = 4000;
constexpr int measurementCount = 245;

/** Holding register that takes a command code (function 6) and reads as the last one taken. */
constexpr int commandRegister = 0x0100;

/** Command codes, as the client sends them to a driver. */
enum Command {
    BatteryTest = 0,
    BatteryMaintenance = 2,
    CancelTest = 3,
    ShutDown = 4,
    StartUp = 7,
    ShutDownToBypass = 9,
    TransferToBypass = 10,
    TransferToInverter = 11,
    ClearFault = 12,
    ClearHistory = 13,
    BuzzerOn = 17,
    BuzzerOff = 18,
    DownloadHistory = 20, ///< the driver's own: it reads the history, the device sees no command
};

// clang-format off
constexpr Command deviceCommands[] = {
    BatteryTest, BatteryMaintenance, CancelTest, ShutDown, StartUp, ShutDownToBypass,
    TransferToBypass, TransferToInverter, ClearFault, ClearHistory, BuzzerOn, BuzzerOff,
};
// clang-format on

/** Input registers: number of records, then the generation, which changes whenever records go. */
constexpr int historyHeader = 0x0FF0;
/** Input registers: record i, oldest first, at historyBase + i * historyFields. */
constexpr int historyBase = 0x1000;
/** Number, content, status, day, low and high word of the second in the day, mode. */
constexpr int historyFields = 7;
constexpr int historyPage = 16; ///< records that fit one read
constexpr int historyCapacity = 4000;

/** The raw value that stands for "no value"; -1 where every value counts. */
constexpr int noValue(Format format)
{
    return format == Format::Unsigned ? 0xFFFF : format == Format::Signed ? 0x7FFF : -1;
}

/** The number that a raw register stands for, before scaling. */
constexpr int rawNumber(Format format, std::uint16_t raw)
{
    return format == Format::Signed && raw >= 0x8000 ? int(raw) - 0x10000 : int(raw);
}

} // namespace registermap
