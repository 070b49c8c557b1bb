#pragma once

#include <QString>

namespace zeltools
{

/// Options with which an application passes the format of bytes to its own formatters. The library
/// does not read them; their meaning is up to the formatters.
struct HexOptions
{
    bool flag;
    QString first;
    QString second;
    QString third;
};

inline HexOptions hex(bool flag, const QString& first, const QString& second, const QString& third)
{
    return {flag, first, second, third};
}

} // namespace zeltools
