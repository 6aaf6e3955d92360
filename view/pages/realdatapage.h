#pragma once

#include "datareport.h"
#include "parameterinformation.h"

#include <QList>
#include <QWidget>

#include <functional>

class TrendPanel;
class TrendStore;
class ValuePanel;
class tavoViewData;

/**
 * The cards of the real-time values, three in a row, and the trends below.
 *
 * Threads: GUI thread only.
 */
class RealDataPage : public QWidget
{
    Q_OBJECT

public:
    /** Makes a card for a page. */
    using CardMaker = std::function<ValuePanel *(QWidget *page, const QString &title,
                                                 const QList<ParameterInformation *> &records)>;

    RealDataPage(const tavoViewData &viewData, const TrendStore &trends,
                 const CardMaker &createCard, QWidget *parent = nullptr);

    void showReport(const DataReport &report);
    void setStale(bool stale);

private:
    QList<ValuePanel *> m_panels;
    TrendPanel *m_trends;
};
