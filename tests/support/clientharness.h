#pragma once

#include "pluginharness.h"
#include "tavoclient.h"

/** The driver that the clients of this process load. */
inline FakeDriver &theDriver()
{
    static FakeDriver &driver = fakeDriverIn("libkx300_g4_6-20k");
    return driver;
}
