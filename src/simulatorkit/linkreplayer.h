#pragma once

#include <zeltools/simulatorkit/simulatorrecording.h>

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <memory>

namespace zeltools::simulatorkit
{

class LinkEnd;
class PartnerBytes;

/// Plays one side of a recording for a real partner and compares the partner's bytes with the
/// recorded ones. The rows of the played side are sent in their order, each as soon as everything
/// that was recorded before it has come. Bytes that come early wait for their row.
///
/// An object plays one recording once. It belongs to the thread that created it, and needs its
/// event loop.
class ZELTOOLS_EXPORT LinkReplayer : public QObject
{
    Q_OBJECT

public:
    /// Settings of a replay.
    struct Options
    {
        LinkSide side = LinkSide::Simulator; ///< The side that is played.
        /// Waits between the rows as long as it was recorded; otherwise sends at once.
        bool isInTime = false;
        /// How much later than recorded a row of the partner may come.
        std::chrono::milliseconds timeout{10000};
    };

    /// Takes the recording; start() plays it.
    LinkReplayer(SimulatorRecording recording, const Options& options, QObject* parent = nullptr);
    ~LinkReplayer() override;

    /// Begins to listen at the address, or to connect to it until the timeout. Returns the reason
    /// of a failure, or an empty text.
    QString start(const QString& rawAddress);
    /// The address with its real port.
    QString address() const;
    /// Whether a server waits for its partner; false for a client.
    bool isListening() const;

Q_SIGNALS:
    /// Emitted once; the object may be deleted in it. The text is empty if everything was the same;
    /// otherwise it is the first difference, such as `row 7: expected machine message "brew", but
    /// "grind" came`.
    void finished(const QString& difference);

private:
    enum class Progress { Done, Waiting };

    void advance();
    Progress play(const SimulatorEvent& event);
    Progress send(const SimulatorEvent& event);
    Progress expectBytes(const SimulatorEvent& event);
    Progress expectDisconnection();
    Progress expectEnd();
    bool hasMore() const;
    Progress closeOwnEnd();

    std::chrono::microseconds now() const;
    std::chrono::microseconds dueTime(const SimulatorEvent& event) const;
    bool isDue(std::chrono::microseconds time);
    void startLimit();

    Progress fail(const QString& came);
    void finish(const QString& difference);

    const SimulatorRecording m_recording;
    const Options m_options;
    std::unique_ptr<LinkEnd> m_end;
    std::unique_ptr<PartnerBytes> m_arrived;
    QElapsedTimer m_clock;
    std::chrono::microseconds m_beginning{}; // of the recording, on the clock
    std::chrono::microseconds m_lastRow{};   // when it was played, on the clock
    QTimer m_pause;
    QTimer m_limit;
    int m_next = 0; // event
    bool m_isClosing = false;
    bool m_isFinished = false;
};

} // namespace zeltools::simulatorkit
