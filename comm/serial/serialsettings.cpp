#include "serial/serialsettings.h"

#include <iterator>
#include <QDebug>
#include <QStringList>

namespace {

#define SERIAL_PREFIX "Posix_QextSerialPort"
#define NOT_ON_WINDOWS(rate)                                                                       \
    SERIAL_PREFIX " Portability Warning: Windows does not support " rate " baud operation."
#define NOT_ON_POSIX(rate, instead)                                                                \
    SERIAL_PREFIX ": POSIX does not support " rate " baud operation.  Switching to " instead       \
                  " baud."

// clang-format off
constexpr BaudRow baudRows[] = {
    { Baud50,     B50,     { NOT_ON_WINDOWS("50") } },
    { Baud75,     B75,     { NOT_ON_WINDOWS("75") } },
    { Baud110,    B110,    {} },
    { Baud134,    B134,    { NOT_ON_WINDOWS("134.5") } },
    { Baud150,    B150,    { NOT_ON_WINDOWS("150") } },
    { Baud200,    B200,    { NOT_ON_WINDOWS("200") } },
    { Baud300,    B300,    {} },
    { Baud600,    B600,    {} },
    { Baud1200,   B1200,   {} },
    { Baud1800,   B1800,   { SERIAL_PREFIX " Portability Warning: Windows and IRIX do not support 1800 baud operation." } },
    { Baud2400,   B2400,   {} },
    { Baud4800,   B4800,   {} },
    { Baud9600,   B9600,   {} },
    { Baud9600,   B9600,   { NOT_ON_POSIX("14400", "9600") } },
    { Baud19200,  B19200,  {} },
    { Baud38400,  B38400,  {} },
    { Baud56000,  B0,      {} },
    { Baud57600,  B57600,  {} },
    { Baud57600,  B57600,  { SERIAL_PREFIX " Portability Warning: Windows and some POSIX systems do not support 76800 baud operation.",
                             SERIAL_PREFIX ": " SERIAL_PREFIX " was compiled without 76800 baud support.  Switching to 57600 baud." } },
    { Baud115200, B115200, {} },
    { Baud115200, B115200, { NOT_ON_POSIX("128000", "115200") } },
    { Baud115200, B115200, { NOT_ON_POSIX("256000", "115200") } },
};
// clang-format on
static_assert(std::size(baudRows) == Baud256000 + 1, "every rate needs its row");

#undef NOT_ON_POSIX
#undef NOT_ON_WINDOWS
#undef SERIAL_PREFIX

struct LetterRow
{
    char letter; // lower case
    int value;
};

constexpr LetterRow parityLetters[] = {
    { 'n', ParityNone },  { 'o', ParityOdd },  { 'e', ParityEven },
    { 's', ParitySpace }, { 'm', ParityMark },
};

constexpr LetterRow dataBitsDigits[] = {
    { '5', Data5 },
    { '6', Data6 },
    { '7', Data7 },
    { '8', Data8 },
};

constexpr LetterRow stopBitsDigits[] = {
    { '1', Stop1 },
    { '2', Stop2 },
};

/** What a settings text stands for, or which part of it stands for nothing. */
struct Parsed
{
    std::optional<LineSettings> settings;
    const char *error = nullptr; // bound; null when it is about the whole text
    QString part = {};
};

// The enumerator that a letter stands for.
template <typename Type, std::size_t size>
std::optional<Type> valueOf(const LetterRow (&rows)[size], const QString &part)
{
    for (const LetterRow &row : rows) {
        if (part.size() == 1 && part.at(0).toLower() == QLatin1Char(row.letter))
            return static_cast<Type>(row.value);
    }
    return std::nullopt;
}

// The walk ends at the closing row, so that an unknown rate stands for 50 baud: intended.
BaudRateType baudRateOf(qint64 rate)
{
    const BaudListRow *row = s_UnixBaudList;
    while (row->rate != 0 && row->rate != rate)
        ++row;
    return static_cast<BaudRateType>(row->type);
}

Parsed fromNames(const QStringList &parts)
{
    const auto parity = valueOf<ParityType>(parityLetters, parts.at(1));
    if (!parity)
        return { std::nullopt, "parity error!", parts.at(1) };
    const auto dataBits = valueOf<DataBitsType>(dataBitsDigits, parts.at(2));
    if (!dataBits)
        return { std::nullopt, "dataBits error!", parts.at(2) };
    const auto stopBits = valueOf<StopBitsType>(stopBitsDigits, parts.at(3));
    if (!stopBits)
        return { std::nullopt, "stopBits error!", parts.at(3) };
    return { LineSettings { baudRateOf(parts.at(0).toInt()), *dataBits, *parity, *stopBits } };
}

// Nothing when a number names no rate, size, parity or stop bits.
std::optional<LineSettings> fromNumbers(const QStringList &parts)
{
    constexpr int last[] = { Baud256000, Data8, ParityMark, Stop1_5 };
    int numbers[std::size(last)];
    for (int i = 0; i < int(std::size(last)); ++i) {
        numbers[i] = parts.at(i).toInt();
        if (numbers[i] < 0 || numbers[i] > last[i])
            return std::nullopt;
    }
    return LineSettings { static_cast<BaudRateType>(numbers[0]),
                          static_cast<DataBitsType>(numbers[1]),
                          static_cast<ParityType>(numbers[2]),
                          static_cast<StopBitsType>(numbers[3]) };
}

QStringList partsOf(const QString &text)
{
    return text.split(QLatin1Char(text.contains(QLatin1Char(',')) ? ',' : '#'));
}

Parsed parse(const QString &text)
{
    const QStringList parts = partsOf(text);
    if (parts.size() < 4)
        return {};
    return text.contains(QLatin1Char(',')) ? fromNames(parts) : Parsed { fromNumbers(parts) };
}

struct UnavailableRow
{
    bool (*applies)(const LineSettings &line);
    const char *remark;
};

bool isReplaced(BaudRateType rate)
{
    const BaudRow *row = baudRow(rate);
    return !row || row->stored != rate || row->speed == B0;
}

// clang-format off
constexpr UnavailableRow unavailable[] = {
    { [](const LineSettings &l) { return isReplaced(l.BaudRate); },                            "another rate is set, as the system has not this one" },
    { [](const LineSettings &l) { return l.Parity == ParityMark; },                            "parity is left as it was, mark parity is not available" },
    { [](const LineSettings &l) { return l.Parity == ParitySpace && l.DataBits == Data8; },    "parity is left as it was, space parity needs 7 data bits or fewer" },
    { [](const LineSettings &l) { return l.StopBits == Stop1_5; },                             "stop bits are left as they were, 1.5 are not available" },
    { [](const LineSettings &l) { return l.StopBits == Stop2 && l.DataBits == Data5; },        "stop bits are left as they were, 5 data bits go with 1" },
};
// clang-format on

} // namespace

// clang-format off
const BaudListRow s_UnixBaudList[23] = {
    { Baud50,         50 },
    { Baud75,         75 },
    { Baud110,       110 },
    { Baud134,       134 },
    { Baud150,       150 },
    { Baud200,       200 },
    { Baud300,       300 },
    { Baud600,       600 },
    { Baud1200,     1200 },
    { Baud1800,     1800 },
    { Baud2400,     2400 },
    { Baud4800,     4800 },
    { Baud9600,     9600 },
    { Baud14400,   14400 },
    { Baud19200,   19200 },
    { Baud38400,   38400 },
    { Baud56000,   56000 },
    { Baud57600,   57600 },
    { Baud76800,   76800 },
    { Baud115200, 115200 },
    { Baud128000, 128000 },
    { Baud256000, 256000 },
    { 0, 0 },
};
// clang-format on

const BaudRow *baudRow(BaudRateType type)
{
    return type >= Baud50 && type <= Baud256000 ? &baudRows[type] : nullptr;
}

std::optional<LineSettings> parseLineSettings(const char *caller, const QString &text)
{
    if (text.isEmpty()) {
        qDebug("%s    serial settings is null", caller);
        return std::nullopt;
    }
    const Parsed parsed = parse(text);
    if (parsed.error)
        qDebug() << parsed.error << parsed.part;
    else if (!parsed.settings)
        qDebug("%s    error settings %s", caller, text.toUtf8().constData());
    return parsed.settings;
}

QString remarkOnSettings(const QString &text)
{
    const Parsed parsed = parse(text);
    if (!parsed.settings)
        return QStringLiteral("not taken; allowed are rate, parity n, o, e or s, data "
                              "bits 5 to 8 and stop bits 1 or 2, as in 9600,n,8,1");
    // Rates that are not known stand for the last row's.
    const bool isNamed = text.contains(QLatin1Char(','));
    const int rate = partsOf(text).at(0).toInt();
    if (isNamed && rate != s_UnixBaudList[parsed.settings->BaudRate].rate)
        return QStringLiteral("50 baud is set, as the rate is none of the usual 50 to 256000");
    for (const UnavailableRow &row : unavailable) {
        if (row.applies(*parsed.settings))
            return QString::fromLatin1(row.remark);
    }
    return {};
}
