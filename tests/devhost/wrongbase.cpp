#include <QObject>

/** A plug-in that the host must refuse. */
class tavoClient : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.orva.Qt.ProInterface")
};

#include "wrongbase.moc"
