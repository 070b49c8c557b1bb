#pragma once

#include <zeltools/simplecrypt.h>
#include <zeltools/supportbundle/supportbundlemanifest.h>

#include <QObject>
#include <QString>

#include <atomic>
#include <memory>

class QDir;
class QThread;

namespace zeltools
{

struct BundleSources;

/// Packs everything that the factory needs to know about a machine into one file: log files with
/// their predecessors and deleted copies, events, the kernel log, crash reports, the environment
/// file without its secrets, lost lines, versions, packages, disks, memory, time.
/// docs/support-bundle.md lists the content and describes the file, a compressed tar archive with a
/// manifest.
///
/// First add the members of the bundle, then call create() or start(). The output is complete or
/// not there. A source that cannot be read stops nothing: the manifest names it. The log files may
/// grow and rotate meanwhile; the bundle has each of them once, as it was when the bundle began.
///
/// An object belongs to one thread; only cancel() may be called from any. The host links
/// ZelTools::Support.
class ZELTOOLS_EXPORT SupportBundle : public QObject
{
    Q_OBJECT

public:
    explicit SupportBundle(QObject* parent = nullptr);
    /// Cancels a bundle that start() has begun and waits for its end; finished() is not emitted.
    ~SupportBundle() override;

    /// Adds the log folders, the crash reports, the environment file and the file of versions that
    /// Path names, and the losses of LogManager as they are now, as "losses.json".
    void addThisMachine();
    /// Adds the log files of any machine, from its folder "logs", from the folder above that, or
    /// from a folder that has the log files itself; of the latter it takes files with the name of a
    /// log and crash reports only. Returns false if there is no such folder, or no log in it.
    bool addMachineFolder(const QString& path);
    /// Adds the files of a folder, not those of its subfolders, as "NAME/FILE".
    void addFolder(const QString& name, const QString& path);
    /// Adds a file under this name. One that cannot be read is listed as missing in the manifest.
    void addFile(const QString& name, const QString& path);
    /// Adds a member from memory.
    void addContent(const QString& name, const QByteArray& content);
    /// Adds a file of `KEY=value` lines in which the values of secrets are masked. Log files are
    /// not searched for secrets; the general log has the values of the enabled variables.
    void setEnvironmentFile(const QString& path);

    /// Sets the level of the compression: 1 to 19 for .tar.zst (default 3), 1 to 9 for .tar.gz
    /// (default 6). From level 10 on zstd needs more than 32 MiB of memory.
    void setLevel(int level);
    /// Sets the key for an output whose name ends in ".crypt". The cipher only protects against
    /// casual reading, see SimpleCrypt.
    void setCrypt(const SimpleCrypt& crypt);

    /// Why no bundle with these settings can be written to this path: it needs a name that ends in
    /// ".tar.zst" or ".tar.gz", followed by ".crypt" if and only if there is a key, and a level
    /// that the format has. Empty if it can.
    QString problemWith(const QString& path) const;
    /// Writes the bundle and blocks meanwhile; a program that lists the packages may take a few
    /// seconds. An existing file is replaced. Returns false, and leaves the old file, after a
    /// failure and after cancel(). Like write(), it fails while isRunning().
    bool create(const QString& path);
    /// Writes the bundle in a thread of its own. The event loop of this thread emits finished()
    /// once. Does nothing while isRunning().
    void start(const QString& path);
    /// Whether the thread of start() works.
    bool isRunning() const { return m_thread != nullptr; }
    /// Writes the bundle to an open empty file that will get this path. A program that replaces
    /// files in its own way uses it. Returns the reason of a failure, or an empty text.
    QString write(int fileDescriptor, const QString& path);

    /// The first failure of the last bundle, in one line; empty if it is complete.
    QString errorString() const { return m_error; }
    /// The manifest of the last bundle that is complete.
    const SupportBundleManifest& manifest() const { return m_manifest; }

public Q_SLOTS:
    /// Makes the running bundle fail soon, at the latest after the programs that list packages or
    /// disks, 10 s. It does nothing once all is written and is being forced to the storage.
    void cancel() { m_isCancelled = true; }

Q_SIGNALS:
    /// Emitted after each MiB of a log file, in the thread that writes.
    void progress(qint64 done_B, qint64 total_B);
    /// Emitted once for each start(), whether or not there is a bundle.
    void finished(bool isDone);

private:
    struct Result;

    Result run(const QString& path);
    Result runJob(int fileDescriptor, const QString& path);
    bool take(Result&& result);
    bool addLogFiles(const QDir& folder);

    std::unique_ptr<BundleSources> m_sources;
    std::unique_ptr<QThread> m_thread;
    std::atomic<bool> m_isCancelled = false;
    QString m_error;
    SupportBundleManifest m_manifest;
};

} // namespace zeltools
