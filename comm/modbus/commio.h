#pragma once

#include <QtGlobal>

/**
 * What a driver reads and writes its device with; exported unmangled.
 *
 * A handle is any record whose first word points to a QIODevice: the PortDescriptor that a driver
 * is given, or a CommHandle of a serial port. Nothing else of it is read.
 *
 * Threads:   in the thread that holds the port's lock, or that owns the socket. Waits end early
 *            when that thread's StopSource asks for it.
 * Ownership: handle, device and buffers stay the caller's.
 * Errors:    a null handle, device or buffer and a negative length are refused with -1 (-5 from
 *            TcpCommRead).
 */
extern "C" {

/** Opening is the port manager's business: this and the next three only complete the set of
 *  names that drivers expect. Always 0. */
Q_DECL_EXPORT int CommOpen();
Q_DECL_EXPORT void CommAccept();
Q_DECL_EXPORT void CommControl();
Q_DECL_EXPORT void CommClose();

/** Reads what the device delivers within its timeout, past the QIODevice's own buffer.
 *  @return bytes read, 0 when nothing came in time, -1 when closed or failed */
Q_DECL_EXPORT int CommRead(void *handle, char *buffer, int length);

/** @return bytes written, -1 when closed or failed */
Q_DECL_EXPORT int CommWrite(void *handle, char *buffer, int length);

/** Waits up to one second for a Modbus TCP reply and turns it into an RTU frame with its CRC.
 *  The reply's header is not checked, but one that announces more than has come lets it wait for
 *  the rest, within the same second, until nothing comes for 100 ms. A reply that was there before
 *  the request is no reply to it: both come then, as one frame, which a driver rejects.
 *  @param buffer  room for 996 bytes, whatever `size` says
 *  @return length of the RTU frame, or -5 for a short or failed read */
Q_DECL_EXPORT int TcpCommRead(void *handle, char *buffer, int size);

/** Sends an RTU frame as Modbus TCP: header in front, CRC dropped, transaction id 0. A peer that
 *  does not take it within a second is disconnected.
 *  @param frame  at most 996 bytes; 2 bytes and less send a mere header
 *  @return `length`, or -1 */
Q_DECL_EXPORT int TcpCommWrite(void *handle, char *frame, int length);
}
