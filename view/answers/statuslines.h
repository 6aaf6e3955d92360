#pragma once

#include "style/tone.h"

#include <QWidget>

class NoteLine;

/**
 * What came of the last request, and why nothing can be asked for if so.
 *
 * The first line keeps its room, so that no button moves from under the pointer.
 *
 * Threads: GUI thread only.
 */
class StatusLines : public QWidget
{
    Q_OBJECT

public:
    explicit StatusLines(QWidget *parent = nullptr);

    void showAnswer(const QString &text, Tone tone);

    /** @param text  empty when all can be asked for */
    void showReason(const QString &text, Tone tone);

    QString answer() const;
    QString reason() const;

private:
    NoteLine *m_answer;
    NoteLine *m_reason;
};
