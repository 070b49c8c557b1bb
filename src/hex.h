#pragma once

#include <QString>

namespace zeltools
{

/// Options with which an application passes the format of bytes to its own formatters. The library
/// does not read them; their meaning is up to the formatters.
struct HexOptions
{
    /// @{
    /// The meaning is up to the formatter.
    bool flag;
    QString first;
    QString second;
    QString third;
    /// @}
};

/// Collects the options for one insertion into a stream.
inline HexOptions hex(bool flag, const QString& first, const QString& second, const QString& third)
{
    return {flag, first, second, third};
}

} // namespace zeltools
