#include "support.h"
#include "support/rows.h"

#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

#include <netinet/in.h>
#include <sys/socket.h>

namespace
{

QByteArray frame(const QByteArray& message)
{
    return QByteArray("Q") + char(message.size() >> 8) + char(message.size()) + message;
}

/// `zelctl sim` as a child process.
class Program : public QProcess
{
public:
    explicit Program(const QString& arguments, const QString& limits = ":")
    {
        setWorkingDirectory(folder().path());
        start("/bin/sh", {"-c", limits + "; exec \"$0\" sim " + arguments, ZELCTL_PATH});
        waitForReadyRead();
        const QString address = QString(readLine()).section(' ', -1).trimmed();
        m_port = quint16(address.section('/', -1).toInt());
        m_address = address.section('/', 1);
    }
    ~Program() override { kill(), waitForFinished(); }

    static const QTemporaryDir& folder()
    {
        static const QTemporaryDir folder;
        return folder;
    }
    QString address() const { return "tcpclient/" + m_address; }
    /// Connects a partner that closes its socket with the test.
    std::unique_ptr<QTcpSocket> partner() const
    {
        auto socket = std::make_unique<QTcpSocket>();
        socket->connectToHost(QHostAddress::LocalHost, m_port);
        return socket->waitForConnected() ? std::move(socket) : nullptr;
    }
    /// Everything that is printed on stderr until the process ends, and the exit status.
    QString end()
    {
        const bool isOver =
            QTest::qWaitFor([this] { return state() == QProcess::NotRunning; }, 20000);
        return isOver ? readAllStandardError() + "status " + QString::number(exitCode()) : "hangs";
    }
    QString stop()
    {
        terminate();
        return end();
    }

private:
    QString m_address;
    quint16 m_port = 0;
};

QByteArray readFile(const QString& name)
{
    return support::readFile(Program::folder().filePath(name));
}

void writeFile(const QString& name, const QByteArray& content)
{
    support::writeFile(Program::folder().filePath(name), content);
}

/// All that arrives until the other side disconnects.
QByteArray readToEnd(QTcpSocket& socket)
{
    const auto isClosed = [&] { return socket.state() == QAbstractSocket::UnconnectedState; };
    return QTest::qWaitFor(isClosed, 20000) ? socket.readAll() : "hangs";
}

} // namespace

class TestZelctlSim : public QObject
{
    Q_OBJECT

    using Script = std::tuple<const char*, QByteArray, QByteArrayList, QByteArray>;
    using Replay = std::tuple<const char*, QByteArray, QByteArray, QString>;

private Q_SLOTS:
    void serves_data()
    {
        const QByteArray half("Q\0\6b", 4);
        support::addRows<Script>({
            {"the first row takes it",
             "when \"a\" answer \"1\"\nwhen begins \"a\" first 1 answer \"2\"\n"
             "when begins \"a\" answer \"3\"\nwhen any silence\nwhen begins \"\" answer \"4\"\n",
             {"a", "ab", "ab", "b", "ab"},
             frame("1") + frame("2") + frame("3") + frame("3")},
            {"in the order of time",
             "when \"go\" after 60ms answer \"late\"\n"
             "also after 30ms repeat 2 each 60ms answer \"twice\"\nalso answer \"now\"\n",
             {"go"},
             frame("now") + frame("twice") + frame("late") + frame("twice")},
            {"repeated at once",
             "when \"go\" repeat 3 answer \"a\"\nalso answer \"b\"\nalso silence\n",
             {"go"},
             frame("a") + frame("a") + frame("a") + frame("b")},
            {"faults",
             "when \"go\" raw \"x\\x00\"\nalso half \"brewed\"\nalso disconnect\n"
             "also answer \"never\"\n",
             {"go", "go"},
             QByteArray("x\0", 2) + half},
            {"again and again",
             "connected answer \"hello\"\nconnected first 1 answer \"once\"\n"
             "every 20ms first 2 answer \"tick\"\nalso after 1ms half \"\"\n",
             {},
             frame("hello") + frame("once") + frame("tick") + 'Q' + frame("tick") + 'Q'},
        });
    }
    void serves()
    {
        const auto& [name, rows, messages, expected] = support::currentRow<Script>();
        writeFile("script", "zelsim script 1\nwhen \"stop\" after 300ms disconnect\n" + rows);
        Program simulator("serve script --once");
        const auto machine = simulator.partner();
        QVERIFY(machine);
        for (const QByteArray& message : messages)
            machine->write(frame(message));
        machine->write(frame("stop"));
        QCOMPARE(readToEnd(*machine), expected);
        QCOMPARE(simulator.end(), "status 0");
    }

    void servesOneOfTenThousand()
    {
        writeFile("script", "zelsim script 1\nconnected first 1 answer \"once\"\n"
                            "connected answer \"hello\"\nconnected after 50ms answer \"late\"\n"
                            "every 1h silence\n");
        Program refused("serve script");
        QCOMPARE(refused.end(), "zelctl: script: line 5, column 7: it is no time of at most one "
                                "day, such as 200ms\nstatus 1");
        writeFile("script", readFile("script").replace("1h", "1ms first 1000000"));
        Program simulator("serve script");
        const auto resident = [&] {
            return support::readFile(QString("/proc/%1/statm").arg(simulator.processId()))
                .split(' ')[1]
                .toInt();
        };
        auto machine = simulator.partner();
        QTRY_COMPARE(machine->bytesAvailable(), 22);
        const int before_pages = resident();
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(machine->peerPort());
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        for (int i = 0; i < 10000; ++i) {
            const int other = ::socket(AF_INET, SOCK_STREAM, 0);
            QCOMPARE(::connect(other, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
            char byte = 0;
            QVERIFY(::recv(other, &byte, 1, 0) <= 0);
            ::close(other);
        }
        QDir descriptors(QString("/proc/%1/fd").arg(simulator.processId()));
        QVERIFY(descriptors.count() < 30);
        QVERIFY2((resident() - before_pages) / 256 < 64, "MiB");
        QCOMPARE(machine->readAll(), frame("once") + frame("hello") + frame("late"));
        for (int i = 0; i < 2; ++i) { // The second connection begins before an action is due.
            machine.reset();
            do
                machine = simulator.partner();
            while (!machine->waitForReadyRead(1000)); // The first one may still be attached.
        }
        QTRY_COMPARE(machine->bytesAvailable(), 15);
        QTest::qWait(60);
        QCOMPARE(machine->readAll(), frame("hello") + frame("late"));
        QCOMPARE(simulator.stop(), "status 0");
    }

    void records()
    {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        Program recorder(QString("record tcpclient/127.0.0.1/%1 file").arg(server.serverPort()));
        const auto machine = recorder.partner();
        const auto other = recorder.partner();
        QVERIFY(machine && other && readToEnd(*other).isEmpty());
        QTRY_VERIFY(server.hasPendingConnections());
        QTcpSocket* const simulator = server.nextPendingConnection();
        const auto send = [](QTcpSocket& from, QTcpSocket& to, const QByteArray& bytes) {
            from.write(bytes);
            QTRY_COMPARE(to.bytesAvailable(), bytes.size());
            QCOMPARE(to.readAll(), bytes);
        };
        send(*machine, *simulator, frame("status?").left(4));
        send(*simulator, *machine, frame("") + frame("one") + frame("two\n").left(2));
        send(*machine, *simulator, frame("status?").mid(4) + frame("a") + "rubbish" + frame("b"));
        send(*machine, *simulator, frame(QByteArray(65535, '\0')));
        const QByteArray rows = "zelsim recording 1\n"
                                "machine connected\n"
                                "simulator message \"\"\n"
                                "simulator message \"one\"\n"
                                "machine message \"status?\"\n"
                                "machine message \"a\"\n"
                                "machine raw \"rubbishQ\\x00\\x01b\"\n"
                                "machine message \"" +
                                QByteArray("\\x00").repeated(65535) + "\"\n";
        const auto recorded = [] {
            return QString(readFile("file")).remove(QRegularExpression("(?m)^[0-9.]+ "));
        };
        QTRY_COMPARE(recorded(), rows); // A kill would leave this much.
        machine->write("Q");
        machine->disconnectFromHost();
        QCOMPARE(readToEnd(*simulator), "Q");
        const QString end = "machine raw \"Q\"\nsimulator raw \"Q\\x00\"\nmachine disconnected\n";
        QTRY_COMPARE(recorded(), rows + end);
        QCOMPARE(recorder.stop(), "status 0");
        QCOMPARE(recorded(), rows + end + "end\n");
    }

    void recordsASimulatorThatDoesNotRead()
    {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        Program recorder(QString("record tcpclient/127.0.0.1/%1 file").arg(server.serverPort()),
                         "ulimit -f 2");
        const auto machine = recorder.partner();
        QTRY_VERIFY(server.hasPendingConnections());
        QTcpSocket* const simulator = server.nextPendingConnection();
        simulator->setReadBufferSize(1);
        constexpr int size_B = 64 * 1024 * 1024;
        machine->write(QByteArray(size_B, 'x'));
        qint64 waiting_B = size_B;
        do {
            waiting_B = machine->bytesToWrite();
            QTest::qWait(500);
        } while (machine->bytesToWrite() < waiting_B);
        QVERIFY(waiting_B > size_B / 2);
        simulator->setReadBufferSize(0);
        simulator->read(1);
        QTRY_COMPARE_WITH_TIMEOUT(simulator->bytesAvailable(), size_B - 1, 60000);
        QCOMPARE(recorder.stop(), "zelctl: cannot write file: File too large\nstatus 1");
        const QByteArray file = readFile("file");
        QVERIFY(file.startsWith("zelsim recording 1\n") && file.endsWith('\n') &&
                !file.contains("end"));
    }

    void replays_data()
    {
        const QByteArray brew = "5 machine message \"brew\"\n",
                         close = "6 simulator disconnected\n";
        const QString expected = "zelctl: row 3: expected machine message \"brew\", but ";
        support::addRows<Replay>({
            {"the same", brew + "7 simulator message \"\"\n8 simulator disconnected\n",
             frame("brew"), "status 0"},
            {"another message", brew, frame("grind"), expected + "\"grind\" came\nstatus 1"},
            {"a long message", brew, frame(QByteArray(61, 'a')),
             expected + '"' + QString(60, 'a') + "\"... came\nstatus 1"},
            {"no frame", brew, "xy", expected + "raw \"xy\" came\nstatus 1"},
            {"half a frame", brew, "Q", expected + "raw \"Q\" came\nstatus 1"},
            {"nothing", brew, "", expected + "nothing came\nstatus 1"},
            {"a disconnection", brew, "close", expected + "the machine disconnected\nstatus 1"},
            {"too much", brew + close, frame("brew") + frame("a"),
             "zelctl: row 4: expected simulator disconnected, but \"a\" came\nstatus 1"},
            {"too much at the end", brew, frame("brew") + frame("a"),
             "zelctl: row 4: expected the end, but \"a\" came\nstatus 1"},
            {"other bytes", "5 machine raw \"\"\n5 machine raw \"abc\"\n", "abdc",
             "zelctl: row 4: expected machine raw \"abc\", but raw \"abd\" came\nstatus 1"},
            {"no disconnection", "5 machine disconnected\n", frame("a"),
             "zelctl: row 3: expected machine disconnected, but \"a\" came\nstatus 1"},
            {"another connection", "5 machine disconnected\n6 machine connected\n", "close",
             "zelctl: row 4: expected machine connected, but nothing came\nstatus 1"},
        });
    }
    void replays()
    {
        const auto& [name, rows, bytes, expected] = support::currentRow<Replay>();
        writeFile("file", "zelsim recording 1\n0 machine connected\n" + rows + "end\n");
        Program replayer("replay file tcpserver/127.0.0.1/0 --timeout 0.5s");
        const auto machine = replayer.partner();
        QVERIFY(machine);
        if (bytes == "close")
            machine->disconnectFromHost();
        else
            machine->write(bytes);
        const QString end = replayer.end();
        QCOMPARE(end, expected);
        QCOMPARE(readToEnd(*machine), end == "status 0" ? frame("") : "");
    }

    void replaysBothSidesInTime()
    {
        writeFile("file", "zelsim recording 1\n"
                          "60000 machine connected\n"
                          "60000.1 simulator raw \"noise\"\n"
                          "60000.2 machine message \"" +
                              QByteArray("ab\\x00c").repeated(16000) +
                              "\"\n"
                              "60400 simulator message \"answer\"\n"
                              "60400 machine raw \"Q\\x00\"\n"
                              "60400 machine disconnected\n"
                              "60500 machine connected\n"
                              "60500 machine message \"again\"\n"
                              "60800 simulator disconnected\n"
                              "end\n");
        QElapsedTimer time;
        time.start();
        Program simulator("replay file unixserver/$PWD/link --in-time");
        Program machine("replay file unixclient/$PWD/link --in-time --as machine");
        QCOMPARE(machine.end() + ", " + simulator.end(), "status 0, status 0");
        QVERIFY(time.elapsed() >= 800);
    }
};

QTEST_GUILESS_MAIN(TestZelctlSim)
#include "tst_zelctl_sim.moc"
