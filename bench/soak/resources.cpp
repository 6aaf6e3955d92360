#include "resources.h"

#include <malloc.h>
#include <QDir>
#include <QFile>

namespace {

qint64 statusEntry(const QByteArray &key)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        qFatal("soak: %s", qPrintable(status.errorString()));
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(key + ':'))
            return line.mid(key.size() + 1).replace("kB", "").trimmed().toLongLong();
    }
    return 0;
}

} // namespace

Resources currentResources()
{
    const QDir descriptors(QStringLiteral("/proc/self/fd"));
    malloc_trim(0);
    return { descriptors.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size(),
             int(statusEntry("Threads")), statusEntry("VmRSS"),
             qint64(mallinfo2().uordblks / 1024) };
}
