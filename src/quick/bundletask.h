#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QString>
#include <qqml.h>

#include <memory>

namespace zeltools::quick
{

class BundleWriter;

/// Writes a support bundle of this machine into a folder, for example onto a memory stick, while
/// the screen shows the progress. docs/support-bundle.md lists the content. Another thread writes;
/// the file is complete or not there. Every level of Access may do it, since it only reads the
/// machine; an event line says who has begun a bundle.
///
/// Use it in the thread of the QML engine. Its destructor cancels a running bundle and does not
/// wait for it; only the end of the application does.
class ZELTOOLS_EXPORT BundleTask : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(BundleTask)
    /// Whether the library was built with support bundles. If not, start() fails.
    Q_PROPERTY(bool isAvailable READ isAvailable CONSTANT)
    /// The folder of the bundle, usually that of a stick.
    Q_PROPERTY(QString folder READ folder WRITE setFolder NOTIFY folderChanged)
    /// The name of the file in the folder. If it is empty, start() sets
    /// "zeltools-HOST-yyyyMMdd-hhmmss-zzz.tar.zst".
    Q_PROPERTY(QString fileName READ fileName WRITE setFileName NOTIFY fileNameChanged)
    /// Whether a bundle is being written.
    Q_PROPERTY(bool running READ isRunning NOTIFY statusChanged)
    /// From 0 to 1.
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged)
    /// The result of the last start().
    Q_PROPERTY(zeltools::quick::BundleTask::Status status READ status NOTIFY statusChanged)
    /// The reason for the user why the last bundle failed; messages of the system are in its own
    /// language.
    Q_PROPERTY(QString error READ error NOTIFY statusChanged)

public:
    /// The states of the task. Done, Canceled and Failed last until the next start().
    enum Status : int { Idle, Running, Done, Canceled, Failed };
    Q_ENUM(Status)

    explicit BundleTask(QObject* parent = nullptr);
    ~BundleTask() override;

    bool isAvailable() const { return m_writer != nullptr; }
    QString folder() const { return m_folder; }
    void setFolder(const QString& folder);
    QString fileName() const { return m_fileName; }
    void setFileName(const QString& fileName);
    bool isRunning() const { return m_status == Running; }
    double progress() const { return m_progress; }
    Status status() const { return m_status; }
    QString error() const;

    /// Starts a bundle, and does nothing while one is being written. The folder must exist, and the
    /// host must have initialized Path.
    Q_INVOKABLE void start();
    /// Cancels the running bundle, which may take some seconds. One that is complete and is only
    /// being forced to the storage ends as Done.
    Q_INVOKABLE void cancel();

Q_SIGNALS:
    void folderChanged();
    void fileNameChanged();
    void progressChanged();
    void statusChanged();

private:
    /// A reason in the language of the screen, which may change while it is shown.
    struct Obstacle
    {
        const char* text = nullptr; ///< null if there is none
        QString argument;           ///< of the text, if it has one
    };

    void showProgress(double progress);
    void setStatus(Status status);
    void finish(bool isDone);
    /// Why a bundle cannot be started.
    Obstacle obstacle() const;

    const std::unique_ptr<BundleWriter> m_writer;
    QString m_folder;
    QString m_fileName;
    bool m_isNameOurs = false; // set by start(), so that the next bundle gets another one
    bool m_isCanceled = false;
    double m_progress = 0;
    Status m_status = Idle;
    Obstacle m_obstacle; // of the last start()
    QString m_error;     // of the writer
};

} // namespace zeltools::quick
