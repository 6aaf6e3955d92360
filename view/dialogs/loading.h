#pragma once

#include <QTimer>
#include <QWidget>

class QPainter;

/**
 * A spinner of twelve dots, one turn in 600 ms.
 *
 * Threads: GUI thread only.
 */
class Loading : public QWidget
{
    Q_OBJECT

public:
    explicit Loading(QWidget *parent = nullptr);

    /** Draws the dots around the painter's origin for the size of the last paint. */
    void drawLoading(QPainter *painter);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void advance();

    int m_step = 0;          // phase, 0 to 11
    QTimer m_timer { this }; // runs as long as the widget lives: hiding only stops the painting
    int m_width = 0;
    int m_height = 0;
};
