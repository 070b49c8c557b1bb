#pragma once

#include <zeltools/folderlistmodel.h>

#include <QTextStream>

/// The folder of the machine's own log files as a service screen shows it, followed while lines are
/// written and files rotate.
class LogFolder
{
public:
    LogFolder();

    /// Prints the files as soon as the screen shows what is on the disk, the predecessor of the
    /// general file among it; false when that does not come.
    bool show(QTextStream& out);

private:
    bool isUpToDate() const;

    tools::datamodel::FolderListModel m_model;
    int m_changes = 0; // rows that came, changed or went
};
