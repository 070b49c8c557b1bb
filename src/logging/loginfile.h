#pragma once

#include <zeltools/logging/logmodule.h>
#include <zeltools/logging/rotatinglogfile.h>

#include <QQueue>
#include <QThread>

#include <atomic>
#include <memory>

/// A private trace file of one component (a protocol dump, say) in the debug log folder, written by
/// a thread of its own, with an optional copy of every line in the ordinary log. A trace line reads
///
///     15/11/2026 03:37:40:123|text
///
/// Lines may be logged from several threads; the switches belong to one. At most 1 Mi characters
/// wait for the writer, whose priority is the lowest: beyond that the caller writes them itself.
class ZELTOOLS_EXPORT LogInFile : public QObject
{
    Q_OBJECT

public:
    class WriterThread;

    /// `name` gives the file its name, without any folder in it. The file is not opened yet.
    LogInFile(QObject* parent, const QString& name, const LogModule& module,
              const RotatingLogFileConfiguration& configuration);
    /// Returns when every line logged before is in the file.
    ~LogInFile() override;

    /// Writes the line to the file if that is on, and a copy between double quotes to the ordinary
    /// log, at Info, if that is on. Returns before the line is in the file.
    void logString(const QString& text);

    /// Off at first. A change opens or closes the file.
    void setLogInFile(bool enable);
    /// On at first.
    void setLogInDebug(bool enable);

    /// False, with a Warning, when the file is open already or cannot be opened.
    bool openFile();
    /// False when the file is not open.
    bool closeFile();

    QString filename() const { return m_file.primaryFilename(); }

Q_SIGNALS:
    void writeStringToFile(QString string);

private:
    bool openForAppending();

    RotatingLogFile m_file;
    std::atomic<bool> m_logInFile = false;
    std::atomic<bool> m_logInDebug = true;
    LogModule m_module;
    std::unique_ptr<WriterThread> m_writerThread;
};

/// Writes the lines of a LogInFile, in the order in which they came. Lives in the thread that it
/// runs; may be called from any.
class ZELTOOLS_EXPORT LogInFile::WriterThread : public QThread
{
    Q_OBJECT

public:
    explicit WriterThread(RotatingLogFile* file);
    ~WriterThread() override;

    /// Writes in the calling thread all that waits.
    void writePending();

public Q_SLOTS:
    /// Leaves the line to the thread, or writes all that waits when that is too much.
    void onWriteStringToFile(const QString& line);

private:
    bool writeNext();

    RotatingLogFile* m_file;
    QMutex m_orderMutex; // held while a line is taken and written
    QMutex m_pendingMutex;
    QQueue<QString> m_pending;
    qint64 m_pendingLength = 0; // characters
};
