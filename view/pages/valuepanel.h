#pragma once

#include "datareport.h"
#include "parameterinformation.h"

#include <QFrame>
#include <QList>

class QLabel;

/**
 * A white card with a title band and rows of names and values.
 *
 * It paints its own ground, so that its dark text is readable on any desktop.
 *
 * Threads:   GUI thread only.
 * Ownership: the records stay the caller's and must outlive the panel.
 */
class ValuePanel : public QFrame
{
    Q_OBJECT

public:
    ValuePanel(const QString &title, const QList<ParameterInformation *> &records,
               QWidget *parent = nullptr);

    /** Writes the values of a report, "-" for those it does not hold; only what differs. */
    void showReport(const DataReport &report);

    /** Shows the values faint and slanted, as those of a device that does not answer. */
    void setStale(bool stale);

    /** The value labels, in the order of the records. */
    const QList<QLabel *> &valueLabels() const { return m_valueLabels; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QWidget *createBody();

    const QList<ParameterInformation *> m_records;
    QLabel *m_title;
    QList<QLabel *> m_valueLabels;
};
