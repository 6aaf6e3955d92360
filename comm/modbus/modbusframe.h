#pragma once

#include <QtGlobal>

/**
 * Builds and checks Modbus RTU frames in the caller's buffer; exported for drivers.
 *
 * Threads:   reentrant; no locks, no allocation.
 * Ownership: buffers stay the caller's, who guarantees the room that each function names.
 * Errors:    -1 for a null buffer or a frame too short to carry a CRC.
 *
 * Of integer arguments only the low 8 or 16 bits reach the frame. Registers, counts and values are
 * big-endian; the CRC goes low byte first.
 */
extern "C" {

/** Puts the CRC of the first `length` - 2 bytes into the last two.
 *  @param length  of the whole frame, CRC included; 4 or more
 *  @return 0, or -1 */
Q_DECL_EXPORT int setModbusCRC(unsigned char *buffer, int length);

/** Tells whether the last two bytes are the CRC of those before; never writes.
 *  Spelling is bound by name: drivers resolve it.
 *  @return 0 when they are, or -1 */
Q_DECL_EXPORT int checkModbufCRC(const unsigned char *buffer, int length);

/** Builds a "write single register" request.
 *  @param buffer  room for 8 bytes
 *  @return 0, or -1 */
Q_DECL_EXPORT int mod_Set_SetBuf(unsigned char *buffer, int unit, int address, int value);

/** Builds a request of eight bytes: unit, function code, address, count, CRC.
 *  @param buffer  room for 8 bytes
 *  @return the length of the reply to expect, not of the request: 2 * count + 5 for function codes
 *          3 and 4, count / 8 + 5 for 2, 8 for 6, else 0; -1 without a buffer */
Q_DECL_EXPORT int buildCmd(unsigned char *buffer, int unit, int functionCode, int address,
                           int count);

/** Builds a "write multiple registers" request.
 *  @param buffer  room for 9 + 2 * count bytes; nothing is written behind them
 *  @param count   values in `values`; 0 and less write no value, and less than 0 cuts the frame
 *  @return 2 * count + 9, or -1 without a buffer, without values or when that is no int */
Q_DECL_EXPORT int buildCmd16(unsigned char *buffer, int unit, int address, int count,
                             const unsigned short *values);

/** Reads two bytes as a big-endian number; 0 without bytes. */
Q_DECL_EXPORT unsigned short UINT8_2_to_UINT16(const unsigned char *bytes);

/** Reads four bytes as a big-endian number; 0 without bytes. */
Q_DECL_EXPORT unsigned int UINT8_4_to_UINT32(const unsigned char *bytes);

/** Skips the blanks (0x20, no other white space) at the start of a zero-terminated text. */
Q_DECL_EXPORT char *FiltSpace(char *text);
}
