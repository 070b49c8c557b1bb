#include "simulationinterface/createinterface.h"
#include "simulationinterface/tcpserversimulationinterface.h"

#include "support.h"
#include "support/lostpeer.h"
#include "system/fakeclock.h"

#include <QtTest>

#include <array>
#include <memory>
#include <tuple>
#include <vector>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

using namespace std::chrono_literals;
using namespace zeltools::simulationinterface;

namespace
{

using Link = std::unique_ptr<SimulationInterface>;

Link make(const QString& address)
{
    return Link(createInterface(address, nullptr));
}

quint16 portOf(const Link& server)
{
    return server->localAddress().section('/', 2).toUShort();
}

QString clientOf(const Link& server)
{
    return server->localAddress().replace("server/", "client/");
}

QString textOf(const Link& link)
{
    const SimulationCounters counters = link->counters();
    return QString("sent %1 (%2), received %3 (%4), refused %5")
        .arg(counters.framesSent)
        .arg(counters.bytesSent)
        .arg(counters.framesReceived)
        .arg(counters.bytesReceived)
        .arg(counters.framesRefused);
}

} // namespace

class TestSimulationLinks : public QObject
{
    Q_OBJECT

    const QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath("sim.sock");
    const QString m_unixServer = "unixserver/" + m_path;

private Q_SLOTS:
    void carriesMessages_data()
    {
        QTest::addColumn<QString>("address");
        QTest::newRow("TCP") << "TcpServer/127.0.0.1/0";
        QTest::newRow("AF_UNIX") << "UnixServer/" + m_path;
    }
    void carriesMessages()
    {
        QFETCH(QString, address);
        Link server = make(address);
        const Link client = make(clientOf(server));
        QSignalSpy changes(client.get(), &SimulationInterface::connectedChanged);
        QSignalSpy atServer(server.get(), &SimulationInterface::dataReceived);
        QSignalSpy atClient(client.get(), &SimulationInterface::dataReceived);
        QVERIFY(!client->write("too early") && !server->write("too early"));
        QTRY_VERIFY(server->connected() && changes.size() == 1);
        QVERIFY(!client->write(QByteArray(65536, 'x')));

        const QByteArray longest(65535, 'x'); // and more of them than the kernel buffers
        for (int i = 0; i < 100; ++i)
            QVERIFY(client->write(longest));
        QTRY_COMPARE(atServer.size(), 100);
        QCOMPARE(atServer.last().first().toByteArray(), longest);
        QVERIFY(client->writeSerializedData("no frame"));
        QTRY_COMPARE(server->counters().resynchronizations, 1U);
        QCOMPARE(textOf(server), "sent 0 (0), received 100 (6553808), refused 1");
        QCOMPARE(textOf(client), "sent 101 (6553808), received 0 (0), refused 2");
        QVERIFY(server->write("last words"));
        server->closeConnection();
        QVERIFY(!server->connected());
        QTRY_COMPARE(changes.size(), 2);
        QCOMPARE(atClient.takeFirst().first().toByteArray(), "last words");

        server.reset();
        fakeclock::advance(4s); // The first attempt fails.
        server = make(client->localAddress().replace("client/", "server/"));
        fakeclock::advance(3s);
        QTRY_VERIFY(server->connected() && client->connected());
        client->closeConnection();
        QTRY_VERIFY(!server->connected());
    }

    void tellsItsAddresses()
    {
        const TcpServerSimulationInterface server(
            SimulationInterfaceAddress("tcpserver/127.0.0.1/0"), nullptr);
        const QString port = QString::number(server.port());
        QVERIFY(server.port() != 0);
        QCOMPARE(server.localAddress(), "tcpserver/127.0.0.1/" + port);
        const Link client = make("tcpclient/127.0.0.1/" + port);
        QTRY_VERIFY(server.connected() && client->connected());
        QCOMPARE(client->peerAddress(), "127.0.0.1/" + port);
        client->closeConnection();
        QTRY_COMPARE(server.peerAddress(), QString());
        QTcpSocket peer;
        peer.connectToHost("127.0.0.1", server.port());
        QTRY_VERIFY(server.connected());
        QCOMPARE(server.peerAddress(), QString("127.0.0.1/%1").arg(peer.localPort()));
        QCOMPARE(make(server.localAddress())->localAddress(), QString()); // The port is in use.
    }

    void noticesALostSimulator()
    {
        std::vector<Link> servers;
        std::vector<std::unique_ptr<QTcpSocket>> peers;
        for (int i = 0; i < 3; ++i) {
            servers.push_back(make("tcpserver/127.0.0.1/0"));
            peers.push_back(std::make_unique<QTcpSocket>());
            peers.back()->setReadBufferSize(1);
            peers.back()->connectToHost("127.0.0.1", portOf(servers.back()));
            QTRY_VERIFY(servers.back()->connected());
        }
        const auto& [idle, busy, unread] = std::tie(servers[0], servers[1], servers[2]);
        QVERIFY(support::lose(*peers[0]) && support::lose(*peers[1]));
        QVERIFY(busy->write("never answered"));
        for (int i = 0; i < 500; ++i)
            QVERIFY(unread->write(QByteArray(65535, 'x')));
        QTRY_VERIFY_WITH_TIMEOUT(!idle->connected() && !busy->connected(), 10000);
        QTest::qWait(1000);
        QVERIFY(unread->connected());
    }

    void allowsPeers_data()
    {
        QTest::addColumn<QString>("subnets");
        QTest::addColumn<bool>("isAllowed");
        QTest::newRow("all by default") << "" << true;
        QTest::newRow("none of two subnets") << "10.0.0.0/8 ::1" << false;
        QTest::newRow("one of two subnets") << "10.0.0.0/8 127.0.0.0/30" << true;
        QTest::newRow("no subnet at all") << "mistake" << false;
    }
    void allowsPeers()
    {
        QFETCH(QString, subnets);
        QFETCH(bool, isAllowed);
        support::LineRecorder recorder;
        {
            TcpServerSimulationInterface server(SimulationInterfaceAddress("tcpserver/127.0.0.1/0"),
                                                nullptr);
            QVector<TcpServerSimulationInterface::Subnet> allowed;
            for (const QString& subnet : subnets.split(' ', Qt::SkipEmptyParts))
                allowed += QHostAddress::parseSubnet(subnet);
            server.setAllowedPeers(allowed);
            std::array<QTcpSocket, 12> peers;
            for (QTcpSocket& peer : peers)
                peer.connectToHost("127.0.0.1", server.port());
            QTRY_COMPARE(server.counters().connectionsRefused, isAllowed ? 11U : 12U);
            QCOMPARE(server.connected(), isAllowed);
        }
        const QStringList lines = recorder.takeMessages();
        QCOMPARE(lines.size(), isAllowed ? 0 : 11);
        QCOMPARE(lines.value(9).contains("from 127.0.0.1 which is not an allowed peer"),
                 !isAllowed);
        QCOMPARE(lines.value(10).contains("caused 2 more warnings"), !isAllowed);
    }

    void bearsManyConnections()
    {
        const Link server = make("tcpserver/127.0.0.1/0");
        QSignalSpy changes(server.get(), &SimulationInterface::connectedChanged);
        const auto sizes = [&] {
            const auto openFiles = QDir("/proc/self/fd").entryList(QDir::Files | QDir::System);
            return QSize(openFiles.size(), server->findChildren<QObject*>().size());
        };
        const QSize before = sizes();
        for (int i = 0; i < 10000; ++i) {
            QTcpSocket peer;
            peer.connectToHost("127.0.0.1", portOf(server));
            QCoreApplication::processEvents();
        }
        QTRY_COMPARE(changes.size() / 2 + int(server->counters().connectionsRefused), 10000);
        QTRY_COMPARE(sizes(), before);
    }

    void guardsItsSocketFile()
    {
        const auto isListening = [this](const Link& link) {
            return link->localAddress() == "unixserver/" + m_path;
        };
        struct stat file
        {
        };
        support::LineRecorder recorder;
        const mode_t before = ::umask(0);
        Link living = make(m_unixServer);
        ::umask(before);
        QVERIFY(isListening(living) && ::lstat(m_path.toUtf8(), &file) == 0);
        QCOMPARE(file.st_mode, mode_t(S_IFSOCK | 0600));
        QSignalSpy changes(living.get(), &SimulationInterface::connectedChanged);
        Link second = make(m_unixServer);
        QVERIFY(!isListening(second));
        QCOMPARE(recorder.takeMessages(),
                 QStringList("Failed listening on " + m_path + ": Address already in use"));
        second.reset();
        QTest::qWait(20);
        QVERIFY(QFile::exists(m_path) && changes.isEmpty());

        living.reset();
        QVERIFY(!QFile::exists(m_path));
        const auto leave = [this] {
            sockaddr_un address{AF_UNIX, {}};
            qstrcpy(address.sun_path, m_path.toUtf8());
            const int left = ::socket(AF_UNIX, SOCK_STREAM, 0);
            QCOMPARE(::bind(left, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
            ::close(left);
        };
        leave();
        living = make(m_unixServer);
        QVERIFY(isListening(living));
        QFile::remove(m_path);
        leave();
        living.reset(); // This file is not its own.
        QVERIFY(QFile::remove(m_path));
        support::writeFile(m_path, "notes");
        QVERIFY(!isListening(make(m_unixServer)));
        QCOMPARE(support::readFile(m_path), "notes");
        QVERIFY(QFile::remove(m_path));
    }

    void refusesPaths()
    {
        const QString longest = '/' + QString(106, 'x');
        for (const QString& path :
             {longest + 'x', QString("run/zel.sock"), "/a" + QString(QChar(0)) + "b"}) {
            support::LineRecorder recorder;
            QVERIFY(!make("unixserver/" + path) && !make("unixclient/" + path));
            const QStringList lines = recorder.takeMessages();
            QCOMPARE(lines.size(), 2);
            QVERIFY(lines[0].contains("absolute path of at most 107 bytes"));
        }
        QCOMPARE(make("unixclient/" + longest)->localAddress(), "unixclient/" + longest);
    }
};

QTEST_GUILESS_MAIN(TestSimulationLinks)
#include "tst_simulationlinks.moc"
