#pragma once

#include <zeltools/logging/logmodule.h>
#include <zeltools/logging/rotatinglogfile.h>

#include <QThread>

#include <atomic>
#include <memory>

class TraceDelivery;

/// A private trace file of one component (a protocol dump, say) in the debug log folder, written by
/// a thread of its own, with an optional copy of every line in the ordinary log. A trace line reads
///
///     15/11/2026 03:37:40:123|text
///
/// Any thread may log lines; the setters belong to one thread. The writer thread alone writes the
/// file and has the lowest priority. At most 64 MiB wait for it. Lines that arrive when the queue
/// is full are dropped, and a line of the file gives their number at their place.
///
/// In buffered delivery (LogManager::setDelivery()) the lines take the ring of all log lines, and
/// they survive a kill of the process. Its writer thread writes the file, and lines for which the
/// ring has no room count as lost Debug lines of the module. If more than 59 objects have lines in
/// the ring, the others use their own threads.
class ZELTOOLS_EXPORT LogInFile : public QObject
{
    Q_OBJECT

public:
    class WriterThread;

    /// `name` is the name of the file without a folder. The constructor does not open the file.
    LogInFile(QObject* parent, const QString& name, const LogModule& module,
              const RotatingLogFileConfiguration& configuration);
    /// Waits until the writer has written every queued line.
    ~LogInFile() override;

    /// Queues the line for the file if setLogInFile() is on, and writes a copy in double quotes to
    /// the ordinary log at Info if setLogInDebug() is on.
    void logString(const QString& text);

    /// Sets whether lines go to the file, which is off by default. A change opens or closes the
    /// file; closing waits until all queued lines are written.
    void setLogInFile(bool enable);
    /// Sets whether lines are copied to the ordinary log, which is on by default.
    void setLogInDebug(bool enable);

    /// Opens the file. Returns false, with a Warning, if it is already open or cannot be opened.
    bool openFile();
    /// Closes the file after all queued lines are written. Returns false if it is not open.
    bool closeFile();

    /// The path of the trace file, whether or not it is open.
    QString filename() const { return m_file.primaryFilename(); }

Q_SIGNALS:
    /// Carries a line to the writer thread. It is for the class itself.
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

/// Writes the lines of a LogInFile in the order of their arrival.
class ZELTOOLS_EXPORT LogInFile::WriterThread : public QThread
{
    Q_OBJECT

public:
    /// The file stays the caller's and must outlive the thread.
    explicit WriterThread(RotatingLogFile* file);
    /// Waits until the thread has written every queued line, and ends it.
    ~WriterThread() override;

    /// Lets the lines take the ring in buffered delivery, under the module.
    void allowRing(const RotatingLogFileConfiguration& configuration, const LogModule& module);

    /// Waits until every line that was queued before is written.
    void waitUntilWritten();

public Q_SLOTS:
    /// Queues the line for the thread. Any thread may call it.
    void onWriteStringToFile(const QString& line);

protected:
    /// Writes the queued lines until the destructor ends the thread.
    void run() override;

private:
    void setPolicy(int policy);
    void waitForQueue();

    RotatingLogFile* m_file;
    std::unique_ptr<TraceDelivery> m_delivery;
    std::atomic<int> m_kernelId = 0; // 0 while the thread does not run
};
