#include "commandtable.h"

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

CommandRow commandRow(int controlId)
{
    const auto row =
        std::find_if(std::begin(commandRows), std::end(commandRows),
                     [controlId](const CommandRow &r) { return r.controlId == controlId; });
    if (row == std::end(commandRows))
        return { controlId, CommandForm::Unlisted, 0, "" };
    return *row;
}

CommandText commandText(const ControlCmd &command)
{
    const CommandRow row = commandRow(command.controlId);
    CommandText buffer {};
    if (row.form != CommandForm::Coded && row.form != CommandForm::PassThrough)
        return buffer;
    QByteArray text;
    if (row.form == CommandForm::Coded)
        text = QByteArray::number(row.driverCode) + ',';
    const int room = int(buffer.size()) - 1 - text.size();
    // The driver reads the text to its first zero byte.
    text += encodedWithin(command.controlValue.section(QChar(0), 0, 0), room);
    std::copy(text.begin(), text.end(), buffer.begin());
    return buffer;
}
