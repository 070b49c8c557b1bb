#include "simulatorkit/linkrecorder.h"

#include "simulatorkit/framesplitter_p.h"
#include "simulatorkit/linkaddress_p.h"
#include "simulatorkit/linkend_p.h"
#include "simulatorkit/recordingfile_p.h"

#include <QTimer>

#include <chrono>
#include <limits>
#include <utility>

namespace zeltools::simulatorkit
{

using namespace std::chrono_literals;
using Kind = SimulatorEvent::Kind;

namespace
{

constexpr int maximumUnsent_B = 64 * 1024;

} // namespace

struct LinkRecorder::Side
{
    explicit Side(LinkSide kind)
        : side(kind)
    {
    }

    const LinkSide side;
    LinkEnd end;
    FrameSplitter frames; // of what this side sends
};

LinkRecorder::LinkRecorder(QObject* parent)
    : QObject(parent)
    , m_file(std::make_unique<RecordingFile>())
    , m_machine(new Side(LinkSide::Machine))
    , m_simulator(new Side(LinkSide::Simulator))
{
}

LinkRecorder::~LinkRecorder()
{
    stop();
}

bool LinkRecorder::isAddress(const QString& rawAddress)
{
    return isLinkAddress(rawAddress);
}

QString LinkRecorder::start(const QString& machineAddress, const QString& simulatorAddress,
                            const QString& path)
{
    QString error = m_machine->end.open(machineAddress);
    if (error.isEmpty())
        error = m_simulator->end.open(simulatorAddress);
    if (error.isEmpty() && !m_file->open(path))
        error = m_file->error();
    if (!error.isEmpty())
        return error;
    m_isRunning = true;
    connectSignals(*m_machine);
    connectSignals(*m_simulator);
    advance();
    return QString();
}

void LinkRecorder::stop()
{
    if (!std::exchange(m_isRunning, false))
        return;
    endFrames();
    for (Side* const side : {m_machine.get(), m_simulator.get()}) {
        side->end.disconnect(this);
        side->end.closeForGood();
    }
    m_file->end();
    report(m_file->error());
}

QString LinkRecorder::listeningAddress(LinkSide side) const
{
    const LinkEnd& end = side == LinkSide::Machine ? m_machine->end : m_simulator->end;
    return end.isListening() ? end.address() : QString();
}

QString LinkRecorder::fileError() const
{
    return m_file->error();
}

LinkRecorder::Side& LinkRecorder::opposite(const Side& side)
{
    return &side == m_machine.get() ? *m_simulator : *m_machine;
}

void LinkRecorder::connectSignals(Side& side)
{
    connect(&side.end, &LinkEnd::connected, this, &LinkRecorder::advance);
    connect(&side.end, &LinkEnd::ended, this, &LinkRecorder::advanceAgain);
    connect(&side.end, &LinkEnd::disconnected, this, [this, &side] { endPair(side); });
    connect(&side.end, &LinkEnd::failed, this, [this, &side](const QString& error) {
        report(QStringLiteral("cannot connect to %1: %2").arg(side.end.address(), error));
        opposite(side).end.close();
    });
    connect(&side.end, &LinkEnd::changed, this, [this] {
        if (m_isPaired) {
            forward(*m_machine, maximumUnsent_B);
            forward(*m_simulator, maximumUnsent_B);
        }
    });
}

// Makes the next step towards a pair of connections: ends that listen come first.
void LinkRecorder::advance()
{
    // A peer may send and hang up before the recorder has reached the other one.
    for (Side* const side : {m_machine.get(), m_simulator.get()})
        side->end.hold(!m_isPaired && !opposite(*side).end.isListening());
    for (const bool isListening : {true, false}) {
        for (Side* const side : {m_machine.get(), m_simulator.get()}) {
            if (side->end.isListening() == isListening && !side->end.isConnected())
                return side->end.connectToPeer();
        }
    }
    m_problem.clear();
    m_isPaired = true;
    write(m_machine->end.isListening() ? *m_machine : *m_simulator, Kind::Connected);
    for (Side* const side : {m_machine.get(), m_simulator.get()}) {
        forward(*side, maximumUnsent_B);
        side->end.hold(false);
    }
}

void LinkRecorder::advanceAgain()
{
    if (m_machine->end.isListening() || m_simulator->end.isListening())
        advance();
    else if (m_machine->end.isIdle() && m_simulator->end.isIdle())
        QTimer::singleShot(3s, this, &LinkRecorder::advance);
}

// Forwards until the system takes no more and the given number of bytes waits.
void LinkRecorder::forward(Side& from, qint64 limit_B)
{
    Side& to = opposite(from);
    while (true) {
        const QByteArray bytes = from.end.read(limit_B - to.end.unsent_B());
        if (bytes.isEmpty())
            return;
        to.end.write(bytes);
        from.frames.add(
            bytes, [&](const QByteArray& message) { write(from, Kind::Message, message); },
            [&](const QByteArray& raw) { write(from, Kind::Raw, raw); });
    }
}

void LinkRecorder::endFrames()
{
    if (!std::exchange(m_isPaired, false))
        return;
    for (Side* const side : {m_machine.get(), m_simulator.get()})
        side->frames.end([&](const QByteArray& raw) { write(*side, Kind::Raw, raw); });
}

// The connection has buffered at most 64 KiB, which are added to what the other side has not read.
void LinkRecorder::endPair(Side& closing)
{
    if (m_isPaired) {
        forward(closing, std::numeric_limits<qint64>::max());
        endFrames();
        write(closing, Kind::Disconnected);
    }
    opposite(closing).end.close();
}

void LinkRecorder::write(const Side& side, SimulatorEvent::Kind kind, const QByteArray& bytes)
{
    if (!m_file->error().isEmpty())
        return;
    m_file->write(side.side, kind, bytes);
    report(m_file->error());
}

void LinkRecorder::report(const QString& problem)
{
    if (!problem.isEmpty() && std::exchange(m_problem, problem) != problem)
        Q_EMIT problemOccurred(problem);
}

} // namespace zeltools::simulatorkit
