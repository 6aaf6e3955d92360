#include "resources.h"

#include <algorithm>
#include <cstddef>
#include <malloc.h>
#include <QDir>
#include <QFile>

// Of the sanitizers' allocator, where there is one.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes() __attribute__((weak));

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

qint64 heapBytes()
{
    return qint64(__sanitizer_get_current_allocated_bytes
                      ? __sanitizer_get_current_allocated_bytes()
                      : mallinfo2().uordblks);
}

bool isOfLine(const QFileInfo &descriptor)
{
    const QString target = descriptor.symLinkTarget();
    return target.startsWith(QLatin1String("/dev/pts/")) || target.endsWith(QLatin1String(".log"));
}

} // namespace

Resources currentResources()
{
    const QFileInfoList descriptors =
        QDir(QStringLiteral("/proc/self/fd"))
            .entryInfoList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    const int lines = int(std::count_if(descriptors.begin(), descriptors.end(), isOfLine));
    malloc_trim(0);
    return { descriptors.size() - lines, lines, int(statusEntry("Threads")), statusEntry("VmRSS"),
             heapBytes() / 1024 };
}
