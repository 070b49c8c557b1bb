#include "support.h"
#include "support/lostpeer.h"
#include "support/rows.h"

#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

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
    using Failure = std::tuple<const char*, QString, QString>;
    using Replay = std::tuple<const char*, QByteArray, QByteArray, QString>;

private Q_SLOTS:
    void serves_data()
    {
        support::addRows<Script>({
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
             QByteArray("x\0Q\0\6b", 6)},
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

    void records()
    {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        Program recorder(QString("record tcpclient/127.0.0.1/%1 file").arg(server.serverPort()));
        auto machine = recorder.partner();
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
        const QByteArray rows = "zelsim recording 1\n"
                                "machine connected\n"
                                "simulator message \"\"\n"
                                "simulator message \"one\"\n"
                                "machine message \"status?\"\n"
                                "machine message \"a\"\n"
                                "machine raw \"rubbishQ\\x00\\x01b\"\n";
        const auto recorded = [] {
            return QString(readFile("file")).remove(QRegularExpression("(?m)^[0-9.]+ "));
        };
        QTRY_COMPARE(recorded(), rows); // A kill would leave this much.
        machine->write("Q");
        machine->disconnectFromHost();
        QCOMPARE(readToEnd(*simulator), "Q");
        const QString end = "machine raw \"Q\"\nsimulator raw \"Q\\x00\"\nmachine disconnected\n";
        QTRY_COMPARE(recorded(), rows + end);
        QString again;
        for (int i = 0; i < 20; ++i) { // Some hang up before the simulator is reached.
            machine = recorder.partner();
            machine->write(frame("again"));
            machine->waitForBytesWritten();
            if (i % 2 == 0)
                machine.reset();
            again += "machine connected\nmachine message \"again\"\n";
            QTRY_VERIFY(recorded().startsWith(rows + end + again));
            again += "machine disconnected\n";
            if (i < 19)
                machine.reset();
        }
        QVERIFY(support::lose(*machine));
        QTRY_COMPARE_WITH_TIMEOUT(recorded(), rows + end + again, 10000);
        QCOMPARE(recorder.stop(), "status 0");
        QCOMPARE(recorded(), rows + end + again + "end\n");
    }

    void reportsWhyItCannotStart_data()
    {
        support::addRows<Failure>({
            {"no folder", "record tcpclient/127.0.0.1/1 none/x",
             "write none/x: No such file or directory"},
            {"unread pipe", "record tcpclient/127.0.0.1/1 pipe",
             "write pipe: No such device or address"},
            {"no folder of a socket", "replay file unixserver//none/x",
             "listen on unixserver//none/x: No such file or directory"},
            {"foreign address", "serve script tcpserver/192.0.2.1/0",
             "listen on tcpserver/192.0.2.1/0: The address is not available"},
        });
    }
    void reportsWhyItCannotStart()
    {
        const auto& [name, arguments, expected] = support::currentRow<Failure>();
        writeFile("script", "zelsim script 1\n");
        writeFile("file", "zelsim recording 1\nend\n");
        Program program(arguments, "test -p pipe || mkfifo pipe");
        QCOMPARE(program.end(), "zelctl: cannot " + expected + "\nstatus 1");
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
        const QByteArray brew = "5 machine message \"brew\"\n";
        const QString expected = "zelctl: row 3: expected machine message \"brew\", but ";
        support::addRows<Replay>({
            {"the same", brew + "7 simulator message \"\"\n8 simulator disconnected\n",
             frame("brew"), "status 0"},
            {"half a frame", brew, "Q", expected + "raw \"Q\" came\nstatus 1"},
            {"other bytes", "5 machine raw \"\"\n5 machine raw \"abc\"\n", "abdc",
             "zelctl: row 4: expected machine raw \"abc\", but raw \"abd\" came\nstatus 1"},
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
};

QTEST_GUILESS_MAIN(TestZelctlSim)
#include "tst_zelctl_sim.moc"
