#pragma once

#include "parameterinformation.h"

#include <QTableWidget>
#include <QVariant>

#include <memory>

/**
 * What a tab of the view is made of, without meaning: the limit that a refresh stands against.
 *
 * It formats the same values in the fewest steps, writes what differs, and looks alike, so that
 * painting costs the same.
 */
class BarePage : public QWidget
{
public:
    virtual void write(const QMap<int, QVariant> &report) = 0;
};

/** What the diagram paints: six filled squares, six dashed lines, forty texts of values. */
std::unique_ptr<BarePage> bareDiagram();

/** The events of a report in a table like `model`. */
std::unique_ptr<BarePage> bareAlarmPage(const QTableWidget &model, const QStringList &texts);

/** A label for each value. */
std::unique_ptr<BarePage> bareValuePage(const QList<ParameterInformation *> &records);

/** A table like each of `models` in a tab of its own, with the settings of `records`. */
std::unique_ptr<BarePage> bareSettingsPage(const QList<QTableWidget *> &models,
                                           const QList<QList<ParameterInformation *>> &records);
