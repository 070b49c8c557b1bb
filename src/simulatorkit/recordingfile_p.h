#pragma once

#include <zeltools/filedescriptor.h>
#include <zeltools/simulatorkit/simulatorrecording.h>

#include <QElapsedTimer>

#include <memory>

namespace zeltools::simulatorkit
{

/// Writes a recording while it happens. Each row leaves the process at once, so that a kill loses
/// none. The first failure ends the writing; the file then has only whole rows. A file that reaches
/// the limits of a recording is ended too.
class RecordingFile
{
public:
    /// Creates or empties the file. Returns false, with error(), if it cannot be written. A pipe
    /// that nobody reads cannot be written.
    bool open(const QString& path);
    /// Writes a row with the present time.
    void write(LinkSide side, SimulatorEvent::Kind kind, const QByteArray& bytes = {});
    /// Writes the last line and forces the file to the storage.
    void end();
    /// The path and the reason of the first failure, or an empty text.
    const QString& error() const { return m_error; }

private:
    void append(const QByteArray& row);
    void fail(const QString& reason);

    std::unique_ptr<FileDescriptor> m_file;
    QElapsedTimer m_clock;
    QString m_path;
    QString m_error;
    qint64 m_size_B = 0;
    int m_events = 0;
};

} // namespace zeltools::simulatorkit
