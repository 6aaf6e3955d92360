#pragma once

#include <QtEndian>

/** The header of a Modbus TCP frame, up to the unit, with which an RTU frame begins as well. */
struct MbapHeader
{
    static constexpr int size = 6; // bytes

    quint16 transactionId = 0;
    quint16 protocolId = 0; ///< 0 is Modbus
    quint16 length = 0;     ///< of what follows, the unit included

    /** @param bytes  `size` of them, as are written by put() */
    static MbapHeader from(const char *bytes)
    {
        return { qFromBigEndian<quint16>(bytes), qFromBigEndian<quint16>(bytes + 2),
                 qFromBigEndian<quint16>(bytes + 4) };
    }

    void put(char *bytes) const
    {
        qToBigEndian(transactionId, bytes);
        qToBigEndian(protocolId, bytes + 2);
        qToBigEndian(length, bytes + 4);
    }

    bool isModbus() const { return protocolId == 0; }
    int frameSize() const { return size + length; }
};
