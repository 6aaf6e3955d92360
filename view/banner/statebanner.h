#pragma once

#include "banner/bannertext.h"

#include <QWidget>

/**
 * The state of the device, to be read from two metres away, above all tabs.
 *
 * No label: who looks for the labels of the view finds those that were always there.
 *
 * Threads: GUI thread only.
 */
class StateBanner : public QWidget
{
    Q_OBJECT

public:
    explicit StateBanner(QWidget *parent = nullptr);

    void say(const BannerText &state);

    /** All that is shown, with the mark. */
    QString text() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    BannerText m_state { Tone::Plain, QString() };
};
