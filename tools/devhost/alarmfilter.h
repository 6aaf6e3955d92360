#pragma once

#include "alarmrecord.h"

#include <QSortFilterProxyModel>

/** The part of the event log that is shown, and its order. GUI thread only. */
class AlarmFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit AlarmFilter(QObject *parent = nullptr);

    void setDevice(const QString &device); ///< empty: all
    void setLeast(Severity severity);
    void setText(const QString &text); ///< empty: all
    void setOpenOnly(bool on);

    const AlarmRecord &record(int row) const;

    /** The rows that are shown as CSV, with a line of titles. */
    QByteArray csv() const;

    /** Rows as text with tabs, for the clipboard. */
    QString text(const QModelIndexList &rows) const;

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

private:
    QStringList cells(int row) const;

    QString m_device;
    QString m_text;
    Severity m_least = Severity::Information;
    bool m_isOpenOnly = false;
};
