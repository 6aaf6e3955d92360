#include "collectthread.h"
#include "collectview.h"

/** A plug-in that the host must refuse. */
class tavoClient : public CollectThread
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.example.Other")
};

#include "wrongiid.moc"
