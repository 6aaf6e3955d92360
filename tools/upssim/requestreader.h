#pragma once

#include "modbusadu.h"

#include <QByteArray>

#include <optional>

namespace upssim {

/**
 * Cuts what a peer sends into requests, in whatever pieces it comes.
 *
 * By itself, so that nobody waits for the rest of a request: what has come is kept.
 *
 * Threads: one thread only.
 */
class RequestReader
{
public:
    explicit RequestReader(modbus::Framing framing)
        : m_framing(framing)
    {
    }

    /** Takes what has come. On RTU the caller then waits for silence(), if pending() says so. */
    void append(const char *bytes, int count);

    /** The next request, as it came, CRC or header included; its CRC is right. */
    std::optional<QByteArray> next();

    /** Nothing has come for a while: on RTU that ends a frame.
     *  @return what has come, when it is a frame of a function whose length is not known */
    std::optional<QByteArray> silence();

    /** Whether part of a request is kept. */
    bool pending() const { return !m_bytes.isEmpty(); }

    /** On TCP: a header made no sense, so nobody knows where the next request begins. */
    bool isBroken() const { return m_broken; }

private:
    std::optional<QByteArray> take(int size);
    int expectedSize();

    const modbus::Framing m_framing;
    QByteArray m_bytes;
    bool m_broken = false;
};

/** The CRC-16 that ends an RTU frame; by bits, and so apart from the tables of the client. */
quint16 crc16(const QByteArray &bytes);

} // namespace upssim
