#pragma once

#include <zeltools/zeltools_export.h>

#include <QtGlobal>

namespace tools
{

/// A random number that the application hands out and later compares; a copy matches its source.
/// It is not a secret: the next numbers can be predicted from enough earlier ones.
class ZELTOOLS_EXPORT AccessToken
{
public:
    /// Draws a number from [0, 2147483647]. Any thread may call it.
    AccessToken();

    /// Whether the other token has the same number.
    bool match(const AccessToken& other) const;

private:
    qint32 m_value;
};

} // namespace tools
