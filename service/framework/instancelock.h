#pragma once

#include <QString>

#include <system_error>

/**
 * The right to be the one instance of a service: a locked file in its runtime folder.
 *
 * The kernel ends the lock with the process, however that ends; the file itself stays, because
 * removing it would let two processes lock two files of the same name.
 *
 * Ownership: owns the descriptor and so the lock.
 */
class InstanceLock
{
public:
    enum class Outcome { Locked, Taken, Failed };

    InstanceLock() = default;
    ~InstanceLock();
    InstanceLock(const InstanceLock &) = delete;
    InstanceLock &operator=(const InstanceLock &) = delete;

    /** Makes `folder` if need be, and sees that it is ours and closed to others. */
    [[nodiscard]] Outcome take(const QString &folder);

    /** Why take() failed, for people. */
    QString errorString() const { return m_error; }

private:
    Outcome failed(const QString &path, const std::error_code &error);

    int m_descriptor = -1;
    QString m_error;
};
