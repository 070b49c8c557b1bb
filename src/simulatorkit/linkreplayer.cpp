#include "simulatorkit/linkreplayer.h"

#include "simulatorkit/framesplitter_p.h"
#include "simulatorkit/linkend_p.h"
#include "simulatorkit/partnerbytes_p.h"

#include <limits>
#include <utility>

namespace zeltools::simulatorkit
{

using namespace std::chrono_literals;
using simulationinterface::SimulationProtocol;
using Kind = SimulatorEvent::Kind;

namespace
{

constexpr int maximumUnsent_B = 64 * 1024;
constexpr int maximumArrived_B = 128 * 1024; // has room for a whole frame
// How long the partner must be silent before the replayer hangs up.
constexpr std::chrono::microseconds silence = 100ms;

} // namespace

LinkReplayer::LinkReplayer(SimulatorRecording recording, const Options& options, QObject* parent)
    : QObject(parent)
    , m_recording(std::move(recording))
    , m_options(options)
    , m_end(std::make_unique<LinkEnd>())
    , m_arrived(std::make_unique<PartnerBytes>(
          options.side == LinkSide::Machine ? LinkSide::Simulator : LinkSide::Machine))
{
    m_pause.setSingleShot(true);
    m_pause.setTimerType(Qt::PreciseTimer);
    m_limit.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, &LinkReplayer::advance);
    connect(&m_limit, &QTimer::timeout, this, [this] { fail(m_arrived->text()); });
}

LinkReplayer::~LinkReplayer() = default;

QString LinkReplayer::start(const QString& rawAddress)
{
    QString error = m_end->open(rawAddress);
    if (!error.isEmpty())
        return error;
    m_clock.start();
    connect(m_end.get(), &LinkEnd::connected, this, &LinkReplayer::advance);
    connect(m_end.get(), &LinkEnd::changed, this, &LinkReplayer::advance);
    connect(m_end.get(), &LinkEnd::ended, this, &LinkReplayer::advance);
    connect(m_end.get(), &LinkEnd::failed, this, [this] { m_pause.start(200ms); });
    connect(m_end.get(), &LinkEnd::disconnected, this, [this] {
        m_arrived->append(m_end->read(std::numeric_limits<qint64>::max()));
        m_arrived->hasPartnerLeft = true;
    });
    QTimer::singleShot(0, this, &LinkReplayer::advance);
    return QString();
}

QString LinkReplayer::address() const
{
    return m_end->address();
}

bool LinkReplayer::isListening() const
{
    return m_end->isListening();
}

void LinkReplayer::advance()
{
    if (m_isFinished)
        return;
    if (!m_arrived->hasPartnerLeft && !m_isClosing)
        m_arrived->append(m_end->read(maximumArrived_B - m_arrived->size_B()));
    const auto& events = m_recording.events;
    while (m_next < events.size()) {
        if (play(events[m_next]) == Progress::Waiting)
            return startLimit();
        m_limit.stop();
        m_lastRow = now();
        if (events[m_next].side != m_options.side || m_next == 0)
            m_beginning = m_lastRow - events[m_next].time;
        ++m_next;
    }
    if (expectEnd() == Progress::Done)
        finish(QString());
    else
        startLimit();
}

LinkReplayer::Progress LinkReplayer::play(const SimulatorEvent& event)
{
    const bool isOwn = event.side == m_options.side;
    if (isOwn && !isDue(dueTime(event)))
        return Progress::Waiting;
    if (event.kind == Kind::Connected) {
        if (!m_pause.isActive()) // It is active after an attempt to connect that failed.
            m_end->connectToPeer();
        return m_end->isConnected() ? Progress::Done : Progress::Waiting;
    }
    if (event.kind == Kind::Disconnected)
        return isOwn ? closeOwnEnd() : expectDisconnection();
    return isOwn ? send(event) : expectBytes(event);
}

LinkReplayer::Progress LinkReplayer::send(const SimulatorEvent& event)
{
    if (m_arrived->hasPartnerLeft)
        return fail(m_arrived->text());
    if (m_end->unsent_B() > maximumUnsent_B)
        return Progress::Waiting;
    m_end->write(event.kind == Kind::Raw ? event.bytes
                                         : SimulationProtocol::serializeOpt(event.bytes).value());
    return Progress::Done;
}

LinkReplayer::Progress LinkReplayer::expectBytes(const SimulatorEvent& event)
{
    if (event.kind == Kind::Raw) {
        const int size_B = event.bytes.size();
        if (m_arrived->size_B() < size_B)
            return m_arrived->hasPartnerLeft ? fail(m_arrived->text()) : Progress::Waiting;
        if (m_arrived->left(size_B) != event.bytes)
            return fail(rawCame(m_arrived->left(size_B)));
        m_arrived->remove(size_B);
        return Progress::Done;
    }
    if (!m_arrived->hasFrame())
        return m_arrived->isWrong() || m_arrived->hasPartnerLeft ? fail(m_arrived->text())
                                                                 : Progress::Waiting;
    if (m_arrived->message() != event.bytes)
        return fail(m_arrived->text());
    m_arrived->remove(FrameSplitter::headerSize_B + event.bytes.size());
    return Progress::Done;
}

LinkReplayer::Progress LinkReplayer::expectDisconnection()
{
    if (hasMore())
        return fail(m_arrived->text());
    return std::exchange(m_arrived->hasPartnerLeft, false) ? Progress::Done : Progress::Waiting;
}

LinkReplayer::Progress LinkReplayer::expectEnd()
{
    if (hasMore())
        return fail(m_arrived->text());
    if (m_arrived->hasPartnerLeft || m_end->isIdle())
        return Progress::Done;
    return isDue(m_lastRow + silence) ? closeOwnEnd() : Progress::Waiting;
}

// Whether bytes wait that no row takes. A frame may still be on its way.
bool LinkReplayer::hasMore() const
{
    return m_arrived->hasFrame() || m_arrived->isWrong() ||
           (m_arrived->hasPartnerLeft && !m_arrived->isEmpty());
}

LinkReplayer::Progress LinkReplayer::closeOwnEnd()
{
    if (!m_arrived->isEmpty() || m_arrived->hasPartnerLeft)
        return fail(m_arrived->text());
    if (m_end->isIdle()) {
        m_isClosing = false;
        return Progress::Done;
    }
    if (m_end->unsent_B() == 0 && !std::exchange(m_isClosing, true)) {
        m_limit.stop();
        m_end->close();
    }
    return Progress::Waiting;
}

std::chrono::microseconds LinkReplayer::now() const
{
    return std::chrono::microseconds(m_clock.nsecsElapsed() / 1000);
}

// The time of an own row. Without the times of the recording, the partner has a moment before a
// disconnection to send what it should not.
std::chrono::microseconds LinkReplayer::dueTime(const SimulatorEvent& event) const
{
    if (m_next == 0)
        return 0us;
    if (m_options.isInTime)
        return m_beginning + event.time;
    const auto recorded = event.time - m_recording.events[m_next - 1].time;
    return event.kind == Kind::Disconnected ? m_lastRow + std::min(recorded, silence) : 0us;
}

bool LinkReplayer::isDue(std::chrono::microseconds time)
{
    const auto missing = time - now();
    if (missing <= 0us)
        return true;
    m_pause.start(std::chrono::ceil<std::chrono::milliseconds>(missing));
    return false;
}

// A row may come as much later than the row before it as it was recorded.
void LinkReplayer::startLimit()
{
    if (m_isFinished || m_isClosing || m_limit.isActive())
        return;
    const auto& events = m_recording.events;
    std::chrono::microseconds recorded = silence;
    if (m_next > 0 && m_next < events.size())
        recorded = events[m_next].time - events[m_next - 1].time;
    constexpr std::chrono::milliseconds longest = 24h * 20; // A timer cannot count much more.
    m_limit.start(std::min(longest, m_options.timeout +
                                        std::chrono::ceil<std::chrono::milliseconds>(recorded)));
}

LinkReplayer::Progress LinkReplayer::fail(const QString& came)
{
    const auto& events = m_recording.events;
    const bool isEnd = m_next == events.size();
    const int line = isEnd ? m_recording.endLine : events[m_next].line;
    finish(QStringLiteral("row %1: expected %2, but %3")
               .arg(line > 0 ? line : m_next + 2) // as toText() would number it
               .arg(isEnd ? QStringLiteral("the end") : shortRow(events[m_next]), came));
    return Progress::Waiting;
}

void LinkReplayer::finish(const QString& difference)
{
    m_limit.stop();
    m_pause.stop();
    m_end->disconnect(this);
    m_isFinished = true;
    // The receiver may delete the object, which is still at work.
    QTimer::singleShot(0, this, [this, difference] { Q_EMIT finished(difference); });
}

} // namespace zeltools::simulatorkit
