#include "accesstoken.h"

#include "random.h"

namespace tools
{

AccessToken::AccessToken()
    : m_value(utils::randomTypeDistributed<int, 0, 2147483647>())
{
}

bool AccessToken::match(const AccessToken& other) const
{
    return m_value == other.m_value;
}

} // namespace tools
