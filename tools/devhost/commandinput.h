#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>

/**
 * Reads lines from a descriptor without blocking the event loop.
 *
 * Ownership: the descriptor stays the caller's. At its end, or after an error, it is left alone.
 */
class CommandInput : public QObject
{
    Q_OBJECT

public:
    explicit CommandInput(int descriptor, QObject *parent = nullptr);

signals:
    /** One line without its end; a last line that has none counts too. */
    void line(const QString &text);

private:
    void read();

    int m_descriptor;
    QByteArray m_rest;
    QSocketNotifier m_notifier;
};
