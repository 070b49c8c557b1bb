#pragma once

#include <zeltools/folderlistmodel.h>

#include <QTextStream>

/// Shows the folder of the machine's log files, as a service screen does, and follows it while
/// lines are written and files rotate.
class LogFolder
{
public:
    LogFolder();

    /// Waits until the model has the files of the disk, including the predecessor of the general
    /// log file, and prints them. Returns false after a timeout.
    bool show(QTextStream& out);

private:
    bool isUpToDate() const;

    tools::datamodel::FolderListModel m_model;
    int m_changes = 0; // of rows: insertions, removals, moves and new values
};
