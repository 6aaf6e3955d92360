#pragma once

#include "plugin/collectthread.h"

/**
 * A client without a device for tests of the host: it posts what it is told to by control().
 *
 *     1 "1041"        an event of that type
 *     2 "5,1"         event flag 5 becomes 1
 *     3 "4105=270.5"  a report with that value
 *     other           a history result that names the command
 *
 * The first cycle posts 1040 and 2001. Its view has two tabs. Threads and Ownership as for CollectThread.
 */
class tavoClient : public CollectThread
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.orva.Qt.ProInterface")

public:
    ~tavoClient() override;
    int control(int id, QString value) override;
    QStringList getDataLogDesc() override;
    QStringList changeLogData(QMap<int, QVariant> data) override;
    QStringList getEventLogDesc() override;
    CollectView *getView() override;
    void loadConfig() override;
    CollectThread *create(void *handle) override;
    void poll() override;

protected:
    void run() override;

private:
    QMap<QString, QVariant> common() const;

    bool m_polled = false;
    CollectView *m_view = nullptr;
};
