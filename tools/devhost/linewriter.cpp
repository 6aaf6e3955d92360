#include "linewriter.h"

#include "systemerror.h"

#include <QFile>
#include <QStringList>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

/** The first line of an open file without its line end; by way of its descriptor, since the name
 *  may stand for another file by now. */
QByteArray firstLine(int descriptor)
{
    QFile reader(QStringLiteral("/proc/self/fd/%1").arg(descriptor));
    if (!reader.open(QIODevice::ReadOnly))
        return {};
    const QByteArray line = reader.readLine();
    return line.endsWith('\n') ? line.chopped(1) : line;
}

} // namespace

LineWriter::~LineWriter()
{
    if (isOpen())
        ::close(m_descriptor);
}

Outcome LineWriter::open(const QString &file, const QByteArray &header)
{
    // Without waiting: a FIFO that nobody reads would stop the host here for good.
    const int descriptor = ::open(QFile::encodeName(file).constData(),
                                  O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0644);
    const int failure = errno;
    if (descriptor < 0 && failure == ENXIO)
        return { QStringLiteral("cannot open %1: nobody reads from it").arg(file) };
    if (descriptor < 0)
        return { QStringLiteral("cannot open %1: %2").arg(file, systemError(failure)) };
    m_descriptor = descriptor;
    m_name = file;
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0)
        return { QStringLiteral("cannot read the size of %1: %2").arg(file, systemError(errno)) };
    if (!S_ISREG(status.st_mode) || status.st_size == 0)
        return writeLine(header);
    if (firstLine(descriptor) == header)
        return {};
    return { QStringLiteral("%1 holds other columns than this log").arg(file) };
}

Outcome LineWriter::writeLine(const QByteArray &line)
{
    if (!isOpen())
        return {};
    struct stat before = {};
    const bool regular = ::fstat(m_descriptor, &before) == 0 && S_ISREG(before.st_mode);
    if (writeAll(line + '\n')) {
        m_failing = false;
        return {};
    }
    const int failure = errno;
    QString rest;
    if (regular && ::ftruncate(m_descriptor, before.st_size) != 0)
        rest = QStringLiteral(" (and a part of the line stays)");
    if (std::exchange(m_failing, true))
        return {};
    return { QStringLiteral("cannot write %1: %2%3").arg(m_name, systemError(failure), rest) };
}

bool LineWriter::writeAll(const QByteArray &bytes)
{
    int done = 0;
    while (done < bytes.size()) {
        const ssize_t written =
            ::write(m_descriptor, bytes.constData() + done, size_t(bytes.size() - done));
        if (written > 0)
            done += int(written);
        else if (written == 0 || errno != EINTR)
            return false;
    }
    return true;
}

QByteArray csvRecord(const QStringList &fields)
{
    QByteArray record;
    for (const QString &field : fields) {
        QByteArray text = field.toUtf8();
        const bool quote =
            text.contains(',') || text.contains('"') || text.contains('\n') || text.contains('\r');
        if (quote)
            text = '"' + text.replace('"', "\"\"") + '"';
        record += text + ',';
    }
    record.chop(1);
    return record;
}
