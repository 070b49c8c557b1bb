#pragma once

class QFile;

/// A class of the host that has the name of one of the library's.
class System
{
public:
    static void syncFile(QFile& file);
};
