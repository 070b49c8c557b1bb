#pragma once

#include <zeltools/logging/logmodule.h>
#include <zeltools/logging/rotatinglogfile.h>

#include <QThread>

#include <atomic>
#include <memory>

class TraceQueue;

/// A private trace file of one component (a protocol dump, say) in the debug log folder, written by
/// a thread of its own, with an optional copy of every line in the ordinary log. A trace line reads
///
///     15/11/2026 03:37:40:123|text
///
/// Lines may be logged from several threads; the switches belong to one. No caller ever writes to
/// the file. At most 64 MiB wait for the writer, whose priority is the lowest. Lines that come when
/// there is no room are dropped; a line of the file tells at their place how many.
class ZELTOOLS_EXPORT LogInFile : public QObject
{
    Q_OBJECT

public:
    class WriterThread;

    /// `name` gives the file its name, without any folder in it. The file is not opened yet.
    LogInFile(QObject* parent, const QString& name, const LogModule& module,
              const RotatingLogFileConfiguration& configuration);
    /// Returns when the writer has every line in the file that waited for it.
    ~LogInFile() override;

    /// Writes the line to the file if that is on, and a copy between double quotes to the ordinary
    /// log, at Info, if that is on. Returns before the line is in the file.
    void logString(const QString& text);

    /// Off at first. A change opens or closes the file, the latter when what was logged before is
    /// in it.
    void setLogInFile(bool enable);
    /// On at first.
    void setLogInDebug(bool enable);

    /// False, with a Warning, when the file is open already or cannot be opened.
    bool openFile();
    /// False when the file is not open. Returns when what was logged before is in the file.
    bool closeFile();

    QString filename() const { return m_file.primaryFilename(); }

Q_SIGNALS:
    void writeStringToFile(QString string);

private:
    bool openForAppending();
    bool closeWhenWritten();

    RotatingLogFile m_file;
    std::atomic<bool> m_logInFile = false;
    std::atomic<bool> m_logInDebug = true;
    LogModule m_module;
    std::unique_ptr<WriterThread> m_writerThread;
};

/// Writes the lines of a LogInFile in the order in which they came.
class ZELTOOLS_EXPORT LogInFile::WriterThread : public QThread
{
    Q_OBJECT

public:
    explicit WriterThread(RotatingLogFile* file);
    /// Ends the thread when it has written every line that it took.
    ~WriterThread() override;

    /// Returns when every line that came before is written.
    void waitUntilWritten();

public Q_SLOTS:
    /// Leaves the line to the thread. Any thread may call it.
    void onWriteStringToFile(const QString& line);

protected:
    void run() override;

private:
    void setPolicy(int policy);

    RotatingLogFile* m_file;
    std::unique_ptr<TraceQueue> m_queue;
    std::atomic<int> m_kernelId = 0; // 0 while the thread does not run
};
