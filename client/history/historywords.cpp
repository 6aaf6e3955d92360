#include "history/historywords.h"

#include "lookup.h"

namespace {

constexpr const char *context = "tavoClient";

constexpr const char *titles[] = {
    QT_TRANSLATE_NOOP("tavoClient", "ID"),           QT_TRANSLATE_NOOP("tavoClient", "Content"),
    QT_TRANSLATE_NOOP("tavoClient", "Status"),       QT_TRANSLATE_NOOP("tavoClient", "Time"),
    QT_TRANSLATE_NOOP("tavoClient", "History mode"),
};

QMap<int, QString> words(Rows<HistoryTextRow> rows)
{
    QMap<int, QString> words;
    for (const HistoryTextRow &row : rows)
        words.insert(row.code, translated(context, row.text));
    return words;
}

} // namespace

HistoryWords historyWords(const HistoryTables &tables)
{
    HistoryWords result { words(tables.statuses), words(tables.modes), words(tables.contents), {} };
    for (const char *title : titles)
        result.titles.append(translated(context, title));
    return result;
}
