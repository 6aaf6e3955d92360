#pragma once

#include "tavoviewdata.h"

/**
 * The parameters and alarm texts of the three-phase 6-20 kVA models.
 *
 * Everything is translated when the object is made.
 */
class tavo_6_20k_View : public tavoViewData
{
    Q_OBJECT

public:
    explicit tavo_6_20k_View(tavoViewData *parent = nullptr);
    ~tavo_6_20k_View() override;
};
