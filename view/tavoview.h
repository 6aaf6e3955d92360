#pragma once

#include "plugin/collectview.h"

/** The device's widget in the host application. Threads: GUI thread only. */
class tavoView : public CollectView
{
    Q_OBJECT

public:
    explicit tavoView(QWidget *parent = nullptr);
};
