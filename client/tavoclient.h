#pragma once

#include "plugin/collectthread.h"

/** The acquisition client of one UPS. */
class tavoClient : public CollectThread
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.orva.Qt.ProInterface")

public:
    explicit tavoClient(CollectThread *parent = nullptr);
};
