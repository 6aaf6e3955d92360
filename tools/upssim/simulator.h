#pragma once

#include "deviceregisters.h"
#include "linefaults.h"
#include "script.h"

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

    /** Does one action; false with `error` set when the UPS refuses it. */
    bool perform(const Action &action, QString *error);

    UpsModel &model() { return m_model; }
    LineFaults &faults() { return m_faults; }
    DeviceRegisters &registers() { return m_registers; }

private:
    void pull(const Action &action);
    static bool accepted(UpsModel::Answer answer, QString *error);

    UpsModel m_model;
    LineFaults m_faults;
    DeviceRegisters m_registers;
    Script m_script;
    int m_nextStep = 0;
    double m_scriptTime = 0; // s
};
