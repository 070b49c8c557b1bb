// The cost of the simulation links: of cutting a stream into messages, and of frames over loopback.

#include "ratiotable.h"
#include "runloopuntil.h"
#include <zeltools/simulationinterface/createinterface.h>

#include <QCoreApplication>
#include <QLocalSocket>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <utility>
#include <vector>

#include <sys/socket.h>

using namespace zeltools::simulationinterface;

namespace
{

template <typename Body>
benchmark::internal::Benchmark* add(const char* name, Body&& body)
{
    return benchmark::RegisterBenchmark(name, std::forward<Body>(body));
}

QByteArray streamOf(int frames, int frameSize_B)
{
    return SimulationProtocol::serializeOpt(QByteArray(frameSize_B - 3, 'x'))->repeated(frames);
}

// The plain way: everything goes into one buffer, and each frame is taken from its front.
class RemovingProtocol
{
public:
    QVector<QByteArray> deserialize(const QByteArray& data)
    {
        QVector<QByteArray> messages;
        m_buffer += data;
        while (m_buffer.size() > 3) {
            const int length = qFromBigEndian<quint16>(m_buffer.constData() + 1);
            if (m_buffer.size() < length + 3)
                break;
            messages.append(m_buffer.mid(3, length));
            m_buffer.remove(0, length + 3);
        }
        return messages;
    }

private:
    QByteArray m_buffer;
};

template <typename Protocol>
void deserialize(benchmark::State& state, int frames, int frameSize_B, int chunkSize_B)
{
    const QByteArray stream = streamOf(frames, frameSize_B);
    Protocol protocol;
    int received = 0;
    for (auto _ : state) {
        for (int begin = 0; begin < stream.size(); begin += chunkSize_B) {
            const int size_B = std::min(chunkSize_B, stream.size() - begin);
            const auto chunk = QByteArray::fromRawData(stream.constData() + begin, size_B);
            received += protocol.deserialize(chunk).size();
        }
    }
    if (received != frames * static_cast<int>(state.iterations()))
        state.SkipWithError("frames are missing");
}

void copyPayloads(benchmark::State& state, int frames, int frameSize_B)
{
    const QByteArray stream = streamOf(frames, frameSize_B);
    std::vector<char> payload(size_t(frameSize_B - 3));
    for (auto _ : state) {
        for (int i = 0; i < frames; ++i) {
            std::memcpy(payload.data(), stream.constData() + i * frameSize_B + 3, payload.size());
            benchmark::DoNotOptimize(payload.data());
            benchmark::ClobberMemory();
        }
    }
}

constexpr int payload_B = 1024;
constexpr int frame_B = payload_B + 3;

enum class Link { Tcp, Unix };

// Two ends of one connection. An echoing server sends back the messages that it gets.
class Endpoints
{
public:
    Endpoints(Link link, bool isEchoing)
        : m_server(createInterface(link == Link::Tcp
                                       ? QStringLiteral("tcpserver/127.0.0.1/0")
                                       : QStringLiteral("unixserver/") +
                                             m_folder.filePath(QStringLiteral("socket")),
                                   nullptr))
        , m_client(createInterface(m_server->localAddress().replace(QStringLiteral("server/"),
                                                                    QStringLiteral("client/")),
                                   nullptr))
    {
        runLoopUntil([&] { return m_client->connected() && m_server->connected(); });
        const auto count = [&](const QByteArray& data) { received_B += data.size() + 3; };
        if (isEchoing) {
            QObject::connect(m_server.get(), &SimulationInterface::dataReceived, m_server.get(),
                             &SimulationInterface::write);
            QObject::connect(m_client.get(), &SimulationInterface::dataReceived, count);
        } else {
            QObject::connect(m_server.get(), &SimulationInterface::dataReceived, count);
        }
    }

    void send() { m_client->write(m_message); }

    qint64 received_B = 0;

private:
    const QByteArray m_message = QByteArray(payload_B, 'x');
    const QTemporaryDir m_folder;
    const std::unique_ptr<SimulationInterface> m_server;
    const std::unique_ptr<SimulationInterface> m_client;
};

class BareSockets
{
public:
    BareSockets(Link link, bool isEchoing)
    {
        link == Link::Tcp ? connectTcp() : connectUnix();
        const auto count = [&](QIODevice& end) { received_B += end.readAll().size(); };
        QObject::connect(m_near.get(), &QIODevice::readyRead, [this, count] { count(*m_near); });
        QObject::connect(m_far.get(), &QIODevice::readyRead, [this, count, isEchoing] {
            isEchoing ? write(*m_far, m_far->readAll()) : count(*m_far);
        });
    }

    void send() { write(*m_near, m_frame); }

    qint64 received_B = 0;

private:
    void connectTcp()
    {
        m_server.listen(QHostAddress::LocalHost);
        auto near = std::make_unique<QTcpSocket>();
        near->connectToHost(QHostAddress::LocalHost, m_server.serverPort());
        runLoopUntil([&] {
            return near->state() == QTcpSocket::ConnectedState && m_server.hasPendingConnections();
        });
        m_near = std::move(near);
        m_far.reset(m_server.nextPendingConnection());
        m_far->setParent(nullptr);
    }

    void connectUnix()
    {
        std::array<int, 2> pair{};
        if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, pair.data()) != 0)
            return;
        auto near = std::make_unique<QLocalSocket>();
        auto far = std::make_unique<QLocalSocket>();
        near->setSocketDescriptor(pair[0]);
        far->setSocketDescriptor(pair[1]);
        m_near = std::move(near);
        m_far = std::move(far);
    }

    static void write(QIODevice& end, const QByteArray& bytes)
    {
        end.write(bytes.constData(), bytes.size());
    }

    const QByteArray m_frame = streamOf(1, frame_B);
    QTcpServer m_server; // goes on listening, as the other pair's does
    std::unique_ptr<QIODevice> m_near;
    std::unique_ptr<QIODevice> m_far;
};

template <typename Ends>
void sendThereAndBack(benchmark::State& state, Link link)
{
    Ends ends(link, true);
    qint64 expected_B = 0;
    for (auto _ : state) {
        ends.send();
        expected_B += frame_B;
        runLoopUntil([&] { return ends.received_B == expected_B; });
    }
}

template <typename Ends>
void sendAtOnce(benchmark::State& state, Link link, int frames)
{
    Ends ends(link, false);
    qint64 expected_B = 0;
    for (auto _ : state) {
        for (int i = 0; i < frames; ++i)
            ends.send();
        expected_B += qint64(frames) * frame_B;
        runLoopUntil([&] { return ends.received_B == expected_B; });
    }
}

void addAll()
{
    add("64 frames of 64 KiB, 64 KiB at a time/ZelTools",
        [](auto& s) { deserialize<SimulationProtocol>(s, 64, 65536, 65536); });
    add("64 frames of 64 KiB, 64 KiB at a time/memcpy",
        [](auto& s) { copyPayloads(s, 64, 65536); });
    add("64 frames of 64 KiB, 64 KiB at a time/ZelTools, cut at 50000 bytes",
        [](auto& s) { deserialize<SimulationProtocol>(s, 64, 65536, 50000); });
    add("64 frames of 64 KiB, 64 KiB at a time/removing each from a QByteArray",
        [](auto& s) { deserialize<RemovingProtocol>(s, 64, 65536, 65536); });

    add("65536 frames of 16 bytes, 64 KiB at a time/ZelTools",
        [](auto& s) { deserialize<SimulationProtocol>(s, 65536, 16, 65536); });
    add("65536 frames of 16 bytes, 64 KiB at a time/memcpy",
        [](auto& s) { copyPayloads(s, 65536, 16); });
    add("65536 frames of 16 bytes, 64 KiB at a time/removing each from a QByteArray",
        [](auto& s) { deserialize<RemovingProtocol>(s, 65536, 16, 65536); });

    add("256 KiB, a byte at a time/ZelTools, frames of 16 bytes",
        [](auto& s) { deserialize<SimulationProtocol>(s, 16384, 16, 1); });
    add("256 KiB, a byte at a time/ZelTools, frames of 64 KiB",
        [](auto& s) { deserialize<SimulationProtocol>(s, 4, 65536, 1); });
    add("256 KiB, a byte at a time/ZelTools, four times the bytes",
        [](auto& s) { deserialize<SimulationProtocol>(s, 65536, 16, 1); });

    add("1 KiB over loopback, there and back/ZelTools",
        [](auto& s) { sendThereAndBack<Endpoints>(s, Link::Tcp); });
    add("1 KiB over loopback, there and back/two QTcpSockets",
        [](auto& s) { sendThereAndBack<BareSockets>(s, Link::Tcp); });
    add("1 KiB over AF_UNIX, there and back/ZelTools",
        [](auto& s) { sendThereAndBack<Endpoints>(s, Link::Unix); });
    add("1 KiB over AF_UNIX, there and back/two QLocalSockets",
        [](auto& s) { sendThereAndBack<BareSockets>(s, Link::Unix); });
    add("1000 frames of 1 KiB at once/ZelTools",
        [](auto& s) { sendAtOnce<Endpoints>(s, Link::Tcp, 1000); });
    add("1000 frames of 1 KiB at once/two QTcpSockets",
        [](auto& s) { sendAtOnce<BareSockets>(s, Link::Tcp, 1000); });
    add("1000 frames of 1 KiB at once over AF_UNIX/ZelTools",
        [](auto& s) { sendAtOnce<Endpoints>(s, Link::Unix, 1000); });
    add("1000 frames of 1 KiB at once over AF_UNIX/two QLocalSockets",
        [](auto& s) { sendAtOnce<BareSockets>(s, Link::Unix, 1000); });
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    addAll();
    return RatioTable::run(argc, argv);
}
