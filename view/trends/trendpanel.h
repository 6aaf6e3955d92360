#pragma once

#include "trends/trendreading.h"
#include "trends/trendscene.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QWidget>

class QButtonGroup;

/**
 * The courses of a device's values: small plots over a common time axis, and the values under the
 * cursor, which the mouse moves, or the keys Left, Right, Home and End.
 *
 * It looks at the store only while it is seen, and at most once a second: hidden it costs nothing,
 * and no timer runs.
 *
 * Threads:   GUI thread only.
 * Ownership: the store stays the caller's and must outlive the panel.
 */
class TrendPanel : public QWidget
{
    Q_OBJECT

public:
    explicit TrendPanel(const TrendStore &store, QWidget *parent = nullptr);

    /** The store has changed. */
    void refresh();

    TrendSpan span() const { return m_span; }
    void setSpan(TrendSpan span);

    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

protected:
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    QLayout *createHead();
    QRectF plotArea() const;
    QRectF noteArea() const;
    void rebuild();
    void pointAt(int step);

    const TrendStore &m_store;
    QButtonGroup *m_spans; // its buttons' ids are those of TrendSpan
    TrendSpan m_span = TrendSpan::TenMinutes;
    TrendScene m_scene;
    QDateTime m_newest;                  // the newest step's time
    QElapsedTimer m_sinceShown;          // since the scene was made
    bool m_showsLatest = false;          // the device was in sight then
    int m_cursor = TrendReading::noStep; // the step under it
};
