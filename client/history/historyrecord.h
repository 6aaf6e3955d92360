#pragma once

#include <array>
#include <optional>
#include <QtGlobal>

/** The seven numbers of one line of the driver's history file; what is no number reads as 0. */
struct HistoryRecord
{
    qint64 number;
    qint64 content;
    qint64 status;
    qint64 day;
    qint64 secondsLow;  // low 16 bits of the time of day, s; 0 when outside 16 bits
    qint64 secondsHigh; // high 16 bits
    qint64 mode;

    /** Seconds since midnight, on a clock that wraps at 24 hours. */
    int timeOfDay() const;
};

/**
 * Reads one decimal number a byte at a time, by the rules of QString::toLongLong().
 */
class NumberField
{
public:
    void feed(char byte)
    {
        constexpr quint64 surelyFits = 1'000'000'000'000'000'000; // a further digit does
        const auto digit = unsigned(byte - '0');
        // Hardly anything else is in a history file.
        if (digit < 10 && m_stage <= Stage::Digits && m_magnitude < surelyFits) {
            m_magnitude = m_magnitude * 10 + digit;
            m_stage = Stage::Digits;
        } else {
            feedOther(byte);
        }
    }

    /** The number; 0 for an empty or malformed field and for one past 64 bits. */
    qint64 value() const;

private:
    enum class Stage { Leading, Sign, Digits, Trailing, Malformed };

    void feedOther(char byte);

    Stage m_stage = Stage::Leading;
    bool m_negative = false;
    quint64 m_magnitude = 0;
};

/**
 * Splits the driver's history file into records as its bytes come, so that lines of any length
 * and content take no memory.
 *
 * A line ends at its line feed, its content at the first zero byte; single blanks separate
 * fields, and two in a row enclose an empty one.
 */
class HistoryLine
{
public:
    /** Takes bytes up to the line feed, which it leaves.
     *  @return the line feed, or `end` when the line goes on behind it */
    const char *feed(const char *begin, const char *end);

    /** Ends a line. @return a record when it had seven fields */
    std::optional<HistoryRecord> finish();

private:
    static constexpr int fieldCount = 7;

    std::array<NumberField, fieldCount> m_fields;
    int m_current = 0;
    bool m_contentEnded = false;
};
