#pragma once

#include <zeltools/zeltools_export.h>

#include <QDebug>
#include <QString>

#include <initializer_list>
#include <vector>

/// A dotted version number such as 1.2.3, with any number of identifiers, including none. 2.10 is
/// greater than 2.9.
///
/// Versions are meant to be compared with versions of the same size. Each comparison of different
/// sizes gives one Qt warning and follows a rule that callers rely on: < and > compare the
/// identifiers that both have, and are false if those are equal, while == and != also compare the
/// sizes. So 1.2 and 1.2.7 are neither < nor > nor == but <=, >= and !=. An object is a plain
/// value, for one thread at a time; a subclass that adds no data may be copied into it.
class ZELTOOLS_EXPORT VersionNumber
{
public:
    /// Constructs a version without identifiers.
    VersionNumber() = default;
    /// The version {1, 2, 3} is written "1.2.3".
    VersionNumber(std::initializer_list<int> identifiers);
    /// Converts the text like toListId().
    VersionNumber(const QString& text);
    VersionNumber(const VersionNumber&) = default;
    VersionNumber(VersionNumber&&) = default;
    virtual ~VersionNumber();

    VersionNumber& operator=(const VersionNumber&) = default;
    VersionNumber& operator=(VersionNumber&&) = default;
    /// @{
    /// Replaces all identifiers; a text is converted by toListId().
    VersionNumber& operator=(std::initializer_list<int> identifiers);
    VersionNumber& operator=(const QString& text);
    /// @}

    /// The parts between the dots, converted by QString::toInt(), which allows white space around
    /// them. A part that is not a number becomes 0 without a warning: "1..2" gives 1, 0, 2, "1.2a"
    /// gives 1, 0, and the empty text gives a single 0.
    static std::vector<int> toListId(const QString& text);

    /// The number of identifiers.
    unsigned size() const;
    /// The identifier with that index, counted from 0. Throws std::out_of_range beyond the last.
    int at(unsigned i) const;
    /// The identifiers joined by dots, such as "1.2.3"; empty without identifiers.
    QString toString() const;

    /// Whether both have the same size; otherwise it gives a Qt warning.
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

/// Writes `VersionNumber - "1.2.3"` as one string, which a quoting stream quotes again.
ZELTOOLS_EXPORT QDebug operator<<(QDebug debug, const VersionNumber& version);
