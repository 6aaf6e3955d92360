#include "simulator.h"

#include "eventnames.h"

#include <cmath>

namespace upssim {

Simulator::Simulator(quint32 seed, double startSecond)
    : m_model(seed, startSecond)
    , m_faults(seed)
    , m_registers(m_model)
{
}

void Simulator::advance(double seconds)
{
    m_scriptTime += seconds;
    while (m_nextStep < m_script.steps.size() && m_script.steps[m_nextStep].time <= m_scriptTime) {
        const Script::Step step = m_script.steps[m_nextStep++]; // a step may replace the script
        const Result<QString> result = perform(step.action);
        if (!result)
            qWarning("Script, %g s: %s", step.time, qUtf8Printable(result.error()));
    }
    m_model.advance(seconds);
}

void Simulator::play(const Script &script)
{
    m_model.surroundings = Surroundings();
    for (int i = 0; i < registermap::eventCount; ++i)
        m_model.request(i, false);
    m_registers.releaseForced();
    m_registers.refuseWrites(0);
    m_faults.set({}, 0);
    m_faults.setFlakyRate(0);
    m_script = script;
    m_nextStep = 0;
    m_scriptTime = 0;
}

Result<QString> Simulator::perform(const Action &action)
{
    const QVector<double> &numbers = action.numbers;
    switch (action.lever) {
    case Lever::Scenario:
        return playScenario(action.word);
    case Lever::Setting:
        return accepted(m_model.writeSetting(int(numbers[0]), quint16(int(numbers[1]))));
    case Lever::Command:
        return accepted(m_model.command(int(numbers[0])));
    case Lever::Register:
        return force(int(numbers[0]), quint16(int(numbers[1])));
    case Lever::ShowRegister:
        return registerText(int(numbers[0]));
    case Lever::ShowEvents:
        return eventsText();
    case Lever::ShowWrite:
        return writeText();
    case Lever::ShowState:
        return stateText();
    default:
        pull(action);
        return QString();
    }
}

Result<QString> Simulator::playScenario(const QString &name)
{
    const Result<Script> script = scenario(name);
    if (!script)
        return Failure { script.error() };
    play(*script);
    return QString();
}

Result<QString> Simulator::force(int id, quint16 raw)
{
    if (m_registers.force(id, raw))
        return QString();
    return Failure { QStringLiteral("no register has this identifier") };
}

Result<QString> Simulator::registerText(int id) const
{
    const std::optional<quint16> raw = m_registers.value(id);
    if (raw)
        return QString::number(*raw);
    return Failure { QStringLiteral("no register has this identifier") };
}

// As reads see them: "59 Battery voltage low, 82 Abnormal input".
QString Simulator::eventsText() const
{
    QStringList events;
    for (int i = 0; i < registermap::eventCount; ++i) {
        if (*m_registers.value(registermap::firstEvent + i) != 0)
            events.append(
                QStringLiteral("%1 %2").arg(i).arg(QLatin1String(registermap::eventNames[i])));
    }
    return events.isEmpty() ? QStringLiteral("none") : events.join(QStringLiteral(", "));
}

// "3 setting 3005 18 accepted": how many writes came, and the last one.
QString Simulator::writeText() const
{
    QStringList words { QString::number(m_registers.writeCount()) };
    if (m_registers.writeCount() == 0)
        return words.first();
    const RegisterWrite &write = m_registers.lastWrite();
    words.append(write.command ? QStringLiteral("command")
                               : QStringLiteral("setting %1").arg(write.id));
    for (const quint16 value : write.values)
        words.append(QString::number(value));
    words.append(write.exception ? QStringLiteral("exception %1").arg(write.exception)
                                 : QStringLiteral("accepted"));
    return words.join(QLatin1Char(' '));
}

QString Simulator::stateText() const
{
    constexpr const char *paths[] = { "off", "bypass", "inverter" };
    constexpr const char *tasks[] = { "none", "test", "maintenance" };
    return QStringLiteral("mode %1 path %2 task %3")
        .arg(m_model.workingMode())
        .arg(QLatin1String(paths[int(m_model.path())]))
        .arg(QLatin1String(tasks[int(m_model.task())]));
}

Result<QString> Simulator::accepted(UpsModel::Answer answer)
{
    switch (answer) {
    case UpsModel::Answer::Accepted:
        return QString();
    case UpsModel::Answer::NotNow:
        return Failure { QStringLiteral("refused in this state") };
    case UpsModel::Answer::BadValue:
        break;
    }
    return Failure { QStringLiteral("the value is not allowed") };
}

// The actions that cannot be refused.
void Simulator::pull(const Action &action)
{
    Surroundings &around = m_model.surroundings;
    const bool on = action.option != 0;
    const QVector<double> &numbers = action.numbers;
    // clang-format off
    switch (action.lever) {
    case Lever::Mains:          around.mains = on; break;
    case Lever::MainsVoltage:   around.mainsVoltage = numbers[0]; break;
    case Lever::MainsFrequency: around.mainsFrequency = numbers[0]; break;
    case Lever::Bypass:         around.bypass = on; break;
    case Lever::Battery:        around.battery = on; break;
    case Lever::Charge:         m_model.setCharge(numbers[0] / 100); break;
    case Lever::Autonomy:       around.autonomy = numbers[0]; break;
    case Lever::Load:           around.load = numbers[0]; break;
    case Lever::Fan:            around.fan = on; break;
    case Lever::Epo:            around.epo = on; break;
    case Lever::Flag:           m_model.request(int(numbers[0]), numbers[1] != 0); break;
    case Lever::FreeRegisters:  m_registers.releaseForced(); break;
    case Lever::Refuse:         m_registers.refuseWrites(!on ? 0 : numbers.isEmpty() ? -1 : int(numbers[0])); break;
    case Lever::LineFlaky:      m_faults.setFlakyRate(numbers[0]); break;
    case Lever::LineFault: {
        const auto fault = Fault(action.option);
        const bool parameter = fault == Fault::Late || fault == Fault::Exception;
        const int counted = parameter ? 1 : 0;
        m_faults.set({ fault, parameter ? int(numbers[0]) : 0 },
                     numbers.size() > counted ? int(numbers[counted]) : -1);
        if (fault == Fault::None)
            m_faults.setFlakyRate(0);
        break;
    }
    case Lever::Setting:
    case Lever::Command:
    case Lever::Register:
    case Lever::Scenario:
    case Lever::ShowRegister:
    case Lever::ShowEvents:
    case Lever::ShowWrite:
    case Lever::ShowState:
        break; // may be refused, or answer: perform() does them
    }
    // clang-format on
}

} // namespace upssim
