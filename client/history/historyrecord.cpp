#include "history/historyrecord.h"

#include <limits>

namespace {

constexpr qint64 secondsPerDay = 24 * 60 * 60;

bool isLatin1Space(char byte)
{
    const auto c = static_cast<unsigned char>(byte);
    return (c >= '\t' && c <= '\r') || c == ' ' || c == 0x85 || c == 0xa0;
}

qint64 within16Bits(qint64 number)
{
    return number >= 0 && number <= std::numeric_limits<quint16>::max() ? number : 0;
}

} // namespace

int HistoryRecord::timeOfDay() const
{
    return int((secondsHigh << 16 | secondsLow) % secondsPerDay);
}

void NumberField::feedOther(char byte)
{
    if (m_stage == Stage::Malformed)
        return;
    if (isLatin1Space(byte)) {
        if (m_stage == Stage::Sign)
            m_stage = Stage::Malformed;
        else if (m_stage == Stage::Digits)
            m_stage = Stage::Trailing;
    } else if ((byte == '-' || byte == '+') && m_stage == Stage::Leading) {
        m_stage = Stage::Sign;
        m_negative = byte == '-';
    } else if (byte >= '0' && byte <= '9' && m_stage != Stage::Trailing) {
        const auto digit = quint64(byte - '0');
        const bool fits = m_magnitude <= (std::numeric_limits<quint64>::max() - digit) / 10;
        m_magnitude = m_magnitude * 10 + digit;
        m_stage = fits ? Stage::Digits : Stage::Malformed;
    } else {
        m_stage = Stage::Malformed;
    }
}

qint64 NumberField::value() const
{
    if (m_stage != Stage::Digits && m_stage != Stage::Trailing)
        return 0;
    constexpr auto largest = quint64(std::numeric_limits<qint64>::max());
    if (m_magnitude > largest)
        return m_negative && m_magnitude == largest + 1 ? std::numeric_limits<qint64>::min() : 0;
    return m_negative ? -qint64(m_magnitude) : qint64(m_magnitude);
}

const char *HistoryLine::feed(const char *begin, const char *end)
{
    const char *at = begin;
    for (; at != end && *at != '\n'; ++at) {
        if (*at == '\0')
            m_contentEnded = true;
        if (m_contentEnded)
            continue;
        if (*at == ' ')
            m_current = m_current < fieldCount ? m_current + 1 : fieldCount;
        else if (m_current < fieldCount && *at != '\r') // '\r': the file is read as text
            m_fields[size_t(m_current)].feed(*at);
    }
    return at;
}

std::optional<HistoryRecord> HistoryLine::finish()
{
    std::optional<HistoryRecord> record;
    if (m_current >= fieldCount - 1) {
        record = HistoryRecord { m_fields[0].value(),
                                 m_fields[1].value(),
                                 m_fields[2].value(),
                                 m_fields[3].value(),
                                 within16Bits(m_fields[4].value()),
                                 within16Bits(m_fields[5].value()),
                                 m_fields[6].value() };
    }
    *this = HistoryLine();
    return record;
}
