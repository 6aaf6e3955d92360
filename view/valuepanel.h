#pragma once

#include "parameterinformation.h"

#include <QFrame>
#include <QList>

class QLabel;

/** Shows a value of a device that does not answer faint and slanted, or as ever. */
void showAsStale(QLabel &value, bool stale);

/**
 * A white card with a title band and rows of names and values.
 *
 * It paints its own ground, so that its dark text is readable on any desktop.
 */
class ValuePanel : public QFrame
{
    Q_OBJECT

public:
    ValuePanel(const QString &title, const QList<ParameterInformation *> &records,
               QWidget *parent = nullptr);

    /** The value labels, in the order of the records. */
    const QList<QLabel *> &valueLabels() const { return m_valueLabels; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QWidget *createBody(const QList<ParameterInformation *> &records);

    QLabel *m_title;
    QList<QLabel *> m_valueLabels;
};
