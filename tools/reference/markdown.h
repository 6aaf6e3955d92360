#pragma once

#include <QString>
#include <QStringList>

/** Pieces of a Markdown page. */
namespace Markdown {

/** A table under its titles; bars in cells are escaped. */
QString table(const QStringList &titles, const QList<QStringList> &rows);

/** A text as it stands, blanks at its ends included; an empty one stays empty. */
QString code(const QString &text);

/** "4133–4135", or the number alone. */
QString range(int first, int count);

} // namespace Markdown
