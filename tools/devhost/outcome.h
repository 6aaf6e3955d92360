#pragma once

#include <QString>

/** How something ended: well, or not and why. */
struct [[nodiscard]] Outcome
{
    QString error; ///< for the user; empty when it ended well

    bool isGood() const { return error.isEmpty(); }
};
