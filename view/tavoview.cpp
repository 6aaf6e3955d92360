#include "tavoview.h"

tavoView::tavoView(QWidget *parent)
    : CollectView(parent)
{
}
