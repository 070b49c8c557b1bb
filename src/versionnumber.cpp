#include "versionnumber.h"

#include <QStringList>

#include <algorithm>

namespace
{

/// Compares the first identifiers that differ: the result is below or above 0. It is 0 if one list
/// begins with the other.
int compareCommon(const std::vector<int>& a, const std::vector<int>& b)
{
    const auto [left, right] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    if (left == a.end() || right == b.end())
        return 0;
    return *left < *right ? -1 : 1;
}

} // namespace

VersionNumber::VersionNumber(std::initializer_list<int> identifiers)
    : m_identifiers(identifiers)
{
}

VersionNumber::VersionNumber(const QString& text)
    : m_identifiers(toListId(text))
{
}

VersionNumber::~VersionNumber() = default;

VersionNumber& VersionNumber::operator=(std::initializer_list<int> identifiers)
{
    m_identifiers = identifiers;
    return *this;
}

VersionNumber& VersionNumber::operator=(const QString& text)
{
    m_identifiers = toListId(text);
    return *this;
}

std::vector<int> VersionNumber::toListId(const QString& text)
{
    std::vector<int> identifiers;
    const QStringList parts = text.split(QLatin1Char('.'));
    for (const QString& part : parts)
        identifiers.push_back(part.toInt());
    return identifiers;
}

unsigned VersionNumber::size() const
{
    return static_cast<unsigned>(m_identifiers.size());
}

int VersionNumber::at(unsigned i) const
{
    return m_identifiers.at(i);
}

QString VersionNumber::toString() const
{
    QStringList parts;
    for (const int identifier : m_identifiers)
        parts += QString::number(identifier);
    return parts.join(QLatin1Char('.'));
}

bool VersionNumber::isValidComparison(const VersionNumber& a, const VersionNumber& b)
{
    if (a.size() == b.size())
        return true;
    qWarning() << "static bool VersionNumber::isValidComparison(const VersionNumber&, "
                  "const VersionNumber&)"
               << "Invalid comparison version (" << a.toString() << ") , expecting ("
               << b.toString() << ") versions identifiers";
    return false;
}

bool VersionNumber::operator<(const VersionNumber& other) const
{
    isValidComparison(*this, other);
    return compareCommon(m_identifiers, other.m_identifiers) < 0;
}

bool VersionNumber::operator>(const VersionNumber& other) const
{
    isValidComparison(*this, other);
    return compareCommon(m_identifiers, other.m_identifiers) > 0;
}

bool VersionNumber::operator<=(const VersionNumber& other) const
{
    return !(*this > other);
}

bool VersionNumber::operator>=(const VersionNumber& other) const
{
    return !(*this < other);
}

bool VersionNumber::operator==(const VersionNumber& other) const
{
    isValidComparison(*this, other);
    return m_identifiers == other.m_identifiers;
}

bool VersionNumber::operator!=(const VersionNumber& other) const
{
    return !(*this == other);
}

QDebug operator<<(QDebug debug, const VersionNumber& version)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << QStringLiteral("VersionNumber - \"%1\"").arg(version.toString());
    return debug;
}
