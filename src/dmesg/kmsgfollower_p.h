#pragma once

#include "dmesg/kmsgreader.h"

#include <QObject>
#include <QPointer>
#include <QSocketNotifier>
#include <QStringList>

#include <atomic>
#include <memory>

namespace dmesg
{

/// Follows /dev/kmsg in an event loop and emits its lines in the form of `dmesg --ctime`. Gaps and
/// malformed records are Warnings under `Log::Global`.
///
/// An object belongs to one thread; isRunning() may be called by any.
class KmsgFollower : public QObject
{
    Q_OBJECT

public:
    explicit KmsgFollower(QObject* parent);

    /// Sets the file. It begins with its oldest record when it is started then.
    void setFile(const QString& file);
    /// Starts. Started again with the same file, it goes on behind the last record. Returns an
    /// empty text or the reason why the file cannot be read.
    QString start();
    void stop();
    bool isRunning() const { return m_isRunning; }

Q_SIGNALS:
    void newLines(const QStringList& lines);
    /// Announces that following has ended by itself.
    void ended(const QString& reason);

private:
    void read();

    std::unique_ptr<KmsgReader> m_reader;
    QPointer<QSocketNotifier> m_notifier;
    std::atomic<bool> m_isRunning{false};
    bool m_hasWarned = false; // of a malformed record
};

} // namespace dmesg
