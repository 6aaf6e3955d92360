#pragma once

#include <QDialog>

class Upgrade;

/**
 * Tells the user what a quitting application waits for, with a way out.
 *
 * Threads:   GUI thread only.
 * Ownership: its own; it goes with the upgrade.
 */
class QuitWait : public QDialog
{
    Q_OBJECT

public:
    /** Shows itself when the application waits for `upgrade`. */
    static void follow(Upgrade &upgrade);

private:
    explicit QuitWait(Upgrade &upgrade);
};
