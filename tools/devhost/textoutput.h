#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>

#include <chrono>
#include <memory>

/**
 * Writes lines to standard output without ever waiting for its reader.
 *
 * What the reader has not taken yet is kept, up to `mostWaiting` bytes; lines beyond that are left
 * out, and how many is said on standard error once the reader goes on. A host that waited instead
 * would neither end when asked to nor keep its window alive.
 *
 * Threads:   main thread.
 * Ownership: the descriptor stays the caller's.
 */
class TextOutput : public QObject
{
    Q_OBJECT

public:
    static constexpr int mostWaiting = 4 * 1024 * 1024; // bytes

    explicit TextOutput(int descriptor, QObject *parent = nullptr);
    ~TextOutput() override;

    /** Appends a line; the line end is added. */
    void writeLine(const QByteArray &line);

    /** Waits for the reader to take what is left, as long as it takes something at least once in
     *  `patience`. */
    void finish(std::chrono::milliseconds patience);

signals:
    /** The output is closed or full; once, and nothing is written after it. */
    void failed();

private:
    void writeWaiting();
    void watch(bool waits);
    void reportLeftOut();

    int m_own = -1; // another opening of the same output, which alone is set not to block
    int m_descriptor;
    QByteArray m_waiting;
    int m_leftOut = 0; // lines
    bool m_failed = false;
    std::unique_ptr<QSocketNotifier> m_notifier;
};
