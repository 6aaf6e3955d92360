#pragma once

#include "tavoviewdata.h"

/**
 * The parameters and alarm texts of the plug-in's model family.
 *
 * The name is bound; what it holds is the family's. Everything is translated when the object is
 * made.
 */
class tavo_6_20k_View : public tavoViewData
{
    Q_OBJECT

public:
    explicit tavo_6_20k_View(tavoViewData *parent = nullptr);
    ~tavo_6_20k_View() override;

private:
    struct Page;
    static const Page pages[];
};
