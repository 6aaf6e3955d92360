#include "markdown.h"

namespace {

QString line(const QStringList &cells)
{
    QString text = QStringLiteral("|");
    for (QString cell : cells) {
        cell.replace(QLatin1Char('|'), QLatin1String("\\|"));
        text +=
            cell.isEmpty() ? QStringLiteral(" |") : QLatin1Char(' ') + cell + QLatin1String(" |");
    }
    return text + QLatin1Char('\n');
}

} // namespace

QString Markdown::table(const QStringList &titles, const QList<QStringList> &rows)
{
    QString text = line(titles) + QLatin1Char('|');
    for (int i = 0; i < titles.size(); ++i)
        text += QLatin1String(" --- |");
    text += QLatin1Char('\n');
    for (const QStringList &row : rows)
        text += line(row);
    return text + QLatin1Char('\n');
}

QString Markdown::code(const QString &text)
{
    return text.isEmpty() ? QString() : QLatin1Char('`') + text + QLatin1Char('`');
}

QString Markdown::range(int first, int count)
{
    const QString start = QString::number(first);
    return count < 2 ? start : QStringLiteral("%1–%2").arg(start).arg(first + count - 1);
}
