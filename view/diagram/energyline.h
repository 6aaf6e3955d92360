#pragma once

#include "diagram/energyscene.h"

#include <QHash>
#include <QPixmap>
#include <QTimer>
#include <QVector>
#include <QWidget>

class EnergyBlock;
class QPainter;

/**
 * The animated one-line diagram of the UPS: blocks, flows between them, and panels of values.
 *
 * What is painted is computed when a report, a click or the size changes it; painting only draws,
 * and the animation costs nothing while the diagram is hidden or no energy flows.
 *
 * Threads: GUI thread only.
 */
class Energyline : public QWidget
{
    Q_OBJECT

public:
    explicit Energyline(QWidget *parent = nullptr);

    /** Takes the flows and the values from a report. */
    void flushData(QMap<int, QVariant> report);

    /** Shows the values faint and slanted, no flow and no block that carries energy while the
     *  device does not answer.
     *  @param note  why; empty with `stale` false */
    void setStale(bool stale, const QString &note = {});

    /** Shows no flow until the next report. */
    void set_all_off_Flow();

    /** Inverts the flag that says whether a block's panel is open. */
    void toggle_view_Flag(bool &flag);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void loadImages();
    void createBlocks();
    void placeBlocks();
    void toggle(const DiagramBlockRow &block);
    void rebuild();
    void animate();
    void redraw();
    EnergyScene scene() const;
    void drawStill(const QRegion &area);
    void drawBase(QPainter &painter) const;
    void drawBattery(QPainter &painter) const;
    void drawflow(QPainter &painter) const;
    void drawdate(QPainter &painter, const QRegion &area) const;
    void drawNote(QPainter &painter) const;

    struct TintedImage
    {
        QPixmap live;
        QPixmap idle;
    };

    const Family &m_family = deviceFamily();
    bool m_isLarge = false; // its texts are, by the size
    EnergyLook m_look = energyLook(m_family.diagram, m_isLarge);
    const QFont m_blockFont = m_look.font;
    EnergyState m_state;
    EnergyViewFlags m_viewFlags;
    EnergyScene m_scene;
    QVector<EnergyBlock *> m_blocks; // by the family's rows; children
    bool m_isStale = false;
    QString m_note;
    float m_dashOffset = 0;  // in pen widths, 0 down to -1000
    QTimer m_timer { this }; // runs while the diagram is shown
    QHash<QString, TintedImage> m_images;
    QPixmap m_still; // what does not move; null when it is to be drawn anew
};
