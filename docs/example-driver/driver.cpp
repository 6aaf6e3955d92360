// A driver for an invented one-phase UPS, 19200,e,8,1: 18 input registers hold its mode, its alarms
// as bits and eight floats, high word first; a holding register takes commands.
#include <driverapi.h>
#include <modbusframe.h>

#include <cmath>
#include <cstring>

namespace {

// clang-format off
constexpr int inputs = 0x0100, inputCount = 18, commandRegister = 0x0200;
constexpr int alarms[] = { 82, 59, 10, 8 }; // the event of bit 0, 1, ...
constexpr int floats[] = { 4133, 4139, 4164, 4162, 4176, 4105, 4106, 4117 };
constexpr float modes[] = { 2, 4, 5 }; // standby, on line, on battery
constexpr float flows[][7] = { { 0, 1, 1, 0, 0, 0, 1 }, { 0, 1, 1, 1, 1, 1, 1 }, { 0, 0, 0, 1, 1, 1, 1 } };
constexpr struct { const char *text; int code; } commands[] = { { "0,", 1 }, { "3,", 2 }, { "4,", 3 }, { "7,", 4 } };
constexpr int room = 996; // what a read over TCP may write, whatever size it is given
// clang-format on

bool ask(PortDescriptor *port, unsigned char *request, unsigned char *reply, int length)
{
    char *const bytes = reinterpret_cast<char *>(reply);
    int count = 0;
    int got = port->write(port, reinterpret_cast<char *>(request), 8);
    while (got > 0 && count < length) {
        got = port->read(port, bytes + count, room);
        count += got > 0 ? got : 0;
    }
    if (count == length && memcmp(reply, request, 2) == 0 && checkModbufCRC(reply, length) == 0)
        return true;
    for (int i = 0; i < 20 && port->read(port, bytes, room) > 0;)
        ++i; // a late reply must not answer the next request
    return false;
}

} // namespace

extern "C" int Query(PortDescriptor *port, int unit, DataCallback callback, void *context)
{
    unsigned char request[8], reply[2 * room];
    const int length = buildCmd(request, unit, 4, inputs, inputCount);
    if (unit < 1 || unit > 247 || !ask(port, request, reply, length))
        return 0;
    const int mode = UINT8_2_to_UINT16(reply + 3), bits = UINT8_2_to_UINT16(reply + 5);
    if (reply[2] != 2 * inputCount || mode > 2)
        return 0;
    float events[96] = {}; // all of them, those that this device does not have too
    for (int bit = 0; bit < 4; ++bit)
        events[alarms[bit]] = float(bits >> bit & 1);
    for (int k = 0; k < 96; ++k)
        callback(2000 + k, events[k], context);
    for (int i = 0; i < 8; ++i) {
        const unsigned raw = UINT8_4_to_UINT32(reply + 7 + 4 * i);
        float value;
        memcpy(&value, &raw, sizeof value);
        if (!std::isnan(value)) // this device's "no value": nothing is sent
            callback(floats[i], value, context);
    }
    for (int i = 0; i < 7; ++i)
        callback(4216 + i, flows[mode][i], context);
    for (const int phases : { 4132, 4163, 4192 })
        callback(phases, 1, context);
    callback(4241, modes[mode], context);
    return 1;
}

extern "C" int Control(PortDescriptor *port, int unit, char *command, void *)
{
    unsigned char request[8], reply[2 * room];
    for (const auto &row : commands) {
        if (unit < 1 || unit > 247 || strcmp(command, row.text) != 0)
            continue;
        mod_Set_SetBuf(request, unit, commandRegister, row.code);
        return ask(port, request, reply, 8) && memcmp(reply, request, 8) == 0;
    }
    return 0; // the empty text among them
}
