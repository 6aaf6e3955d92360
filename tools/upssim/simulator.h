#pragma once

#include "deviceregisters.h"
#include "linefaults.h"
#include "script.h"

namespace upssim {

/**
 * The simulated UPS with its line and the scenario that is played to it.
 *
 * Threads: one thread only.
 */
class Simulator
{
public:
    Simulator(quint32 seed, double startSecond);

    /** Lets `seconds` pass, doing the script's steps that fall due. */
    void advance(double seconds);

    /** Starts `script` from undisturbed surroundings; what the UPS remembers stays. */
    void play(const Script &script);

    /** Does one action, unless the UPS refuses it.
     *  @return what an action that asks wants to know; of the others an empty text */
    Result<QString> perform(const Action &action);

    UpsModel &model() { return m_model; }
    LineFaults &faults() { return m_faults; }
    DeviceRegisters &registers() { return m_registers; }

private:
    void pull(const Action &action);
    Result<QString> playScenario(const QString &name);
    Result<QString> force(int id, quint16 raw);
    Result<QString> registerText(int id) const;
    QString eventsText() const;
    QString writeText() const;
    QString stateText() const;
    static Result<QString> accepted(UpsModel::Answer answer);

    UpsModel m_model;
    LineFaults m_faults;
    DeviceRegisters m_registers;
    Script m_script;
    int m_nextStep = 0;
    double m_scriptTime = 0; // s
};

} // namespace upssim
