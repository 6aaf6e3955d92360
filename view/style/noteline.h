#pragma once

#include "style/tone.h"

#include <QWidget>

/**
 * One line of text about what has happened; takes its room only while it says something.
 *
 * No label: who looks for the labels of a page finds those that were always there.
 *
 * Threads: GUI thread only.
 */
class NoteLine : public QWidget
{
    Q_OBJECT

public:
    using Tone = ::Tone;

    explicit NoteLine(QWidget *parent = nullptr);

    void say(const QString &text, Tone tone);
    QString text() const { return m_text; }
    Tone tone() const { return m_tone; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_text;
    Tone m_tone = Tone::Plain;
};
