#pragma once

/**
 * The boundary between the client and a protocol driver: plain C types, no Qt.
 *
 * A driver is a shared library that exports `Query` and `Control` unmangled. Both run in the
 * client's polling thread, never at the same time for one client.
 */
extern "C" {

/** Reads or writes on a port.
 *  @param handle  the port descriptor that the driver was given
 *  @param length  room in, or bytes of, `buffer`
 *  @return bytes transferred; 0 when nothing arrived in time; negative on failure */
typedef int (*IoFunction)(void *handle, char *buffer, int length);

/** What a driver is given to reach its device; its first word is the device itself. */
struct PortDescriptor
{
    void *device;     ///< a QIODevice: SerialPort or QTcpSocket; owned by the client's side
    IoFunction read;  ///< CommRead or TcpCommRead
    IoFunction write; ///< CommWrite or TcpCommWrite
};

/** Takes one decoded value.
 *  @param id       data identifier
 *  @param context  the pointer that `Query` was given */
typedef void (*DataCallback)(int id, float value, void *context);

/** Reads all data of a device and calls `callback` once a value.
 *  @param unit  of the device on the line, 1 to 247
 *  @return non-zero when the device answered, 0 when the query failed */
typedef int (*QueryFunction)(PortDescriptor *port, int unit, DataCallback callback, void *context);

/** Carries out one command.
 *  @param command  zero-terminated text of at most 49 bytes, usually "code,value"
 *  @return 1 on success, 0 on failure */
typedef int (*ControlFunction)(PortDescriptor *port, int unit, char *command, void *context);
}
