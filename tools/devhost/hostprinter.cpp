#include "hostprinter.h"

#include "hostdevice.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace HostContract;

namespace {

constexpr int lineWidth = 110;
constexpr std::chrono::milliseconds endPatience(500);

const char *const eventLogTitles[] = { "Time", "Device", "Type", "State", "Event" };

QStringList eventTitles()
{
    QStringList titles;
    for (const char *title : eventLogTitles)
        titles << QLatin1String(title);
    return titles;
}

QString stateName(int state)
{
    return state == 0 ? QStringLiteral("communicating")
        : state == 1  ? QStringLiteral("lost")
                      : QStringLiteral("unknown");
}

/** For people, who need not know what is not known. */
QString stateText(int state)
{
    return state < 0 ? QStringLiteral("not connected yet") : stateName(state);
}

/** Breaks "title value" pairs into indented lines. */
QByteArray wrapped(const QStringList &pairs)
{
    QString text;
    QString line;
    for (const QString &pair : pairs) {
        if (!line.isEmpty() && line.size() + pair.size() > lineWidth) {
            text += QStringLiteral("\n    ") + line;
            line.clear();
        }
        line += (line.isEmpty() ? QString() : QStringLiteral("; ")) + pair;
    }
    if (!line.isEmpty())
        text += QStringLiteral("\n    ") + line;
    return text.toUtf8();
}

QByteArray json(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QJsonObject commandObject(const HostCommand &command)
{
    return { { QStringLiteral("command"), command.id },
             { QStringLiteral("name"), command.device },
             { QStringLiteral("value"), command.value } };
}

QString commandText(const HostCommand &command)
{
    return QStringLiteral("%1 %2 command %3 %4")
        .arg(QTime::currentTime().toString(QStringLiteral("hh:mm:ss")), command.device)
        .arg(command.id)
        .arg(command.value)
        .trimmed();
}

} // namespace

HostPrinter::HostPrinter(const HostOptions &options, int descriptor)
    : m_options(options)
    , m_out(descriptor)
{
    connect(&m_out, &TextOutput::failed, this, &HostPrinter::failed);
}

Outcome HostPrinter::open(const QStringList &dataTitles)
{
    const QStringList titles =
        QStringList { QStringLiteral("Time"), QStringLiteral("Device") } + dataTitles;
    Outcome outcome;
    if (!m_options.eventLog.isEmpty())
        outcome = m_eventLog.open(m_options.eventLog, csvRecord(eventTitles()));
    if (outcome.isGood() && !m_options.dataLog.isEmpty())
        outcome = m_dataLog.open(m_options.dataLog, csvRecord(titles));
    return outcome;
}

void HostPrinter::printEvent(HostDevice &device, const HostEvent &event)
{
    // A device that was never reached has no values, which would read as zeros.
    if (event.type == DataReportEvent && m_dataLog.isOpen() && !event.data().isEmpty())
        write(m_dataLog,
              QStringList { event.map.value(Key::time()).toString(), device.name() }
                  + device.dataRow(event.data()));
    if (m_options.json)
        m_out.writeLine(eventJson(event));
    else if (event.type == DataReportEvent)
        printReport(device, event);
    else
        m_out.writeLine(eventText(event, device.eventTexts()).toUtf8());
}

void HostPrinter::printReport(HostDevice &device, const HostEvent &event)
{
    // A client's thread reports up to ten times a second: nobody reads that.
    PrintedReport &last = m_printed[device.name()];
    if (last.age.isValid() && last.age.elapsed() < 1000 * m_options.interval)
        return;
    last.age.start();
    const QByteArray text = eventText(event, {}).toUtf8();
    if (event.data().isEmpty())
        return m_out.writeLine(text + ", " + stateText(device.state()).toUtf8());
    const QStringList titles = device.dataTitles();
    const QStringList row = device.dataRow(event.data());
    QStringList changes;
    for (int i = 0; i < qMin(titles.size(), row.size()); ++i)
        if (last.row.value(i) != row.at(i))
            changes << titles.at(i) + QLatin1Char(' ') + row.at(i);
    last.row = row;
    m_out.writeLine(text + wrapped(changes));
}

void HostPrinter::printState(const HostDevice &device)
{
    if (m_options.json)
        m_out.writeLine(json({ { QStringLiteral("name"), device.name() },
                               { QStringLiteral("link"), stateName(device.state()) } }));
    else
        m_out.writeLine(
            QStringLiteral("%1 %2").arg(device.name(), stateText(device.state())).toUtf8());
}

void HostPrinter::printCommand(const HostCommand &command, bool accepted)
{
    QJsonObject object = commandObject(command);
    object.insert(QStringLiteral("accepted"), accepted);
    const QString answer = accepted ? QStringLiteral(" accepted") : QStringLiteral(" refused");
    m_out.writeLine(m_options.json ? json(object) : (commandText(command) + answer).toUtf8());
}

void HostPrinter::printWaiting(const HostCommand &command)
{
    QJsonObject object = commandObject(command);
    object.insert(QStringLiteral("delay"), command.delay);
    const QString answer = QStringLiteral(" waits for %1 s").arg(command.delay);
    m_out.writeLine(m_options.json ? json(object) : (commandText(command) + answer).toUtf8());
}

void HostPrinter::printRefusal(const QString &line, const QString &error)
{
    m_out.writeLine(m_options.json ? json({ { QStringLiteral("line"), line },
                                            { QStringLiteral("accepted"), false },
                                            { QStringLiteral("error"), error } })
                                   : QStringLiteral("refused: %1").arg(error).toUtf8());
}

void HostPrinter::log(const LogEntry &entry)
{
    write(m_eventLog,
          { entry.timeText(), entry.device, QString::number(entry.type), kindName(entry.kind),
            entry.text });
}

void HostPrinter::finish()
{
    m_out.finish(endPatience);
}

void HostPrinter::write(LineWriter &log, const QStringList &fields)
{
    const Outcome written = log.writeLine(csvRecord(fields));
    if (!written.isGood())
        qWarning("%s", qUtf8Printable(written.error));
}
