#include "warningguard.h"

#include <mutex>

namespace {

struct Message
{
    QtMsgType type;
    QString text;
};

std::mutex messageMutex;  // not QMutex: ThreadSanitizer sees into this one
QList<Message> collected; // guarded by messageMutex

void collect(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    const std::lock_guard<std::mutex> lock(messageMutex);
    collected.append({ type, text });
}

} // namespace

WarningGuard::WarningGuard()
{
    {
        const std::lock_guard<std::mutex> lock(messageMutex);
        collected.clear();
    }
    m_previous = qInstallMessageHandler(collect);
}

WarningGuard::~WarningGuard()
{
    qInstallMessageHandler(m_previous);
}

void WarningGuard::expect(const QString &pattern)
{
    m_expected.append(QRegularExpression(pattern));
}

QStringList WarningGuard::unexpected() const
{
    const std::lock_guard<std::mutex> lock(messageMutex);
    QStringList result;
    for (const Message &message : qAsConst(collected)) {
        const auto matches = [&message](const QRegularExpression &pattern) {
            return pattern.match(message.text).hasMatch();
        };
        if (message.type != QtDebugMsg && message.type != QtInfoMsg
            && std::none_of(m_expected.begin(), m_expected.end(), matches))
            result.append(message.text);
    }
    return result;
}

QStringList WarningGuard::messages() const
{
    const std::lock_guard<std::mutex> lock(messageMutex);
    QStringList result;
    for (const Message &message : qAsConst(collected))
        result.append(message.text);
    return result;
}
