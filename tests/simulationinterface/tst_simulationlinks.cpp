#include "simulationinterface/createinterface.h"
#include "simulationinterface/tcpserversimulationinterface.h"

#include "support.h"
#include "system/fakeclock.h"

#include <QtTest>

#include <memory>

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

QString clientOf(const Link& server)
{
    return server->localAddress().replace("server/", "client/");
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

    // Each step names what lies at the path and tells whether an endpoint can listen there.
    void guardsItsSocketFile()
    {
        const auto isListening = [this](const Link& link) {
            return link->localAddress() == "unixserver/" + m_path;
        };
        struct stat file
        {
        };
        support::LineRecorder recorder;
        Link living;
        {
            const mode_t before = ::umask(0);
            living = make(m_unixServer);
            ::umask(before);
        }
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
