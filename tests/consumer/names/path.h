#pragma once

class QFile;

/// A class of the host that has the name of one of the library's.
class Path
{
public:
    static bool exists();
};
