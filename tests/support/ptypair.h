#pragma once

#include <QByteArray>
#include <QString>
#include <termios.h>

/**
 * A serial line without hardware: a pseudo-terminal whose slave side stands for the port.
 *
 * Threads:   the master may serve one other thread meanwhile.
 * Ownership: closes both sides and removes the link.
 */
class PtyPair
{
public:
    /** @param link  symbolic link that names the slave side, like a node of udev; none if empty */
    explicit PtyPair(const QString &link = {});
    ~PtyPair();
    PtyPair(const PtyPair &) = delete;
    PtyPair &operator=(const PtyPair &) = delete;

    /** The adapter is pulled: what is open hangs up and the node vanishes. */
    void unplug();
    void plug();

    QString name() const { return m_link.isEmpty() ? m_slaveName : m_link; }
    int master() const { return m_master; }
    /** What the terminal driver was asked for. */
    termios settings() const;

    void send(const QByteArray &bytes) const;
    /** What the port sent; less than `length` when it did not come in time. */
    QByteArray receive(int length) const;

private:
    QString m_link;
    QString m_slaveName;
    int m_master = -1;
    int m_slave = -1; // kept open, so that the line lives while the port is closed
};
