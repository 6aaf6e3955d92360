#pragma once

#include "datareport.h"
#include "family.h"
#include "style/tone.h"

#include <QString>

/** What the banner goes by. */
struct BannerFacts
{
    bool isLinkLost = false;
    QString lostSince; ///< as text; empty when it is not known
    bool hasReport = false;
    DataReport report; ///< the last one
};

/** What the banner says, the mark left out. */
struct BannerText
{
    Tone tone;
    QString text;
};

/** The device's state in a line: what is worst comes first, then the numbers that count now; a number
 *  that the report has not is "–". */
BannerText bannerText(const Family &family, const BannerFacts &facts);
