#pragma once

#include "modbus/commio.h"
#include "modbus/driverapi.h"
#include "modbus/modbusframe.h"
#include "serial/serialport.h"

/** Reads registers of a ModbusServer as a driver does: the request in two parts, the reply in as
 *  many as the line delivers. @return true when all of it is right */
inline bool readRegisters(PortDescriptor &port, int address, int count)
{
    unsigned char frame[1000] = {};
    auto *bytes = reinterpret_cast<char *>(frame);
    const int length = buildCmd(frame, 1, 3, address, count);
    // A TCP request is one write: each gets its own header.
    const int first = port.read == TcpCommRead ? 8 : 3;
    if (port.write(&port, bytes, first) != first
        || (first < 8 && port.write(&port, bytes + first, 8 - first) != 8 - first))
        return false;
    int got = 0;
    for (int part = 1; got < length && part > 0; got += qMax(0, part))
        part = port.read(&port, bytes + got, int(sizeof frame) - got);
    return got == length && checkModbufCRC(frame, got) == 0
        && UINT8_2_to_UINT16(frame + 3) == 3 * address;
}

/** Whether the Modbus device on `port` answers for four registers. */
inline bool exchanged(SerialPort &port, int address)
{
    PortDescriptor handle { &port, CommRead, CommWrite };
    return readRegisters(handle, address, 4);
}
