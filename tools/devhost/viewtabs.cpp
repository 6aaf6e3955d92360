#include "viewtabs.h"

#include <QTabWidget>

QTabWidget *outermostTabs(QWidget &widget)
{
    QTabWidget *direct = widget.findChild<QTabWidget *>({}, Qt::FindDirectChildrenOnly);
    return direct ? direct : widget.findChild<QTabWidget *>();
}
