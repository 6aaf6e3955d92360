#pragma once

#include "family.h"
#include "upgradedevice.h"

#include <QObject>
#include <QStringList>

/**
 * The upgrade of a device that is under way, as those see it who wait for its end.
 *
 * Apart from what carries it out, so that the view sees nothing of services.
 *
 * Threads:   GUI thread.
 * Ownership: its own; it deletes itself after finished().
 */
class Upgrade : public QObject
{
    Q_OBJECT

public slots:
    /** Ends the program of an application that waits for it in order to quit. The device may be left
     *  without firmware. */
    virtual void abandon() = 0;

signals:
    /** The application wants to quit, and waits for the program in an event loop of its own. */
    void quitWaits();

    /** The service runs again, or is left to another run that still needs it stopped.
     *  @param failures  what people should know; empty after a good upgrade */
    void finished(const QStringList &failures);

protected:
    Upgrade() = default;
};

/** Begins the upgrade of a device with its family's own program; ends with finished(), never before
 *  the event loop turns. */
Upgrade *beginUpgrade(const Family &family, UpgradeDevice &device);
