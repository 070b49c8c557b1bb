#include "versionapp.h"

VersionApp::VersionApp(int major, int minor, int fix)
    : VersionNumber{major, minor, fix}
{
}

VersionApp::~VersionApp() = default;

bool VersionApp::isValidVersionApp() const
{
    if (size() == 3)
        return true;
    qWarning() << "bool VersionApp::isValidVersionApp() const"
               << "Invalid version application (" << toString() << ") must contains 3 identifiers";
    return false;
}

int VersionApp::majorVersionApp() const
{
    return isValidVersionApp() ? at(0) : 0;
}

int VersionApp::minorVersionApp() const
{
    return isValidVersionApp() ? at(1) : 0;
}

int VersionApp::fixVersionApp() const
{
    return isValidVersionApp() ? at(2) : 0;
}
