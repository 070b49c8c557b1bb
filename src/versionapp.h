#pragma once

#include <zeltools/versionnumber.h>

/// The version of an application: major, minor and fix. An assignment may leave it with another
/// number of identifiers; it is then not valid, and its three numbers are 0.
class ZELTOOLS_EXPORT VersionApp : public VersionNumber
{
public:
    /// A version of three identifiers, in the order of their names.
    VersionApp(int major, int minor, int fix);
    ~VersionApp() override;

    /// An assignment replaces all identifiers, see VersionNumber.
    using VersionNumber::operator=;

    /// Whether there are three identifiers; otherwise it gives a Qt warning. The functions below
    /// call it, too.
    bool isValidVersionApp() const;

    /// @{
    /// The number in the name; 0 if isValidVersionApp() is false.
    int majorVersionApp() const;
    int minorVersionApp() const;
    int fixVersionApp() const;
    /// @}
};
