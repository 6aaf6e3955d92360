#pragma once

#include "style/tone.h"

#include <QPointer>
#include <QWidget>

class QLabel;

/**
 * A text of some lines that explains what stands beside it; takes its room only while it says
 * something.
 *
 * No label: who looks for the labels of a dialog finds those that were always there.
 *
 * Threads: GUI thread only.
 */
class NoteText : public QWidget
{
    Q_OBJECT

public:
    /** @param like  whose font and colours it takes, style sheets included; null: its own */
    NoteText(const QLabel *like, QWidget *parent);

    /** Sets where lines are broken at the latest, in pixels. */
    void setWidest(int width) { m_widest = width; }
    void setAlignment(Qt::Alignment alignment) { m_alignment = alignment; }

    void say(const QString &text, Tone tone = Tone::Plain);
    QString text() const { return m_text; }
    Tone tone() const { return m_tone; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString shown() const;

    const QPointer<const QLabel> m_like;
    int m_widest = 480;
    Qt::Alignment m_alignment = Qt::AlignCenter;
    QString m_text;
    Tone m_tone = Tone::Plain;
};
