#include "dialogs/historyfile.h"

#include "dialogs/msgbox.h"
#include "regularfile.h"

#include <QCoreApplication>
#include <QDate>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QRegularExpression>

#include <fcntl.h>
#include <unistd.h>

namespace {

// Returns why not; nothing when it is done.
QString makeEmpty(const QString &name)
{
    // A pipe or a device is left to the export: it has nothing to be emptied, and who reads a pipe
    // would take the first writer's end for that of the history.
    const QFileInfo target(name);
    if (target.exists() && !target.isFile() && !target.isDir())
        return {};
    const OpenedFile opened =
        openRegularFile(QFile::encodeName(name).constData(), O_WRONLY | O_CREAT | O_TRUNC);
    if (opened.failure)
        return QString::fromLocal8Bit(opened.failure);
    close(opened.descriptor);
    return {};
}

} // namespace

QString historyFileName(QString device, const QDate &today)
{
    // What separates folders, or is special to a shell or another system, does not name a file.
    static const QRegularExpression special(QStringLiteral("[^\\w.-]+"),
                                            QRegularExpression::UseUnicodePropertiesOption);
    device.replace(special, QStringLiteral("_"));
    return QStringLiteral("%1-history-%2.csv")
        .arg(device, today.toString(QStringLiteral("yyyyMMdd")));
}

HistoryFile askHistoryFile(QWidget *over, const QString &proposed)
{
    QFileDialog dialog(nullptr, QCoreApplication::translate("tavoView", "Save"), QString(),
                       QCoreApplication::translate("tavoView", "files(*.csv)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("csv"));
    dialog.selectFile(proposed);
    placeOver(over, dialog);
    if (dialog.exec() != QDialog::Accepted)
        return {};
    const QString name = dialog.selectedFiles().value(0);
    const QString failure = makeEmpty(name);
    if (failure.isEmpty())
        return { HistoryFile::Choice::Made, name, QString() };
    qWarning("tavoView: cannot write %s: %s", qPrintable(name), qPrintable(failure));
    return { HistoryFile::Choice::Unwritable, name,
             QCoreApplication::translate("tavoView", "The file cannot be written!") };
}
