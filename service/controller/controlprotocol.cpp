#include "controlprotocol.h"

namespace {

struct VerbRow
{
    ControlVerb verb;
    const char *word;
    bool hasNumber;
};

// clang-format off
constexpr VerbRow verbRows[] = {
    { ControlVerb::State,     "state",     false },
    { ControlVerb::Pause,     "pause",     false },
    { ControlVerb::Resume,    "resume",    false },
    { ControlVerb::Terminate, "terminate", false },
    { ControlVerb::Command,   "command",   true  },
};
// clang-format on

constexpr char okWord[] = "ok";
constexpr char errorWord[] = "error";

QByteArray firstWord(const QByteArray &line)
{
    const int blank = line.indexOf(' ');
    return blank < 0 ? line : line.left(blank);
}

} // namespace

std::optional<ControlRequest> parseControlRequest(const QByteArray &line)
{
    const QByteArray word = firstWord(line);
    for (const VerbRow &row : verbRows) {
        if (word != row.word || row.hasNumber == (word == line))
            continue;
        if (!row.hasNumber)
            return ControlRequest { row.verb, 0 };
        // The conversion also takes blanks and signs, which make another line than ours.
        const int number = line.mid(word.size() + 1).toInt();
        const ControlRequest request { row.verb, number };
        return line + '\n' == controlLine(request) ? std::optional(request) : std::nullopt;
    }
    return std::nullopt;
}

std::optional<ControlReply> parseControlReply(const QByteArray &line)
{
    const QByteArray word = firstWord(line);
    if (word != okWord && word != errorWord)
        return std::nullopt;
    return ControlReply { word == okWord, QString::fromUtf8(line.mid(word.size() + 1)) };
}

QByteArray controlLine(const ControlRequest &request)
{
    for (const VerbRow &row : verbRows) {
        if (row.verb != request.verb)
            continue;
        const QByteArray word(row.word);
        return row.hasNumber ? word + ' ' + QByteArray::number(request.command) + '\n'
                             : word + '\n';
    }
    Q_UNREACHABLE();
}

QByteArray controlLine(const ControlReply &reply)
{
    QByteArray line = reply.ok ? okWord : errorWord;
    const QString text = reply.text.simplified();
    if (!text.isEmpty())
        line += ' ' + text.toUtf8();
    return line.left(controlLineLimit - 1) + '\n';
}
