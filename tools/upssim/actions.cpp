#include "actions.h"

#include "linefaults.h"

#include <algorithm>

namespace upssim {

namespace {

struct Number
{
    const char *name;
    double least;
    double most;
};

struct Verb
{
    const char *words;
    Lever lever;
    int option;
    int required; ///< how many of the numbers must be there
    Number numbers[2];
};

constexpr Number identifier { "IDENTIFIER", 2000, 4244 };
constexpr Number times { "[TIMES]", 1, 1e6 };

// clang-format off
constexpr Verb verbs[] = {
    { "mains on",        Lever::Mains,          1, 0, {} },
    { "mains off",       Lever::Mains,          0, 0, {} },
    { "mains voltage",   Lever::MainsVoltage,   0, 1, { { "VOLT", 0, 500 } } },
    { "mains frequency", Lever::MainsFrequency, 0, 1, { { "HERTZ", 0, 100 } } },
    { "bypass on",       Lever::Bypass,         1, 0, {} },
    { "bypass off",      Lever::Bypass,         0, 0, {} },
    { "battery on",      Lever::Battery,        1, 0, {} },
    { "battery off",     Lever::Battery,        0, 0, {} },
    { "battery charge",  Lever::Charge,         0, 1, { { "PERCENT", 0, 100 } } },
    { "autonomy",        Lever::Autonomy,       0, 1, { { "SECONDS", 1, 1e6 } } },
    { "load",            Lever::Load,           0, 1, { { "PERCENT", 0, 200 } } },
    { "fan on",          Lever::Fan,            1, 0, {} },
    { "fan off",         Lever::Fan,            0, 0, {} },
    { "epo on",          Lever::Epo,            1, 0, {} },
    { "epo off",         Lever::Epo,            0, 0, {} },
    { "set flag",        Lever::Flag,           0, 2, { { "EVENT", 0, 95 }, { "0|1", 0, 1 } } },
    { "setting",         Lever::Setting,        0, 2, { { "IDENTIFIER", 3000, 3104 }, { "RAW", -32768, 65535 } } },
    { "command",         Lever::Command,        0, 1, { { "CODE", 0, 65535 } } },
    { "register",        Lever::Register,       0, 2, { identifier, { "RAW", -32768, 65535 } } },
    { "registers free",  Lever::FreeRegisters,  0, 0, {} },
    { "refuse on",       Lever::Refuse,         1, 0, { times } },
    { "refuse off",      Lever::Refuse,         0, 0, {} },
    { "line ok",         Lever::LineFault,      int(Fault::None),      0, {} },
    { "line late",       Lever::LineFault,      int(Fault::Late),      1, { { "MILLISECONDS", 1, 60000 }, times } },
    { "line silent",     Lever::LineFault,      int(Fault::Silent),    0, { times } },
    { "line truncated",  Lever::LineFault,      int(Fault::Truncated), 0, { times } },
    { "line crc",        Lever::LineFault,      int(Fault::Crc),       0, { times } },
    { "line unit",       Lever::LineFault,      int(Fault::Unit),      0, { times } },
    { "line exception",  Lever::LineFault,      int(Fault::Exception), 1, { { "CODE", 1, 8 }, times } },
    { "line garbage",    Lever::LineFault,      int(Fault::Garbage),   0, { times } },
    { "line flaky",      Lever::LineFlaky,      0, 1, { { "RATE", 0, 1 } } },
    { "show register",   Lever::ShowRegister,   0, 1, { identifier } },
    { "show events",     Lever::ShowEvents,     0, 0, {} },
    { "show write",      Lever::ShowWrite,      0, 0, {} },
    { "show state",      Lever::ShowState,      0, 0, {} },
};
// clang-format on

constexpr char scenarioWord[] = "scenario";

int maximum(const Verb &verb)
{
    return int(std::count_if(std::begin(verb.numbers), std::end(verb.numbers),
                             [](const Number &number) { return number.name; }));
}

QString usage(const Verb &verb)
{
    QString text = QString::fromLatin1(verb.words);
    for (int i = 0; i < maximum(verb); ++i)
        text += QLatin1Char(' ') + QLatin1String(verb.numbers[i].name);
    return text;
}

const Verb *findVerb(const QStringList &words)
{
    const auto matches = [&words](const Verb &verb) {
        const QStringList own = QString::fromLatin1(verb.words).split(QLatin1Char(' '));
        return words.mid(0, own.size()) == own;
    };
    const auto verb = std::find_if(std::begin(verbs), std::end(verbs), matches);
    return verb == std::end(verbs) ? nullptr : verb;
}

Result<double> parseNumber(const QString &text, const Number &range)
{
    bool numeric = false;
    const double value = text.toDouble(&numeric);
    // Written so that "nan" falls outside too.
    if (numeric && value >= range.least && value <= range.most)
        return value;
    return Failure { QStringLiteral("\"%1\" is not a number from %2 to %3")
                         .arg(text)
                         .arg(range.least)
                         .arg(range.most) };
}

} // namespace

Result<Action> parseAction(const QString &text)
{
    const QStringList words = text.simplified().split(QLatin1Char(' '));
    Action action;
    if (words.size() == 2 && words.first() == QLatin1String(scenarioWord)) {
        action.lever = Lever::Scenario;
        action.word = words.last();
        return action;
    }
    const Verb *const verb = findVerb(words);
    if (!verb)
        return Failure { QStringLiteral("unknown action \"%1\"").arg(text.simplified()) };
    const QStringList arguments =
        words.mid(QString::fromLatin1(verb->words).count(QLatin1Char(' ')) + 1);
    if (arguments.size() < verb->required || arguments.size() > maximum(*verb))
        return Failure { QStringLiteral("expected \"%1\"").arg(usage(*verb)) };
    for (int i = 0; i < arguments.size(); ++i) {
        const Result<double> number = parseNumber(arguments[i], verb->numbers[i]);
        if (!number)
            return Failure { number.error() };
        action.numbers.append(*number);
    }
    action.lever = verb->lever;
    action.option = verb->option;
    return action;
}

QStringList actionHelp()
{
    QStringList lines;
    for (const Verb &verb : verbs)
        lines.append(usage(verb));
    lines.append(QStringLiteral("scenario NAME"));
    return lines;
}

} // namespace upssim
