#pragma once

#include <QDeadlineTimer>
#include <QObject>
#include <QStringList>
#include <QTimer>

namespace dmesg
{

/// Removes the lines that a restarted follower prints again: `dmesg --follow` begins with all
/// lines in the kernel's memory. An object belongs to one thread.
///
/// After expectReplay() the filter holds lines back until none comes for half a second, which is
/// when the follower has printed the kernel's memory, or for five seconds if the kernel prints
/// without such a pause. It then looks for the last lines seen before, at most 1024, among those
/// held, and emits only what follows them. If they are not there, the kernel has overwritten them:
/// all held lines are new, and a Warning tells that others may be missing.
///
/// The lines are compared with their time stamps first, and without them if that finds nothing,
/// since all stamps of `dmesg --ctime` change when the clock is set. At most 8 Mi characters are
/// held back; a follower that prints more at once repeats lines.
class ReplayFilter : public QObject
{
    Q_OBJECT

public:
    static constexpr int mostSeenLines = 1024;

    explicit ReplayFilter(QObject* parent);

    /// Forgets all lines. Only a filter that remembers removes lines later.
    void reset(bool isRemembering);
    /// The lines from now on come from another follower.
    void expectReplay();
    /// Takes lines of the follower, and emits those that are new, now or later.
    void take(const QStringList& lines);
    /// The follower has ended, maybe in the middle of its first output. Decides about the lines
    /// that are held back.
    void end();

Q_SIGNALS:
    void newLines(const QStringList& lines);

private:
    void pass(const QStringList& lines);
    void release(bool isWhole);

    bool m_isRemembering = false;
    QStringList m_seen; // the last lines, oldest first
    bool m_isHolding = false;
    QStringList m_held;
    qint64 m_heldSize = 0;
    QTimer m_pause;
    QDeadlineTimer m_longest; // from the first held line on
};

} // namespace dmesg
