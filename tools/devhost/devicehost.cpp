#include "devicehost.h"

#include "collectthread.h"
#include "configfiles.h"
#include "drivercheck.h"

#include <QCoreApplication>
#include <QTimer>

#include <unistd.h>
#include <utility>

using namespace HostContract;

DeviceHost::DeviceHost(const HostOptions &options, CollectThread &factory)
    : m_options(options)
    , m_factory(factory)
    , m_end(options.duration > 0 ? QDeadlineTimer(qint64(options.duration * 1000))
                                 : QDeadlineTimer(QDeadlineTimer::Forever))
    , m_printer(options, STDOUT_FILENO)
{
    connect(&m_printer, &HostPrinter::failed, this,
            [this] { emit finished(int(ExitCode::Output)); });
}

DeviceHost::~DeviceHost()
{
    // All at once: each may take a moment.
    for (const auto &device : m_devices)
        device->release();
    m_devices.clear();
    for (const auto &device : m_leaving)
        device->disconnect(this);
    m_leaving.clear();
}

DeviceHost::Failure DeviceHost::open()
{
    Outcome outcome = writeFiles(m_options.devices);
    if (!outcome.isGood())
        return { ExitCode::Configuration, outcome.error };
    outcome = m_printer.open(m_factory.getDataLogDesc());
    if (!outcome.isGood())
        return { ExitCode::LogFile, outcome.error };
    for (const DeviceSpec &spec : qAsConst(m_options.devices)) {
        outcome = insert(spec, int(m_devices.size()));
        if (!outcome.isGood())
            return { ExitCode::Client, outcome.error };
    }
    return parseCommands();
}

Outcome DeviceHost::writeFiles(const QList<DeviceSpec> &specs) const
{
    HostConfiguration configuration;
    configuration.language = m_options.language.startsWith(QLatin1String("zh")) ? 1 : 0;
    configuration.interval = m_options.interval;
    configuration.retries = m_options.retries;
    configuration.eventCount = m_factory.getEventLogDesc().size();
    configuration.devices = specs;
    const Outcome written =
        writeConfiguration(QCoreApplication::applicationDirPath(), configuration);
    if (!written.isGood())
        return written;
    const SerialSettings serial = writeSerialSettings(specs);
    for (const QString &note : serial.notes)
        qWarning("%s", qUtf8Printable(note));
    return serial.outcome;
}

Outcome DeviceHost::insert(const DeviceSpec &spec, int index)
{
    auto device = std::make_unique<HostDevice>(spec, m_factory);
    if (!device->create())
        return { QStringLiteral("the plug-in made no client for %1").arg(spec.name) };
    HostDevice &made = *device;
    connect(&made, &HostDevice::posted, this,
            [this, &made](const HostEvent &event) { take(made, event); });
    m_devices.insert(m_devices.begin() + index, std::move(device));
    checkDriverOnce();
    emit added(&made, index);
    if (m_isRunning)
        made.start(drive());
    return {};
}

void DeviceHost::checkDriverOnce()
{
    // The plug-in loads it with its first client, and says nothing when --quiet is on.
    if (std::exchange(m_isDriverChecked, true))
        return;
    m_driverFault = checkDriver(m_options.plugin).error;
    if (!m_driverFault.isEmpty())
        qWarning("%s", qUtf8Printable(m_driverFault));
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
    m_isRunning = true;
    for (const auto &device : m_devices)
        device->start(drive());
    for (const HostCommand &command : qAsConst(m_commands))
        schedule(command);
}

HostDevice::Drive DeviceHost::drive() const
{
    return m_options.poll ? HostDevice::Drive::Poll : HostDevice::Drive::Thread;
}

Outcome DeviceHost::add(const DeviceSpec &spec)
{
    Outcome outcome = checkBeside(spec, specs());
    if (outcome.isGood())
        outcome = writeFiles(specs() << spec);
    return outcome.isGood() ? insert(spec, int(m_devices.size())) : outcome;
}

Outcome DeviceHost::replace(HostDevice &old, const DeviceSpec &spec)
{
    const int index = specs().indexOf(old.spec());
    QList<DeviceSpec> list = specs();
    list.removeAt(index);
    Outcome outcome = checkBeside(spec, list);
    if (!outcome.isGood())
        return outcome;
    list.insert(index, spec);
    outcome = writeFiles(list);
    if (!outcome.isGood())
        return outcome;
    remove(old);
    return insert(spec, index);
}

void DeviceHost::remove(HostDevice &device)
{
    const auto place = std::find_if(m_devices.begin(), m_devices.end(),
                                    [&](const auto &owner) { return owner.get() == &device; });
    emit leaving(&device);
    std::unique_ptr<HostDevice> owner = std::move(*place);
    m_devices.erase(place);
    giveBack(std::move(owner));
}

void DeviceHost::giveBack(std::unique_ptr<HostDevice> device)
{
    // A client that waits for its line goes later: the window must not wait with it.
    HostDevice &leaver = *device;
    connect(&leaver, &HostDevice::gone, this, [this, &leaver] {
        const auto gone = std::find_if(m_leaving.begin(), m_leaving.end(),
                                       [&](const auto &owner) { return owner.get() == &leaver; });
        gone->release()->deleteLater();
        m_leaving.erase(gone);
    });
    m_leaving.push_back(std::move(device));
    leaver.release();
}

MadeDevice DeviceHost::makeProbe(const DeviceSpec &spec)
{
    const Outcome written = writeFiles(specs() << spec);
    if (!written.isGood())
        return { nullptr, written };
    auto device = std::make_unique<HostDevice>(spec, m_factory);
    if (!device->create())
        return { nullptr, { QStringLiteral("the plug-in made no client") } };
    checkDriverOnce();
    return { std::move(device), {} };
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
    HostCommand command;
    command.device = device.name();
    command.id = id;
    command.value = value;
    m_printer.printCommand(command, device.control(id, value));
}

void DeviceHost::command(const QString &line)
{
    const HostCommand command = parseCommand(line, names());
    switch (command.kind) {
    case HostCommand::Kind::Nothing:
        break;
    case HostCommand::Kind::Control:
        if (command.delay > 0)
            m_printer.printWaiting(command);
        schedule(command);
        break;
    case HostCommand::Kind::Devices:
        for (const auto &device : m_devices)
            m_printer.printState(*device);
        break;
    case HostCommand::Kind::Quit:
        emit finished(int(ExitCode::Ok));
        break;
    case HostCommand::Kind::Wrong:
        m_printer.printRefusal(line, command.error);
        break;
    }
}

void DeviceHost::refuseLongLine()
{
    m_printer.printRefusal({}, QStringLiteral("a line is longer than any command"));
}

void DeviceHost::take(HostDevice &device, const HostEvent &event)
{
    // Reports that come faster than they are printed queue up, and the end waits behind them.
    if (m_end.hasExpired())
        return;
    m_printer.printEvent(device, event);
    const std::optional<LogEntry> entry = logEntry(event, device.eventTexts());
    if (entry)
        m_printer.log(*entry);
    if (event.isRequest())
        control(device, event.map.value(Key::controlId()).toInt(),
                event.map.value(Key::controlValue()).toString());
    emit posted(&device, event);
}

HostDevice *DeviceHost::device(const QString &name) const
{
    for (const auto &device : m_devices)
        if (device->name() == name)
            return device.get();
    return nullptr;
}

QList<DeviceSpec> DeviceHost::specs() const
{
    QList<DeviceSpec> specs;
    for (const auto &device : m_devices)
        specs << device->spec();
    return specs;
}

QStringList DeviceHost::names() const
{
    QStringList names;
    for (const auto &device : m_devices)
        names << device->name();
    return names;
}
