// The history file that a driver leaves behind, and its export.
#include "history/historyexport.h"
#include "targets.h"

#include <QFile>

namespace {

// Lines of at least seven fields before the first zero byte.
int recordCount(const QByteArray &input)
{
    int count = 0;
    for (const QByteArray &line : input.split('\n'))
        count += line.left(int(qstrnlen(line.constData(), uint(line.size())))).count(' ') >= 6;
    return count;
}

} // namespace

void fuzzHistory(const QByteArray &input)
{
    const QString source = QStringLiteral("history.txt");
    const QString target = QStringLiteral("history.csv");
    QFile file(source);
    require(file.open(QIODevice::WriteOnly) && file.write(input) == input.size());
    file.close();
    HistoryWords words;
    words.contents.insert(16, QStringLiteral("Battery low"));
    words.titles.append(QStringLiteral("Number"));
    exportHistory(words, source, target);
    require(file.size() == 0);
    QFile exported(target);
    require(exported.open(QIODevice::ReadOnly));
    const QByteArray lines = exported.readAll();
    require(lines.endsWith('\n') && lines.count('\n') == 1 + recordCount(input));
}
