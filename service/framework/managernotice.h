#pragma once

#include <QByteArray>

#include <chrono>

// What a service tells the manager that started it, and learns from it.

/** True when the manager started this very process and wants to hear from it. */
bool isStartedByManager();

/** Sends lines such as "READY=1"; nothing happens without a manager.
 *  @return false when there is a manager and it cannot be told */
bool noticeManager(const QByteArray &lines);

/** How often the manager wants a sign of life; 0: not at all. */
std::chrono::milliseconds watchdogInterval();

/** Gives the messages of this program their priorities when they go to the journal. */
void logToJournal();
