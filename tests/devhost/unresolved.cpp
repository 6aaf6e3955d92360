#include <QObject>

extern int symbolThatNobodyDefines;

/** A plug-in that the host must refuse. */
class tavoClient : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.orva.Qt.ProInterface")
};

Q_DECL_EXPORT int *fixtureSymbol = &symbolThatNobodyDefines;

#include "unresolved.moc"
