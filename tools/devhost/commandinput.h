#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>

/**
 * Reads lines from a descriptor without blocking the event loop.
 *
 * A line longer than `longestLine` is refused whole: its tail must not be taken for a command.
 *
 * Ownership: the descriptor stays the caller's. At its end, or after an error, it is left alone.
 */
class CommandInput : public QObject
{
    Q_OBJECT

public:
    static constexpr int longestLine = 4096; // bytes

    explicit CommandInput(int descriptor, QObject *parent = nullptr);

signals:
    /** One line without its end; a last line that has none counts too. */
    void line(const QString &text);
    /** A line was too long and nothing of it was taken; once for each such line. */
    void refused();

private:
    void read();
    void takeLines();

    int m_descriptor;
    QByteArray m_rest;
    bool m_refusing = false; // up to the next line end
    QSocketNotifier m_notifier;
};
