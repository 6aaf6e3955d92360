#pragma once

#include <cstdint>

/** Where the parts of a Modbus frame (ADU) are, on either kind of line. */
namespace modbus {

/** How a PDU is wrapped. */
enum class Framing {
    Rtu, ///< unit, PDU, CRC
    Tcp, ///< MBAP header, whose last byte is the unit, PDU
};

/** The layout of a frame; sizes and offsets in bytes. */
struct Layout
{
    int unit;    ///< offset
    int trailer; ///< size of what follows the PDU

    constexpr int function() const { return unit + 1; }
    constexpr int data() const { return unit + 2; }
};

constexpr Layout layoutOf(Framing framing)
{
    return framing == Framing::Tcp ? Layout { 6, 0 } : Layout { 0, 2 };
}

constexpr int maxPduSize = 253;
constexpr int exceptionBit = 0x80; ///< of the function code of an exception reply
constexpr int exceptionPduSize = 2;

constexpr std::uint16_t wordAt(const std::uint8_t *bytes)
{
    return std::uint16_t(bytes[0] << 8 | bytes[1]);
}

/**
 * A frame, read where it lies; it may be incomplete.
 *
 * Ownership: the bytes stay the caller's and must outlive this.
 * Errors:    dataSize() is 0 for a frame that ends before its data; the caller asks before it
 *            reads unit, function or data.
 */
class Adu
{
public:
    /** @param size  bytes in the frame, its CRC included */
    constexpr Adu(Framing framing, const std::uint8_t *bytes, int size)
        : m_layout(layoutOf(framing))
        , m_bytes(bytes)
        , m_size(size)
    {
    }

    /** Whether unit and function code are there. */
    constexpr bool hasFunction() const { return m_size >= m_layout.data() + m_layout.trailer; }
    constexpr int unit() const { return m_bytes[m_layout.unit]; }
    constexpr int function() const { return m_bytes[m_layout.function()]; }
    constexpr bool isException() const { return (function() & exceptionBit) != 0; }
    /** What follows the function code, in an exception reply the exception code. */
    constexpr const std::uint8_t *data() const { return m_bytes + m_layout.data(); }
    constexpr int dataSize() const
    {
        return hasFunction() ? m_size - m_layout.data() - m_layout.trailer : 0;
    }
    /** Two bytes of the data. */
    constexpr int word(int offset) const { return wordAt(data() + offset); }

private:
    Layout m_layout;
    const std::uint8_t *m_bytes;
    int m_size;
};

/** The header of a frame on TCP. */
struct Mbap
{
    static constexpr int size = 6; ///< without the unit, which the length counts

    int protocol; ///< 0 is Modbus
    int length;   ///< bytes that follow

    /** @param bytes  `size` of them */
    static constexpr Mbap read(const std::uint8_t *bytes)
    {
        return { wordAt(bytes + 2), wordAt(bytes + 4) };
    }
    /** Whether such a header can be a request's: unit and function code, and no more than fits. */
    constexpr bool isSane() const
    {
        return protocol == 0 && length >= 2 && length <= 1 + maxPduSize;
    }
};

} // namespace modbus
