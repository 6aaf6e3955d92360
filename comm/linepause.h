#pragma once

#include <QString>

/**
 * Keeps the process off a line while another program uses it: from begin to end nobody opens or
 * uses the line, and who uses it when it begins can be waited for.
 *
 * Threads: any.
 */
class LinePause
{
public:
    /** @param line  a serial port's name, or a TCP peer as "10.0.0.5:502" */
    explicit LinePause(const QString &line);
    ~LinePause();
    LinePause(const LinePause &) = delete;
    LinePause &operator=(const LinePause &) = delete;

    /** True once those that used the line when the pause began have left it, and closed it. */
    bool isQuiet() const;

    /** Tells whether a pause of the line is under way. */
    static bool isOn(const QString &line);

private:
    const QString m_line;
};

/** One use of a line, for as long as the object lives. In one thread. */
class LineUse
{
public:
    explicit LineUse(const QString &line);
    ~LineUse();
    LineUse(const LineUse &) = delete;
    LineUse &operator=(const LineUse &) = delete;

    /** False when a pause keeps everybody off. */
    explicit operator bool() const { return m_isAllowed; }

private:
    const QString m_line;
    bool m_isAllowed;
};
