#pragma once

#include <QElapsedTimer>
#include <QTimer>

#include <chrono>

/** The longest time for which the event loop of its thread did nothing for it. */
class StandStill : public QObject
{
    Q_OBJECT

public:
    StandStill();

    double longestMs() const { return m_longestMs; }
    /** Of it, what the thread itself was at work: the rest it waited for a processor. */
    double longestWorkMs() const { return m_longestWorkMs; }

private:
    void tick();

    QTimer m_timer;
    QElapsedTimer m_clock;
    double m_workBefore = 0; // ms of processor time
    double m_longestMs = 0;
    double m_longestWorkMs = 0;
};

/** Runs the event loop for so long. */
void process(std::chrono::milliseconds time);
