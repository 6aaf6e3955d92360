#pragma once

#include <QLabel>

/**
 * A label that gives way: what does not fit is cut with an ellipsis and told by the tool tip. Its
 * text stays whole.
 *
 * For texts of devices, which may be of any width; numbers are never cut.
 */
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    using QLabel::QLabel;

    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool isCut() const;
};
