#pragma once

#include "collectview.h"
#include "family.h"

class QAbstractButton;
class UpgradeDevice;

/**
 * What the control buttons do: asks the user, then has the view post the command.
 *
 * Threads:   GUI thread only.
 * Ownership: a child of the view.
 */
class ControlActions : public QObject
{
    Q_OBJECT

public:
    ControlActions(CollectView &view, const Family &family);

    /** Level 0 may not control the device; that counts when the user has answered, too. */
    void setUserLevel(int level) { m_userLevel = level; }

    /** Sets the name of the device, which the questions show. */
    void setDeviceName(const QString &name) { m_deviceName = name; }

    /** Sets the device to be upgraded; without one an upgrade ends with its command. */
    void setUpgradeDevice(UpgradeDevice *device) { m_device = device; }

    /** Sets what takes no input during an upgrade. */
    void setPages(QWidget *pages) { m_pages = pages; }

    /** Carries out what `button` stands for, if the user confirms it. */
    void press(const QAbstractButton &button);

signals:
    /** No command and no setting may be sent from now on. */
    void upgradeBegins();
    void upgradeEnded(bool isGood);

    /** A history download is asked for; into no file when the user cancelled the choice. */
    void downloadBegins(const QString &file);

private:
    bool isConfirmed(const QString &question, const ControlButtonRow &button);
    void dispatch(const CommandRow *row);
    void upgrade();
    void setTime(int command);
    void downloadHistory(int command);

    CollectView &m_view;
    const Family &m_family;
    QString m_deviceName;
    int m_userLevel = 0;
    UpgradeDevice *m_device = nullptr;
    QWidget *m_pages = nullptr;
};
