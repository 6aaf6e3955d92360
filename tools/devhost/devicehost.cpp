#include "devicehost.h"

#include "configfiles.h"
#include "plugin/collectthread.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>

#include <unistd.h>

namespace {

constexpr char TimeFormat[] = "yyyy-MM-dd hh:mm:ss";
constexpr int LineWidth = 110;

const QStringList eventLogTitles { QStringLiteral("Time"), QStringLiteral("Device"),
                                   QStringLiteral("Type"), QStringLiteral("State"),
                                   QStringLiteral("Event") };

QString stateName(int state)
{
    return state == 0 ? QStringLiteral("communicating")
        : state == 1  ? QStringLiteral("lost")
                      : QStringLiteral("unknown");
}

/** What the event log says of an event; nothing for the events that it does not keep. */
std::optional<LogEntry> logEntry(const HostEvent &event, const QStringList &eventTexts)
{
    LogEntry entry;
    entry.device = event.device();
    entry.type = event.type;
    entry.time = event.map.value(QStringLiteral("timeStr")).toString();
    if (entry.time.isEmpty())
        entry.time = event.received.toString(QLatin1String(TimeFormat));
    if (event.type == EventFlagChanged) {
        const int index = event.map.value(QStringLiteral("alarmId")).toInt();
        entry.kind =
            index < eventTexts.size() / 2 ? LogEntry::Kind::Appear : LogEntry::Kind::Disappear;
        entry.text = flagText(event, eventTexts);
        return entry;
    }
    entry.text = eventName(event.type);
    if (event.type == CommunicationRestored)
        entry.kind = LogEntry::Kind::Restored;
    else if (event.type == CommunicationLost)
        entry.kind = LogEntry::Kind::Lost;
    else if (event.type == HistoryResult)
        entry.kind = LogEntry::Kind::Result;
    else
        return {};
    if (event.type == HistoryResult)
        entry.text = event.map.value(QStringLiteral("desc")).toString();
    return entry;
}

/** Breaks "title value" pairs into indented lines. */
QByteArray wrapped(const QStringList &pairs)
{
    QString text;
    QString line;
    for (const QString &pair : pairs) {
        if (!line.isEmpty() && line.size() + pair.size() > LineWidth) {
            text += QStringLiteral("\n    ") + line;
            line.clear();
        }
        line += (line.isEmpty() ? QString() : QStringLiteral("; ")) + pair;
    }
    if (!line.isEmpty())
        text += QStringLiteral("\n    ") + line;
    return text.toUtf8();
}

} // namespace

DeviceHost::DeviceHost(const HostOptions &options, CollectThread &factory)
    : m_options(options)
    , m_factory(factory)
    , m_end(options.duration > 0 ? QDeadlineTimer(qint64(options.duration * 1000))
                                 : QDeadlineTimer(QDeadlineTimer::Forever))
    , m_out(STDOUT_FILENO)
{
}

DeviceHost::~DeviceHost()
{
    // All at once: each may take a moment.
    for (const auto &device : m_devices)
        device->release();
    m_devices.clear();
}

DeviceHost::Failure DeviceHost::open()
{
    Failure failure = writeFiles();
    if (failure.code == ExitCode::Ok)
        failure = openLogs();
    for (const DeviceSpec &spec : qAsConst(m_options.devices)) {
        if (failure.code != ExitCode::Ok)
            return failure;
        auto device = std::make_unique<HostDevice>(spec, m_factory);
        if (!device->create())
            failure = { ExitCode::Client,
                        QStringLiteral("the plug-in made no client for %1").arg(spec.name) };
        connect(device.get(), &HostDevice::posted, this,
                [this, made = device.get()](const HostEvent &event) { take(*made, event); });
        m_devices.push_back(std::move(device));
    }
    return failure.code == ExitCode::Ok ? parseCommands() : failure;
}

DeviceHost::Failure DeviceHost::writeFiles() const
{
    HostConfiguration configuration;
    configuration.language = m_options.language.startsWith(QLatin1String("zh")) ? 1 : 0;
    configuration.interval = m_options.interval;
    configuration.retries = m_options.retries;
    configuration.eventCount = m_factory.getEventLogDesc().size();
    configuration.devices = m_options.devices;
    QString error = writeConfiguration(QCoreApplication::applicationDirPath(), configuration);
    if (error.isEmpty())
        for (const QString &note : writeSerialSettings(m_options.devices, error))
            qWarning("%s", qUtf8Printable(note));
    return error.isEmpty() ? Failure() : Failure { ExitCode::Configuration, error };
}

DeviceHost::Failure DeviceHost::openLogs()
{
    const QStringList dataTitles = QStringList { QStringLiteral("Time"), QStringLiteral("Device") }
        + m_factory.getDataLogDesc();
    QString error;
    if (!m_options.eventLog.isEmpty())
        error = m_eventLog.open(m_options.eventLog, csvRecord(eventLogTitles));
    if (error.isEmpty() && !m_options.dataLog.isEmpty())
        error = m_dataLog.open(m_options.dataLog, csvRecord(dataTitles));
    return error.isEmpty() ? Failure() : Failure { ExitCode::LogFile, error };
}

DeviceHost::Failure DeviceHost::parseCommands()
{
    for (const QString &text : qAsConst(m_options.commands)) {
        const HostCommand command = parseCommand(text, names());
        if (command.kind != HostCommand::Kind::Control)
            return { ExitCode::Usage,
                     QStringLiteral("--send: %1")
                         .arg(command.error.isEmpty() ? QStringLiteral("no device command")
                                                      : command.error) };
        m_commands << command;
    }
    return {};
}

void DeviceHost::start()
{
    for (const auto &device : m_devices)
        device->start(m_options.poll ? HostDevice::Drive::Poll : HostDevice::Drive::Thread);
    for (const HostCommand &command : qAsConst(m_commands))
        schedule(command);
}

bool DeviceHost::allWereOnline() const
{
    return std::all_of(m_devices.cbegin(), m_devices.cend(),
                       [](const auto &device) { return device->wasOnline(); });
}

void DeviceHost::schedule(const HostCommand &command)
{
    HostDevice *target = device(command.device);
    QTimer::singleShot(int(command.delay * 1000), target,
                       [this, target, command] { control(*target, command.id, command.value); });
}

void DeviceHost::control(HostDevice &device, int id, const QString &value)
{
    const bool accepted = device.control(id, value);
    if (!m_options.json) {
        writeOut(QStringLiteral("%1 %2 command %3 %4 %5")
                     .arg(QTime::currentTime().toString(QStringLiteral("hh:mm:ss")), device.name())
                     .arg(id)
                     .arg(value, accepted ? QStringLiteral("sent") : QStringLiteral("refused"))
                     .toUtf8());
        return;
    }
    const QJsonObject object { { QStringLiteral("command"), id },
                               { QStringLiteral("name"), device.name() },
                               { QStringLiteral("value"), value },
                               { QStringLiteral("accepted"), accepted } };
    writeOut(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

void DeviceHost::command(const QString &line)
{
    const HostCommand command = parseCommand(line, names());
    switch (command.kind) {
    case HostCommand::Kind::Nothing:
        break;
    case HostCommand::Kind::Control:
        schedule(command);
        break;
    case HostCommand::Kind::Devices:
        printDevices();
        break;
    case HostCommand::Kind::Quit:
        emit finished(int(ExitCode::Ok));
        break;
    case HostCommand::Kind::Wrong:
        qWarning("%s", qUtf8Printable(command.error));
        break;
    }
}

void DeviceHost::take(HostDevice &device, const HostEvent &event)
{
    // Reports that come faster than they are printed queue up, and the end waits behind them.
    if (m_end.hasExpired())
        return;
    print(device, event);
    log(device, event);
    if (event.isRequest())
        control(device, event.map.value(QStringLiteral("controlId")).toInt(),
                event.map.value(QStringLiteral("controlValue")).toString());
    emit posted(&device, event);
}

void DeviceHost::print(HostDevice &device, const HostEvent &event)
{
    if (m_options.json)
        writeOut(eventJson(event));
    else if (event.type == DataReport)
        printReport(device, event);
    else
        writeOut(eventText(event, device.eventTexts()).toUtf8());
}

void DeviceHost::printReport(HostDevice &device, const HostEvent &event)
{
    // A client's thread reports up to ten times a second: nobody reads that.
    PrintedReport &last = m_printed[device.name()];
    if (last.age.isValid() && last.age.elapsed() < 1000 * m_options.interval)
        return;
    last.age.start();
    const QStringList titles = device.dataTitles();
    const QStringList row = device.dataRow(event.data());
    QStringList changes;
    for (int i = 0; i < qMin(titles.size(), row.size()); ++i)
        if (last.row.value(i) != row.at(i))
            changes << titles.at(i) + QLatin1Char(' ') + row.at(i);
    last.row = row;
    writeOut(eventText(event, {}).toUtf8() + wrapped(changes));
}

void DeviceHost::printDevices()
{
    for (const auto &device : m_devices)
        writeOut(QStringLiteral("%1 %2").arg(device->name(), stateName(device->state())).toUtf8());
}

void DeviceHost::log(HostDevice &device, const HostEvent &event)
{
    if (event.type == DataReport && m_dataLog.isOpen())
        writeLog(
            m_dataLog,
            QStringList { event.map.value(QStringLiteral("timeStr")).toString(), device.name() }
                + device.dataRow(event.data()));
    const std::optional<LogEntry> entry = logEntry(event, device.eventTexts());
    if (!entry)
        return;
    writeLog(m_eventLog,
             { entry->time, entry->device, QString::number(entry->type), kindName(entry->kind),
               entry->text });
    emit logged(*entry);
}

void DeviceHost::writeLog(LineWriter &log, const QStringList &fields)
{
    const QString error = log.writeLine(csvRecord(fields));
    if (!error.isEmpty())
        qWarning("%s", qUtf8Printable(error));
}

void DeviceHost::writeOut(const QByteArray &line)
{
    const QString error = m_out.writeLine(line);
    if (!error.isEmpty())
        emit finished(int(ExitCode::Output));
}

HostDevice *DeviceHost::device(const QString &name) const
{
    for (const auto &device : m_devices)
        if (device->name() == name)
            return device.get();
    return nullptr;
}

QStringList DeviceHost::names() const
{
    QStringList names;
    for (const DeviceSpec &spec : m_options.devices)
        names << spec.name;
    return names;
}
