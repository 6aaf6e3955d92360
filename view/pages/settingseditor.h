#pragma once

#include "datareport.h"
#include "parameterinformation.h"

#include <QObject>

class Dialog;
class SettingsTabs;

/**
 * Edits one setting at a time in the view's dialog.
 *
 * Threads:   GUI thread only.
 * Ownership: a child of the view, as its dialog is; the tabs and records are the view's.
 */
class SettingsEditor : public QObject
{
    Q_OBJECT

public:
    SettingsEditor(SettingsTabs &tabs, QWidget *view);

    /** Loads a record into the dialog, its options at the value that `report` has. */
    void load(ParameterInformation *record, const DataReport &report, const QString &deviceName);

    /** Nothing can be sent, and why; empty when it can. */
    void setObstacle(const QString &reason);

    /** Shows the dialog over the view, and over all other windows if it is open already. */
    void show();

    void close();

signals:
    /** The request for a changed setting. */
    void postDEvent(int type, QMap<QString, QVariant> map);

private:
    QWidget &m_view;
    Dialog *m_dialog;
    ParameterInformation *m_record = nullptr;
};
