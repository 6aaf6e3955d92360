#include "commands/commandtext.h"

#include <QByteArray>

#include <algorithm>

namespace {

// The longest start of `text` that takes at most `room` bytes in the local encoding.
QByteArray encodedWithin(const QString &text, int room)
{
    const QByteArray whole = text.toLocal8Bit();
    if (whole.size() <= room)
        return whole;
    QByteArray fitting;
    for (int end = 0; end < text.size();) {
        const bool pair = text.at(end).isHighSurrogate() && end + 1 < text.size();
        end += pair ? 2 : 1;
        const QByteArray longer = text.left(end).toLocal8Bit();
        if (longer.size() > room)
            break;
        fitting = longer;
    }
    return fitting;
}

} // namespace

CommandText commandText(const CommandRow &row, const QString &value)
{
    CommandText buffer {};
    const bool isCoded = row.form == CommandForm::Coded || row.form == CommandForm::Download;
    if (!isCoded && row.form != CommandForm::PassThrough)
        return buffer;
    QByteArray text;
    if (isCoded)
        text = QByteArray::number(row.driverCode) + ',';
    const int room = int(buffer.size()) - 1 - text.size();
    // The driver reads the text to its first zero byte.
    text += encodedWithin(value.section(QChar(0), 0, 0), room);
    std::copy(text.begin(), text.end(), buffer.begin());
    return buffer;
}
