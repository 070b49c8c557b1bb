#pragma once

#include <zeltools/simulatorkit/simulatorrecording.h>

#include <QObject>

#include <memory>

namespace zeltools::simulatorkit
{

class LinkEnd;
class RecordingFile;

/// Stands between a machine and a simulator and records what passes between them. All bytes are
/// forwarded at once and as they are, also those that are not frames. If one side does not read,
/// the other one has to wait, as it would without a recorder.
///
/// An end that listens accepts one connection, and only then does the other end connect. If that
/// fails, the first connection is closed. Two ends that both connect try it every three seconds.
///
/// An object belongs to the thread that created it, and needs its event loop.
class ZELTOOLS_EXPORT LinkRecorder : public QObject
{
    Q_OBJECT

public:
    explicit LinkRecorder(QObject* parent = nullptr);
    /// Calls stop().
    ~LinkRecorder() override;

    /// Whether the text has the form of an address of a link.
    static bool isAddress(const QString& rawAddress);

    /// Creates the file, or empties it, and begins to listen and to connect. The addresses are
    /// those of the recorder's own ends: one for the machine, one for the simulator. Returns the
    /// reason of a failure, or an empty text. An object can be started once.
    QString start(const QString& machineAddress, const QString& simulatorAddress,
                  const QString& path);
    /// Writes the end of the recording, closes the connections and no longer listens.
    void stop();

    /// The address of the end for that side, with its real port, if it listens; otherwise empty.
    QString listeningAddress(LinkSide side) const;
    /// The reason for which the recording is incomplete, or an empty text. Bytes are forwarded all
    /// the same.
    QString fileError() const;

Q_SIGNALS:
    /// A side cannot be reached, or the file cannot be written. The same problem is told once.
    void problemOccurred(const QString& problem);

private:
    struct Side;

    Side& opposite(const Side& side);
    void connectSignals(Side& side);
    void advance();
    void advanceAgain();
    void forward(Side& from, qint64 limit_B);
    void endFrames();
    void endPair(Side& closing);
    void write(const Side& side, SimulatorEvent::Kind kind, const QByteArray& bytes = {});
    void report(const QString& problem);

    std::unique_ptr<RecordingFile> m_file;
    std::unique_ptr<Side> m_machine;
    std::unique_ptr<Side> m_simulator;
    QString m_problem;
    bool m_isRunning = false;
    bool m_isPaired = false;
};

} // namespace zeltools::simulatorkit
