// The smallest host: loads the plug-in, runs one client and prints its events.
//   example-host PLUGIN DEVICE [SECONDS]
// DEVICE is a section of KOVA/TesselView/db/dev.ini beside this program.
#include <QApplication>
#include <QDebug>
#include <QPluginLoader>
#include <QTimer>

#include <collectthread.h>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv); // the plug-in supplies widgets
    if (argc < 3)
        qFatal("usage: example-host PLUGIN DEVICE [SECONDS]");
    QPluginLoader loader(QString::fromLocal8Bit(argv[1]));
    if (loader.metaData().value("IID").toString() != "com.orva.Qt.ProInterface"
        || !loader.instance())
        qFatal("%s: not a device plug-in. %s", argv[1], qPrintable(loader.errorString()));
    auto *factory = static_cast<CollectThread *>(loader.instance());

    CollectThread *client = factory->create(nullptr); // null: the process's own port manager
    client->deviceName = QString::fromLocal8Bit(argv[2]);
    client->loadConfig();
    QTimer report; // the device information map is what a host reads at any time
    QObject::connect(&report, &QTimer::timeout, [client] {
        const QMutexLocker lock(&client->mutex);
        qInfo() << client->deviceInformation.value("name")
                << client->deviceInformation.value("state") << "load"
                << client->deviceInformation.value("upsLoad") << '%';
    });
    report.start(1000);
    client->start();
    QTimer::singleShot(1000 * (argc > 3 ? atoi(argv[3]) : 60), &application, &QApplication::quit);
    const int result = application.exec();
    delete client;
    return result;
}
