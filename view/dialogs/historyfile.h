#pragma once

#include <QString>

class QDate;
class QWidget;

/** The file that a downloaded history goes to, as the user chose it. */
struct HistoryFile
{
    enum class Choice { Made, Cancelled, Unwritable };

    Choice choice = Choice::Cancelled;
    QString name;   ///< empty when cancelled
    QString notice; ///< for the user, why it cannot be written
};

/** The name that is proposed for a device's history: "ups1-history-20261121.csv". */
QString historyFileName(QString device, const QDate &today);

/** Asks for a file, over `over`'s window, and creates it empty; a pipe or a device stays as it is. */
HistoryFile askHistoryFile(QWidget *over, const QString &proposed);
