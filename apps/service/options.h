#pragma once

#include <zeltools/quick/access.h>

#include <QSize>
#include <QString>

/// The options of the command line.
struct Options
{
    QString folder; ///< of the machine; a temporary one if empty
    QSize size{1280, 800};
    bool isLight = false;
    QString language; ///< that of the system if empty
    zeltools::quick::Access::Level level = zeltools::quick::Access::ReadOnly;
    QString pictureFolder; ///< If it is not empty, the program leaves its pictures there and ends.
    bool isStartMeasured = false;

    /// Ends the process if the arguments are wrong or ask for help. It needs no application object,
    /// whose construction some options prepare.
    static Options parse(int argc, char** argv);
};
