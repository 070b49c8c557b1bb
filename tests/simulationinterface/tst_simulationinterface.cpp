#include "simulationinterface/simulationmessage.h"
#include "simulationinterface/tcpclientsimulationinterface.h"
#include "simulationinterface/tcpserversimulationinterface.h"

#include "support.h"
#include "system/fakeclock.h"

#include <QtTest>

#include <memory>

#include <sys/socket.h>

using namespace std::chrono_literals;
using namespace zeltools::simulationinterface;

namespace
{

using Link = std::unique_ptr<SimulationInterface>;
using Server = TcpServerSimulationInterface;
using Client = TcpClientSimulationInterface;

template <typename Endpoint>
Link make(const QString& port = "0")
{
    const SimulationInterfaceAddress address("tcpclient/127.0.0.1/" + port);
    return std::make_unique<Endpoint>(address, nullptr);
}

QString portOf(const Link& server)
{
    return QString::number(server->findChild<QTcpServer*>()->serverPort());
}

// A simulator that may break the rules.
struct Peer : QTcpSocket
{
    explicit Peer(const Link& server) { connectToHost("127.0.0.1", portOf(server).toUShort()); }
};

} // namespace

class TestSimulationInterface : public QObject
{
    Q_OBJECT

    QStringList m_events; // of the recorded link; a long message is noted by its size

    void record(const Link& link)
    {
        m_events.clear();
        connect(link.get(), &SimulationInterface::connectedChanged,
                [this, link = link.get()] { m_events += link->connected() ? "up" : "down"; });
        connect(link.get(), &SimulationInterface::dataReceived, [this](const QByteArray& data) {
            m_events += data.size() > 99 ? QString::number(data.size()) : QString(data);
        });
    }

private Q_SLOTS:
    void parsesAddresses()
    {
        support::LineRecorder recorder;
        QString results;
        for (const QString raw :
             {"tcpclient", "/::1/5", "TcpServer/0.0.0.0/8133", "tcpCLIENT/::1/70000", "tcpclient/",
              "tcpclient/::1/8/x", "tcpclient/pc/1", "tcpclient/::1/a"}) {
            const SimulationInterfaceAddress address(raw);
            const auto tcp = TcpSimulationInterfaceCommon::parseAddress(address.address);
            results += QString("%1: type %2, ").arg(raw).arg(address.type);
            results += tcp ? QString("%1 port %2").arg(tcp->first.toString()).arg(tcp->second)
                           : recorder.takeMessages()[0];
            results += '\n';
        }
        QCOMPARE(results, support::readFile(QFINDTESTDATA("addresses.log")));
    }

    // Each chunk with the messages that it completes, "-" for an empty one and "!" for a warning.
    void deserializes_data()
    {
        QTest::addColumn<QString>("steps");
        QTest::newRow("one message and a half, and the other half")
            << "51000141510002>41 414251>4142 000143>43";
        QTest::newRow("an empty message waits for the next byte")
            << "51> 0000510000>- > 51>- 0001> 41>41";
        QTest::newRow("a wrong start drops the correct frame behind it")
            << "51000142520000510001>42! 51000143>43";
        QTest::newRow("a wrong start shows with the fourth byte") << "00ffff> 00>! 51000143>43";
    }
    void deserializes()
    {
        QFETCH(QString, steps);
        support::LineRecorder recorder;
        SimulationProtocol protocol;
        QStringList done;
        for (const QString& step : steps.split(' ')) {
            const auto chunk = step.section('>', 0, 0).toLatin1();
            QStringList messages;
            for (const QByteArray& message : protocol.deserialize(QByteArray::fromHex(chunk)))
                messages += message.isEmpty() ? "-" : QString(message.toHex());
            done += chunk + '>' + messages.join(',') + QString(recorder.take().size(), '!');
        }
        QCOMPARE(done.join(' '), steps);
    }

    void limitsTheSizes()
    {
        const QByteArray longest = *SimulationProtocol::serializeOpt(QByteArray(65535, 'x'));
        QVERIFY(!SimulationProtocol::serializeOpt(QByteArray(65536, 'x')));
        SimulationProtocol protocol;
        // All but the last byte of a frame is buffered. The next chunk has the maximum size, or one
        // byte more.
        QVERIFY(protocol.deserialize(longest.chopped(1)).isEmpty());
        QCOMPARE(protocol.deserialize("x" + longest.chopped(1)).size(), 1);
        QVERIFY(protocol.deserialize("x" + longest).isEmpty());
        QCOMPARE(protocol.deserialize(longest).size(), 1);
    }

    void decodesMessageFrames()
    {
        const auto decode = [](const QByteArray& frame) {
            int consumed = 0;
            const auto message = SimulationMessage::fromIncomingDataOpt(frame, consumed);
            return message.value_or("none") + ' ' + QByteArray::number(consumed);
        };
        QCOMPARE(decode(*SimulationMessage::encapsulateData("AB")), "AB 7");
        QCOMPARE(decode(QByteArray("Q\0\0\0\0", 5)), "none 0");
        QCOMPARE(decode(QByteArray("Q\0\0\0\2A", 6)), "none 0");
        QCOMPARE(decode(QByteArray("Q\x80\0\0\0A", 6)), " -2147483643");
        QCOMPARE(decode("bad start"), "none 9");
    }

    void talksToTheExample()
    {
        for (const bool isServer : {true, false}) {
            Link link = make<Server>();
            const QString address =
                isServer ? "tcpclient/127.0.0.1/" + portOf(link) : "tcpserver/127.0.0.1/0";
            const QString longest(65535, 'x');
            QProcess simulator;
            simulator.start("python3", {SIMULATOR_PATH, address, "", longest, "end"});
            if (!isServer) {
                QTRY_VERIFY_WITH_TIMEOUT(simulator.canReadLine(), 30000);
                link = make<Client>(simulator.readLine().trimmed().split(' ').last());
            }
            record(link);
            QTRY_COMPARE_WITH_TIMEOUT(m_events, (QStringList{"up", "", "65535", "end"}), 30000);
            for (const QString& text : {QString(), longest, longest + 'x', QString("end")})
                link->write(text.toLatin1());
            link.reset();
            QVERIFY(simulator.waitForFinished());
            QVERIFY(simulator.readAll() == '\n' + longest + "\nend\n");
        }
    }

    void servesOneAtATime()
    {
        const Link server = make<Server>();
        record(server);
        auto* const listener = server->findChild<QTcpServer*>();
        listener->pauseAccepting(); // as it does when there are no descriptors
        Q_EMIT listener->acceptError(QTcpSocket::SocketResourceError);
        Peer first(server);
        QTRY_VERIFY(server->connected());
        for (int i = 0; i < 2000; ++i) {
            Peer other(server);
            QVERIFY(other.waitForConnected());
            QTRY_COMPARE(other.state(), QTcpSocket::UnconnectedState);
        }
        QTRY_VERIFY(server->findChildren<QTcpSocket*>().isEmpty());
        first.write(QByteArray("Q\0\1aQ\0\6ha", 9));
        QTRY_COMPARE(m_events.last(), "a");
        const linger none{1, 0};
        ::setsockopt(int(first.socketDescriptor()), SOL_SOCKET, SO_LINGER, &none, sizeof none);
        first.abort(); // a reset
        QTRY_VERIFY(!server->connected());
        Peer second(server);
        second.write(QByteArray("Q\0\1b", 4));
        QTRY_COMPARE(m_events, (QStringList{"up", "a", "down", "up", "b"}));
    }

    void limitsTheWarningsOfAMinute()
    {
        Link server = make<Server>();
        support::LineRecorder recorder;
        for (const int faults : {25, 10, 11}) {
            for (int i = 0; i < faults; ++i) { // each over a connection of its own
                Peer peer(server);
                peer.write("none");
                QTRY_VERIFY(server->connected());
                peer.disconnectFromHost();
                QTRY_VERIFY(!server->connected());
            }
            faults == 11 ? server.reset() : fakeclock::advance(61s);
            const QStringList lines = recorder.takeMessages();
            QCOMPARE(lines.size(), faults > 10 ? 11 : 10);
            QCOMPARE(lines.last().contains(QString(" %1 more").arg(faults - 10)), faults > 10);
        }
    }

    void reconnects()
    {
        Link server = make<Server>();
        const QString port = portOf(server);
        const Link client = make<Client>(port);
        record(client);
        QTRY_VERIFY(client->connected());
        QStringList expected{"up"};
        for (int i = 0; i < 1000; ++i) {
            expected += QString("written before it goes: %1").arg(i, 70);
            server->write(expected.last().toLatin1());
        }
        server->writeSerializedData(QByteArray("Q\0\6ha", 5));
        server.reset();
        expected += "down";
        QTRY_COMPARE(m_events, expected);
        fakeclock::advance(4s); // The first attempt fails.
        server = make<Server>(port);
        fakeclock::advance(1s);
        QVERIFY(!client->connected());
        fakeclock::advance(2s);
        QTRY_VERIFY(client->connected() && server->connected());
        QVERIFY(!client->findChild<QTimer*>()->isActive());
        server->write("new");
        expected += {"up", "new"};
        QTRY_COMPARE(m_events, expected);
        QVERIFY(make<Server>(port)->isAddressValid()); // though it cannot listen
        QVERIFY(!make<Server>("x")->isAddressValid() && !make<Client>("x")->isAddressValid());
    }

    void mayBeDeletedInItsSignals()
    {
        for (int variant = 0; variant < 12; ++variant) {
            Link link = make<Server>();
            Link other = make<Client>(portOf(link));
            if (variant % 2 == 1)
                link.swap(other);
            const int last = QVector<int>{1, 2, 4}[variant / 4]; // up, the first message, or down
            connect(other.get(), &SimulationInterface::connectedChanged,
                    [&] { other->write("a"), other->write("b"); });
            int count = 0;
            const auto onSignal = [&] {
                QVERIFY(link != nullptr); // It is null as soon as the deletion begins.
                if (++count != last)
                    return;
                QEventLoop loop;
                QTimer::singleShot(1, &loop, [&] { link.reset(), loop.quit(); });
                variant / 2 % 2 == 1 ? void(loop.exec()) : link.reset();
            };
            connect(link.get(), &SimulationInterface::connectedChanged, onSignal);
            connect(link.get(), &SimulationInterface::dataReceived, onSignal);
            QTRY_VERIFY(count >= std::min(last, 3));
            other.reset();
            QTRY_VERIFY(!link);
        }
    }

    // More arrives than the socket buffers, while a receiver of the first message runs an event
    // loop.
    void readsOnAfterAnEventLoop()
    {
        for (const bool isServer : {true, false}) {
            const Link server = make<Server>();
            const Link client = make<Client>(portOf(server));
            QTRY_VERIFY(server->connected() && client->connected());
            record(isServer ? server : client);
            connect((isServer ? server : client).get(), &SimulationInterface::dataReceived, [&] {
                if (m_events.size() == 1)
                    QTest::qWait(50);
            });
            for (int i = 0; i < 10; ++i)
                (isServer ? client : server)->write(QByteArray(65535, 'x'));
            QTRY_COMPARE(m_events.count("65535"), 10);
        }
    }

    // The client leaves while a receiver of its first message runs an event loop.
    void theNextClientWaitsForTheMessagesOfTheFirst()
    {
        const Link server = make<Server>();
        Link client = make<Client>(portOf(server));
        QTRY_VERIFY(server->connected() && client->connected());
        record(server);
        connect(server.get(), &SimulationInterface::dataReceived, [&](const QByteArray& message) {
            if (message != "first")
                return;
            client->write("second");
            client = make<Client>(portOf(server));
            QTRY_VERIFY(!server->connected() && client->connected());
        });
        client->write("first");
        QTRY_VERIFY(m_events.contains("second") && server->connected());
        client->write("third");
        QTRY_COMPARE(m_events, (QStringList{"first", "down", "second", "up", "third"}));
    }

    void boundsWhatIsNotRead()
    {
        const Link server = make<Server>();
        record(server);
        const QByteArray longest = *SimulationProtocol::serializeOpt(QByteArray(65535, 'x'));
        Peer peer(server);
        peer.setReadBufferSize(10000);
        QTRY_VERIFY(server->connected());
        support::LineRecorder recorder;
        qint64 unread_B = 0;
        for (int i = 0; i < 3200; ++i) {
            unread_B += server->writeSerializedData(longest) ? longest.size() : 0;
            unread_B -= peer.readAll().size();
            peer.write(longest);
            QCoreApplication::processEvents();
        }
        QVERIFY(unread_B >> 20 < 100); // including the bytes in the kernel
        QCOMPARE(recorder.takeMessages(),
                 QStringList("The simulator does not read, dropping data"));
        peer.setReadBufferSize(0);
        QTRY_COMPARE(peer.bytesAvailable(), unread_B);
        QVERIFY(server->writeSerializedData("Q"));
        QTRY_COMPARE(m_events.count("65535"), 3200);
    }
};

QTEST_GUILESS_MAIN(TestSimulationInterface)
#include "tst_simulationinterface.moc"
