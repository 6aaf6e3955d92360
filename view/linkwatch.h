#pragma once

#include "clientnews.h"

#include <QCoreApplication>

/** Whether the device answers, as host and client tell, and since when it does not. */
class LinkWatch
{
    Q_DECLARE_TR_FUNCTIONS(LinkWatch)

public:
    /** Takes over the communication state of the host contract.
     *  @return whether that is a change */
    bool take(int state, const QDateTime &now);

    /** Takes over what the client knows, which is the exact time, too.
     *  @return whether that is a change */
    bool take(const LinkNews &news);

    bool isLost() const { return m_isLost; }

    /** "23:12:27", with its date when that is not `today`; empty when it is not known. */
    QString sinceText(const QDate &today) const;

    /** Says that the device does not answer, and since when if that is known; empty when it does. */
    QString text(const QDate &today) const;

private:
    bool m_isLost = false;
    bool m_isKnown = false; // has been told a state before
    QDateTime m_lostSince;  // invalid: it was lost when first told
};
