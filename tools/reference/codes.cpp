#include "hostvocabulary.h"
#include "markdown.h"
#include "sections.h"

#include <algorithm>
#include <iterator>

namespace {

using Markdown::code;
using Markdown::table;

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

QString severityText(EventSeverity severity)
{
    switch (severity) {
    case EventSeverity::Information:
        return QStringLiteral("information");
    case EventSeverity::Warning:
        return QStringLiteral("warning");
    case EventSeverity::Critical:
        return QStringLiteral("critical");
    }
    return {};
}

// The event by which the host is told of event `k` a second time.
QString secondType(const Family &family, int k)
{
    for (const SpecialFlagRow &flag : family.specialFlags) {
        if (flag.event == k)
            return QString::number(flag.type);
    }
    return {};
}

QString codeTable(const QString &title, Rows<HistoryTextRow> codes)
{
    QList<QStringList> rows;
    for (const HistoryTextRow &row : codes)
        rows.append({ QString::number(row.code), code(text(row.text)) });
    return table({ title, QStringLiteral("Text") }, rows);
}

QString formText(const DataLogColumn &column)
{
    switch (column.form) {
    case LogForm::Phases:
        return QStringLiteral("one decimal; %1 with slashes when %2 is 3")
            .arg(Markdown::range(column.dataId, 3))
            .arg(column.phaseId);
    case LogForm::Temperature:
        return QStringLiteral("one decimal; `-` when it rounds to less than -10");
    case LogForm::State:
    case LogForm::CutState:
        break;
    case LogForm::Number:
        return QStringLiteral("one decimal");
    }
    QStringList states;
    for (int i = 0; i < column.states.size(); ++i)
        states += QStringLiteral("%1 %2").arg(i).arg(text(column.states[i]));
    return states.join(QStringLiteral(", ")) + QStringLiteral("; others as 0");
}

struct FormRow
{
    CommandForm form;
    const char *value;
    const char *driver; ///< %1 is the code
    const char *answer;
    const char *effect; ///< of a command that has no text of its own
};

// clang-format off
constexpr FormRow formRows[] = {
    { CommandForm::Coded,       "empty",                           "`%1,value`",  "nothing",                               "" },
    { CommandForm::Download,    "the file to make",                "`%1,value`",  "1042, with `controlId` one higher",     "" },
    { CommandForm::PassThrough, "`identifier,raw`: see Settings",  "the value",   "nothing",                               "Change a setting" },
    { CommandForm::Empty,       "a time; it does not arrive",      "an empty text", "nothing",                             "Set the clock: no effect" },
    { CommandForm::ClosePort,   "empty",                           "no call",     "nothing",                               "Close the port, for an upgrade" },
};
// clang-format on

const FormRow &formRow(CommandForm form)
{
    const auto *row = std::begin(formRows);
    while (row->form != form)
        ++row;
    return *row;
}

QString effectText(const CommandRow &row, const FormRow &form)
{
    if (*form.effect != '\0')
        return text(form.effect);
    const QString consequence = text(row.button.consequence);
    return text(row.reportText)
        + (consequence.isEmpty() ? QString() : QStringLiteral(": ") + consequence);
}

QString proofText(const CommandRow &row)
{
    QStringList parts;
    for (const EffectRow &proof : row.proof) {
        if (proof.dataId != 0)
            parts += QStringLiteral("%1 = %2").arg(proof.dataId).arg(proof.value);
    }
    return parts.join(QStringLiteral(" and "));
}

QString buttonText(const ControlButtonRow &button)
{
    return button.page == ButtonPage::None
        ? QString()
        : QStringLiteral("\"%1\", %2").arg(text(button.text), code(text(button.name)));
}

const char commandIntroduction[] =
    R"(## Commands

`control(number, value)` of the client. The driver's `Control` gets a text of at most 49 bytes and returns 1 for success, 0
for failure. "Nothing" answers: the host is not told; the outcome goes to the log and the device's own view, which
calls a command confirmed once the values that prove it are reported. A driver that gets a code or a text it does not
know, the empty one included, returns 0.

)";

const char commandRemarks[] =
    R"(Every other number is taken, and reaches the driver as an empty text. Two pairs of commands share a code.

)";

const char eventIntroduction[] =
    R"(## Events

Event k is the identifier %1 + k: 1 when it is present, 0 when not; send all of them with each query. A change is told
to the host as 2006, whose "alarmId" is k when the event appears and %2 + k, %2 being the number of
events, when it goes away; some are told a second time.
The severity is what the view marks an event with; it is not told to the host.

)";

const char historyIntroduction[] =
    R"(## History

A driver that gets the code of the download leaves a line for each record in `./history.txt`: seven decimal numbers
with single blanks between them, a line feed behind them.

| Field | Content |
| --- | --- |
| 1 | number of the record; exported in hexadecimal |
| 2 | content, below |
| 3 | status, below |
| 4 | day: a whole number, counted by the device's own calendar; exported as it stands in front of the time |
| 5, 6 | second in the day, 0 to 86399: low 16 bits, high 16 bits |
| 7 | mode, below |

A code that is not in the tables is exported as an empty text.

)";

const char dataLogIntroduction[] =
    R"(## Data log

The columns of `getDataLogDesc()` and `changeLogData()`. A value that the driver never sent is logged as 0, or as the
first state. The unit is that of the measurement, whatever the title says.

)";

} // namespace

QString eventSection(const Family &family)
{
    QList<QStringList> rows;
    for (int k = 0; k < family.events.size(); ++k) {
        const EventRow &row = family.events[k];
        const bool isReserved = row.use == EventUse::Reserved;
        rows.append({ QString::number(k), QString::number(firstEventId + k),
                      isReserved ? QStringLiteral("(empty)") : code(text(row.text)),
                      code(text(row.disappear)), severityText(row.severity),
                      secondType(family, k) });
    }
    return text(eventIntroduction).arg(firstEventId).arg(family.events.size())
        + table({ QStringLiteral("k"), QStringLiteral("Identifier"), QStringLiteral("Appears"),
                  QStringLiteral("Goes away"), QStringLiteral("Severity"),
                  QStringLiteral("Also told as") },
                rows);
}

QString historySection(const HistoryTables &history)
{
    return text(historyIntroduction) + codeTable(QStringLiteral("Status"), history.statuses)
        + codeTable(QStringLiteral("Mode"), history.modes)
        + codeTable(QStringLiteral("Content"), history.contents);
}

QString dataLogSection(const Family &family)
{
    QList<QStringList> rows;
    for (const DataLogColumn &column : family.dataLogColumns)
        rows.append({ QString::number(rows.size()), code(text(family.dataLogTitles[column.title])),
                      QString::number(column.dataId), formText(column) });
    return text(dataLogIntroduction)
        + table({ QStringLiteral("Column"), QStringLiteral("Title"), QStringLiteral("Identifier"),
                  QStringLiteral("Form") },
                rows);
}

QString commandSection(const Family &family)
{
    QList<QStringList> rows;
    for (const CommandRow &row : family.commands) {
        const FormRow &form = formRow(row.form);
        const QString driver = text(form.driver);
        rows.append({ QString::number(row.command), effectText(row, form), text(form.value),
                      driver.contains(QLatin1String("%1")) ? driver.arg(row.driverCode) : driver,
                      text(form.answer), proofText(row), buttonText(row.button) });
    }
    std::sort(rows.begin(), rows.end(), [](const QStringList &a, const QStringList &b) {
        return a.first().toInt() < b.first().toInt();
    });
    return text(commandIntroduction)
        + table({ QStringLiteral("Number"), QStringLiteral("Effect"), QStringLiteral("Value"),
                  QStringLiteral("Driver gets"), QStringLiteral("Answered by"),
                  QStringLiteral("Proved by"), QStringLiteral("Button and its object name") },
                rows)
        + text(commandRemarks);
}
