#include "simulator.h"

#include <cmath>

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
        QString error;
        if (!perform(step.action, &error))
            qWarning("Script, %g s: %s", step.time, qUtf8Printable(error));
    }
    m_model.advance(seconds);
}

void Simulator::play(const Script &script)
{
    m_model.surroundings = Surroundings();
    for (int i = 0; i < registermap::eventCount; ++i)
        m_model.request(i, false);
    m_faults.set({}, 0);
    m_faults.setFlakyRate(0);
    m_script = script;
    m_nextStep = 0;
    m_scriptTime = 0;
}

bool Simulator::perform(const Action &action, QString *error)
{
    const QVector<double> &numbers = action.numbers;
    switch (action.lever) {
    case Lever::Scenario: {
        const std::optional<Script> script = scenario(action.word);
        if (script)
            play(*script);
        else
            *error = QStringLiteral("unknown scenario \"%1\"").arg(action.word);
        return script.has_value();
    }
    case Lever::Setting:
        return accepted(m_model.writeSetting(int(numbers[0]), quint16(int(numbers[1]))), error);
    case Lever::Command:
        return accepted(m_model.command(int(numbers[0])), error);
    default:
        pull(action);
        return true;
    }
}

bool Simulator::accepted(UpsModel::Answer answer, QString *error)
{
    if (answer != UpsModel::Answer::Accepted)
        *error = answer == UpsModel::Answer::NotNow ? QStringLiteral("refused in this state")
                                                    : QStringLiteral("the value is not allowed");
    return answer == UpsModel::Answer::Accepted;
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
    case Lever::Scenario:
        break; // may be refused: perform() does them
    }
    // clang-format on
}
