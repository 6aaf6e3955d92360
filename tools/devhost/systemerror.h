#pragma once

#include <QString>

#include <cstring>

/** The system's text for an error number. */
inline QString systemError(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}
