#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include <atomic>
#include <random>
#include <thread>

/**
 * Simulated devices on pseudo-terminals and on one TCP port, which misbehave now and then.
 *
 * Unit 9 never answers. The others answer any Modbus request with values made up on the spot; about one answer in a hundred is
 * missing, cut, damaged, from another unit or preceded by garbage, and some TCP connections end
 * in the middle of one.
 *
 * Threads: all devices live in one thread of their own.
 */
class Devices
{
public:
    explicit Devices(int lines);
    ~Devices();
    Devices(const Devices &) = delete;
    Devices &operator=(const Devices &) = delete;

    QString line(int index) const { return m_names.at(index); }
    quint16 port() const { return m_port; }

private:
    struct Peer
    {
        int descriptor;
        bool tcp;
        QByteArray received;
    };

    void openLine();
    void openPort();
    void run();
    void accept();
    bool serve(Peer &peer);
    bool answer(const Peer &peer, const QByteArray &request);
    QByteArray pduFor(const QByteArray &request);

    QVector<QString> m_names;
    QVector<int> m_slaves; // held open, or the masters see hang-ups
    QVector<Peer> m_peers; // confined to the thread once it runs
    int m_listener = -1;
    quint16 m_port = 0;
    std::mt19937 m_random { 1 }; // confined to the thread
    std::atomic<bool> m_stop { false };
    std::thread m_thread;
};
