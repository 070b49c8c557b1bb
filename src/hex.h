#pragma once

#include <QString>

namespace zeltools
{

/// How an application wants its bytes shown, for formatters of its own. The library does not read
/// it: what the four mean is up to them.
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
