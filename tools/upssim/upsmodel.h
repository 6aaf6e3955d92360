#pragma once

#include "upstypes.h"

#include "registermap.h"

#include <array>
#include <bitset>
#include <deque>
#include <functional>
#include <random>

namespace upssim {

/**
 * The simulated UPS: mains, rectifier, battery, inverter, bypass and load.
 *
 * Knows no Modbus and no clock: advance() lets time pass, so that tests decide how fast.
 *
 * Threads: one thread only.
 */
class UpsModel
{
public:
    enum class Path { Off, Bypass, Inverter };
    enum class Task { None, Test, Maintenance };
    enum class Answer { Accepted, BadValue, NotNow };

    /** @param seed         of the small movements of the values
     *  @param startSecond  second in the day at which the simulation begins */
    explicit UpsModel(quint32 seed = 1, double startSecond = 0);

    /** Lets `seconds` pass; steps of 0.1 s or shorter give a smooth course. */
    void advance(double seconds);

    Surroundings surroundings;

    /** Sets the battery's charge. @param fraction  0 to 1 */
    void setCharge(double fraction);

    /** Raises or takes back event `index` whatever the state of the UPS; what the UPS itself
     *  raises stays. */
    void request(int index, bool raised);

    /** Carries out a command; one whose effect holds already is accepted again. */
    Answer command(int code);

    /** Changes a setting. @param raw  as in the register */
    Answer writeSetting(int id, quint16 raw);
    /** What writeSetting() would answer, without writing. */
    Answer checkSetting(int id, quint16 raw) const;

    /** The raw value of a setting; 0xFFFF for an identifier that is none. */
    quint16 setting(int id) const;

    /** A measurement in its unit; not a number when there is no value. */
    double measurement(int id) const;

    bool event(int index) const { return m_events.test(std::size_t(index)); }
    Path path() const { return m_path; }
    Task task() const { return m_task; }
    double charge() const { return m_charge; }
    int workingMode() const;

    const std::deque<HistoryRecord> &history() const { return m_history; }
    /** Changes whenever records leave the history. */
    quint16 historyGeneration() const { return m_generation; }

    /** Called with each new record. */
    std::function<void(const HistoryRecord &)> onRecord;

private:
    static constexpr int values = registermap::measurementCount;

    double scaled(int id) const;
    bool mainsGood() const;
    bool bypassGood() const;
    bool batteryUsable() const;
    bool eco() const;
    bool rectifying() const;
    bool discharging() const;
    double cellVoltage() const;
    bool batteryLow() const;

    void runTask(double seconds);
    void choosePath();
    void runBattery(double seconds);
    void runOverload(double seconds);
    void runTemperature(double seconds);
    void updateEvents();
    void noteChanges();
    void record(int content, bool appeared);
    void clearHistory();

    Answer startTask(Task task);
    Answer startUp();
    Answer transferToInverter();
    void endTask(int event);

    // upsreadings.cpp: the measurements that follow from the state
    void measure();
    void measureBattery();
    void measureInput();
    void measureOutput();
    void measureBypass();
    void measureFlows();
    void measureState();
    void put(int id, double value);
    void putPhases(int id, double value, double spread);
    void putText(int id, int length, const char *text);
    double jitter(double range);

    std::mt19937 m_random;
    double m_now;           // s since midnight of day 0
    double m_started;       // s, as m_now
    double m_charge = 1;    // 0 to 1
    double m_onBattery = 0; // s
    double m_overload = 0;  // s above the limit
    double m_taskLeft = 0;  // s
    double m_inverterTemperature = 38;
    int m_mainsFailures = 0;
    bool m_enabled = true;   // the inverter was started
    bool m_output = true;    // the output was not shut down
    bool m_onBypass = false; // the bypass was asked for
    bool m_empty = false;    // discharged to the end; until the mains are back
    bool m_buzzer = true;
    Path m_path = Path::Inverter;
    Task m_task = Task::None;
    bool m_hadMains = true;
    Path m_notedPath = Path::Inverter;

    std::bitset<registermap::eventCount> m_requested;
    std::bitset<registermap::eventCount> m_latched; // until "clear fault"
    std::bitset<registermap::eventCount> m_events;
    std::array<quint16, registermap::settingCount> m_settings;
    std::array<double, std::size_t(values)> m_values;
    std::deque<HistoryRecord> m_history;
    quint16 m_recordNumber = 0;
    quint16 m_generation = 1;
};

} // namespace upssim
