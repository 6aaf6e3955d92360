#pragma once

#include "hostdevice.h"
#include "hostoptions.h"

#include <QList>
#include <QPointer>
#include <QTimer>

class QTabWidget;
class QWidget;

/**
 * Saves a picture of the window for each tab of a view, tabs within tabs included.
 *
 * It starts some time after the device's first report, and gives up when none comes.
 *
 * Threads: GUI thread only.
 */
class Screenshots : public QObject
{
    Q_OBJECT

public:
    /** @param options  its file "DIR/NAME.png" gives DIR/NAME-overview.png and so on */
    Screenshots(const HostOptions &options, QWidget &window, QWidget &view, HostDevice &device);

signals:
    /** @param error  why there are no (more) pictures; empty when all are saved */
    void finished(const QString &error);

private:
    /** One picture: the tabs to choose, from the outside to the inside. */
    struct Shot
    {
        QString name;
        QList<QPair<QTabWidget *, int>> tabs;
    };

    void take(const HostEvent &event);
    void start();
    void collect(QTabWidget &tabs, const Shot &outer);
    void prepareNext();
    void takeDialogs();
    bool save(const QString &name);

    QString m_file;
    int m_delayMs;
    bool m_takesDialogs;
    QWidget &m_window;
    QWidget &m_view;
    QTimer m_patience;
    QList<Shot> m_shots;
    bool m_started = false;
};
