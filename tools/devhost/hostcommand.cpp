#include "hostcommand.h"

namespace {

constexpr double LongestDelay = 86400;

HostCommand wrong(const QString &error)
{
    HostCommand command;
    command.kind = HostCommand::Kind::Wrong;
    command.error = error;
    return command;
}

/** The longest name with which the text begins as a whole word. */
QString leadingDevice(const QString &text, const QStringList &devices)
{
    QString found;
    for (const QString &name : devices)
        if ((text == name || text.startsWith(name + QLatin1Char(' ')))
            && name.size() > found.size())
            found = name;
    return found;
}

/** Cuts the first word off. */
QString takeWord(QString &text)
{
    const QString word = text.section(QLatin1Char(' '), 0, 0);
    text = text.mid(word.size()).trimmed();
    return word;
}

} // namespace

HostCommand parseCommand(const QString &line, const QStringList &devices)
{
    QString rest = line.trimmed();
    HostCommand command;
    if (rest.isEmpty())
        return command;
    if (rest == QLatin1String("quit") || rest == QLatin1String("exit")) {
        command.kind = HostCommand::Kind::Quit;
        return command;
    }
    if (rest == QLatin1String("devices")) {
        command.kind = HostCommand::Kind::Devices;
        return command;
    }
    if (rest.startsWith(QLatin1String("control ")) && leadingDevice(rest, devices).isEmpty())
        takeWord(rest);
    if (leadingDevice(rest, devices).isEmpty()) {
        QString after = rest;
        QString delay = takeWord(after);
        if (delay.startsWith(QLatin1Char('@')))
            delay.remove(0, 1);
        if (delay.endsWith(QLatin1Char('s')))
            delay.chop(1);
        bool ok = false;
        command.delay = delay.toDouble(&ok);
        if (ok && command.delay >= 0 && command.delay <= LongestDelay)
            rest = after;
    }
    command.device = leadingDevice(rest, devices);
    if (command.device.isEmpty())
        return wrong(QStringLiteral("\"%1\": no device of that name").arg(line.trimmed()));
    rest = rest.mid(command.device.size()).trimmed();
    bool ok = false;
    command.id = takeWord(rest).toInt(&ok);
    if (!ok)
        return wrong(QStringLiteral("\"%1\": no command number").arg(line.trimmed()));
    command.value = rest;
    command.kind = HostCommand::Kind::Control;
    return command;
}
