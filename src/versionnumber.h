#pragma once

#include <zeltools/zeltools_export.h>

#include <QDebug>
#include <QString>

#include <initializer_list>
#include <vector>

/// A dotted version number such as 1.2.3, of any number of identifiers, none included. 2.10 comes
/// after 2.9.
///
/// Versions are meant to be compared with versions of the same size. Each comparison of two sizes
/// gives one Qt warning, and then goes by a rule that callers rely on: < and > look at the
/// identifiers that both have, and are false when those are equal, while == and != also look at the
/// sizes. So 1.2 and 1.2.7 are neither < nor > nor == but <=, >= and !=. A plain value, for one
/// thread at a time; a subclass that adds no data may be copied into it.
class ZELTOOLS_EXPORT VersionNumber
{
public:
    /// No identifiers.
    VersionNumber() = default;
    VersionNumber(std::initializer_list<int> identifiers);
    /// See toListId().
    VersionNumber(const QString& text);
    VersionNumber(const VersionNumber&) = default;
    VersionNumber(VersionNumber&&) = default;
    virtual ~VersionNumber();

    VersionNumber& operator=(const VersionNumber&) = default;
    VersionNumber& operator=(VersionNumber&&) = default;
    VersionNumber& operator=(std::initializer_list<int> identifiers);
    VersionNumber& operator=(const QString& text);

    /// The parts between the dots as QString::toInt() reads them, white space around them allowed.
    /// What is no number becomes 0 without a word: "1..2" gives 1, 0, 2, "1.2a" gives 1, 0 and the
    /// empty text a single 0.
    static std::vector<int> toListId(const QString& text);

    /// The number of identifiers.
    unsigned size() const;
    /// Throws std::out_of_range beyond the last one.
    int at(unsigned i) const;
    /// "1.2.3"; empty when there are no identifiers.
    QString toString() const;

    /// Whether both have the same size; warns when not.
    static bool isValidComparison(const VersionNumber& a, const VersionNumber& b);

    bool operator<(const VersionNumber& other) const;
    bool operator>(const VersionNumber& other) const;
    bool operator<=(const VersionNumber& other) const;
    bool operator>=(const VersionNumber& other) const;
    bool operator==(const VersionNumber& other) const;
    bool operator!=(const VersionNumber& other) const;

private:
    std::vector<int> m_identifiers;
};

/// Writes `VersionNumber - "1.2.3"` as one string, which a stream that quotes strings quotes again.
ZELTOOLS_EXPORT QDebug operator<<(QDebug debug, const VersionNumber& version);
