#pragma once

#include "stalledmachine.h"

#include <QMap>
#include <QProcess>
#include <QString>

#include <array>
#include <utility>

/// A process that runs runStalledMachine(), seen from outside.
class MachineProcess
{
public:
    using Acknowledgements = std::array<LineAcknowledgement, stalledMachineThreads>;
    /// How often a line is found, by the numbers of its thread and of the line.
    using LineCounts = QMap<std::pair<int, int>, int>;

    /// The folder of acknowledgements must exist; that of the machine need not.
    MachineProcess(const QString& mode, const QString& folder,
                   const QString& acknowledgementsFolder);

    void start();
    /// Returns whether every thread has logged a line before a timeout.
    bool waitForAllThreads() const;
    void kill();
    /// Reads standard error meanwhile. Returns false after a timeout.
    bool waitForEnd();
    qint64 processId() const { return m_processId; } ///< also after the end

    QProcess& process() { return m_process; }
    Acknowledgements acknowledgements() const;
    /// The longest call so far, including one that a kill has ended.
    double longestWait_ms() const;
    LineCounts linesInFile() const;

private:
    QProcess m_process;
    const QString m_folder;
    const QString m_acknowledgements;
    qint64 m_processId = 0;
    qint64 m_killedAt_ns = 0;
};
