#pragma once

#include <QRegularExpression>
#include <QStringList>

/**
 * Collects what Qt logs while it lives and keeps the warnings apart that nobody expected.
 *
 * A test makes one at its start and ends with QCOMPARE(guard.unexpected(), QStringList()). What the
 * platforms of the tests complain of by themselves is expected.
 *
 * Threads: messages may come from any thread; the functions from the thread that made it.
 */
class WarningGuard
{
public:
    WarningGuard();
    ~WarningGuard();
    WarningGuard(const WarningGuard &) = delete;
    WarningGuard &operator=(const WarningGuard &) = delete;

    /** Warnings that match are expected from now on. */
    void expect(const QString &pattern);

    /** The warnings and worse that no pattern matches. */
    QStringList unexpected() const;

    /** All messages so far, debug lines included. */
    QStringList messages() const;

private:
    QList<QRegularExpression> m_expected {
        QRegularExpression("propagateSizeHints"),           // offscreen
        QRegularExpression("SetInputFocus|\\(BadMatch\\)"), // X without a window manager
    };
    QtMessageHandler m_previous;
};
