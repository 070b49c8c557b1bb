#pragma once

#include <zeltools/zeltools_export.h>

#include <QtGlobal>

namespace tools
{

/// A random number that the application hands out and later compares; a copy matches its source.
/// Not a secret: the numbers can be foretold by who has seen enough of them.
class ZELTOOLS_EXPORT AccessToken
{
public:
    /// Draws from [0, 2147483647]. Safe to call from any thread.
    AccessToken();

    bool match(const AccessToken& other) const;

private:
    qint32 m_value;
};

} // namespace tools
