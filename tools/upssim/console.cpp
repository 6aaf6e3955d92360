#include "console.h"

#include "simulator.h"

#include <QCoreApplication>

#include <unistd.h>
#include <utility>

namespace upssim {

namespace {

constexpr int maxLine = 4096; // bytes

} // namespace

Console::Console(Simulator &simulator, int input, Say say)
    : m_simulator(simulator)
    , m_say(std::move(say))
    , m_notifier(input, QSocketNotifier::Read)
{
    connect(&m_notifier, &QSocketNotifier::activated, this, [this] { readInput(); });
}

void Console::readInput()
{
    char buffer[512];
    const auto count = read(int(m_notifier.socket()), buffer, sizeof buffer);
    if (count <= 0)
        return m_notifier.setEnabled(false);
    QByteArray rest(buffer, int(count));
    for (int end = rest.indexOf('\n'); end >= 0; end = rest.indexOf('\n')) {
        take(rest.left(end));
        const QString line = QString::fromUtf8(std::exchange(m_pending, {})).simplified();
        if (std::exchange(m_tooLong, false))
            m_say(QStringLiteral("error line of more than %1 bytes").arg(maxLine));
        else if (!line.isEmpty())
            execute(line);
        rest.remove(0, end + 1);
    }
    take(rest);
}

// Of a line that is too long nothing is kept: its end alone may read as an action.
void Console::take(const QByteArray &bytes)
{
    m_tooLong = m_tooLong || m_pending.size() + bytes.size() > maxLine;
    if (m_tooLong)
        m_pending.clear();
    else
        m_pending += bytes;
}

void Console::execute(const QString &line)
{
    if (line == QLatin1String("quit"))
        return QCoreApplication::quit();
    const Result<Action> action = parseAction(line);
    const Result<QString> result =
        action ? m_simulator.perform(*action) : Failure { action.error() };
    const QString outcome = result ? QStringLiteral("ok ") : QStringLiteral("error ");
    const QString text = result ? *result : result.error();
    m_say(outcome + line + (text.isEmpty() ? text : QStringLiteral(": ") + text));
}

} // namespace upssim
