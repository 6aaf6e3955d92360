#include "collectthread.h"
#include "collectview.h"

/** A plug-in that the host must refuse. */
class otherClient : public CollectThread
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.orva.Qt.ProInterface")
};

#include "wrongclass.moc"
