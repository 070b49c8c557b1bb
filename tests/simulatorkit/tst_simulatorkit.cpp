#include "simulationinterface/createinterface.h"
#include "simulatorkit/linkrecorder.h"
#include "simulatorkit/linkreplayer.h"
#include "simulatorkit/simulator.h"
#include "simulatorkit/simulatorrecording.h"
#include "simulatorkit/simulatorscript.h"
#include "support/rows.h"

#include <QTcpSocket>
#include <QtTest>

#include <memory>

using namespace zeltools::simulationinterface;
using namespace zeltools::simulatorkit;

class TestSimulatorKit : public QObject
{
    Q_OBJECT

    using Content = std::tuple<const char*, QByteArray, QString>;

private Q_SLOTS:
    void readsScripts_data()
    {
        const QByteArray head = "zelsim script 1\n";
        const QString wrongHead = "the first line must be \"zelsim script 1\"";
        support::addRows<Content>({
            {"nothing", "", "line 1, column 1: " + wrongHead},
            {"another version", "zelsim script 2 # x\n", "line 1, column 15: " + wrongHead},
            {"an empty line in front", "\n" + head, "line 1, column 1: " + wrongHead},
            {"cut", head + "when any silence",
             "line 2, column 17: the line feed at the end is missing"},
            {"carriage return", head + "when any silence\r\n",
             "line 2, column 17: unexpected character"},
            {"open quote", head + "\n when \"a\\\n", "line 3, column 9: unknown escape"},
            {"keyword in quotes", head + "\"when\" any silence\n",
             "line 2, column 1: a row begins with connected, when, every or also"},
            {"bare text", head + "when a silence\n",
             "line 2, column 6: a text in quotes is missing"},
            {"first of nothing", head + "also silence\n",
             "line 2, column 1: there is no row before this one"},
            {"too short", head + "every 0.4ms silence\n",
             "line 2, column 7: the time is too short"},
            {"too long", head + "every 24.0000001min after 1441min silence\n",
             "line 2, column 27: it is not a time of at most one day, such as 200ms"},
            {"option twice", head + "when any after 1s after 1s silence\n",
             "line 2, column 19: it is neither an action nor an option that may stand here"},
            {"pause alone", head + "when any each 1s silence\n",
             "line 2, column 10: it is neither an action nor an option that may stand here"},
            {"count of an added row", head + "when any silence\nalso first 1 silence\n",
             "line 3, column 6: it is neither an action nor an option that may stand here"},
            {"no times", head + "when any repeat 0 silence\n",
             "line 2, column 17: it is not a number from 1 to 1000000"},
            {"no text", head + "when any answer # \"a\"\n",
             "line 2, column 22: a text in quotes is missing"},
            {"more", head + "when any silence \"a\"\n", "line 2, column 18: unexpected word"},
            {"long line", head + "#" + QByteArray(300000, 'a') + '\n',
             "line 2, column 300002: the line is longer than 300000 bytes"},
            {"long text", head + "when \"" + QByteArray(65536, 'a') + "\" silence\n",
             "line 2, column 6: the text is longer than 65535 bytes"},
            {"many rows", head + QByteArray("when any silence\n").repeated(10001),
             "line 10002, column 1: the script has more than 10000 rows"},
        });
    }
    void readsScripts()
    {
        const auto& [name, content, expected] = support::currentRow<Content>();
        QString error;
        QVERIFY(!SimulatorScript::parse(content, error));
        QCOMPARE(error, expected);
    }

    void writesWhatItHasRead()
    {
        const QByteArray rows = "connected repeat 3 each 1500ms answer \"\\x22\xc3\xa8\"\n"
                                "when \"\\x00\\x0a\" first 2 after 1ms raw \"\\x00\\xff\"\n"
                                "also after 86400000ms half \"\"\n"
                                "when begins \"\" disconnect\n"
                                "when any silence\n"
                                "every 1ms first 1000000 answer \"tick\"\n";
        QByteArray content = "zelsim script 1\n" + rows;
        QString error;
        const auto script = SimulatorScript::parse(content, error);
        QVERIFY2(script, qPrintable(error));
        QCOMPARE(script->toText(), content);
        QCOMPARE(script->rows[1].text, QByteArray("\0\xff", 2));
        content.replace("1500ms", "0.025min")
            .replace("first 2 after 1ms", "\tafter 0.0005s first 2");
        content.replace("86400000ms", "24.0h").replace("24.0h", "1440.0min # x").replace("# x", "");
        QCOMPARE(SimulatorScript::parse(content, error)->toText(), script->toText());
    }

    void readsRecordings_data()
    {
        const QByteArray head = "zelsim recording 1\n0 machine connected\n";
        support::addRows<Content>({
            {"whole",
             head + "0.5 simulator raw \"\\x00\"\n0.5 machine message \"\"\n2 simulator "
                    "disconnected\nend\n",
             ""},
            {"stopped while connected", head + "1.001 machine message \"a\"\nend\n", ""},
            {"cut", head, "line 2, column 20: the recording is cut: its end is missing"},
            {"cut inside a row", head + "1 machine message \"a",
             "line 3, column 21: the line feed at the end is missing"},
            {"behind the end", head + "end\nend\n",
             "line 4, column 1: there are rows behind the end"},
            {"time goes back", head + "2 machine message \"a\"\n1.9 machine disconnected\nend\n",
             "line 4, column 1: the time is earlier than in the row before"},
            {"no time", head + "1.0000 machine disconnected\nend\n",
             "line 3, column 1: it is not a number of milliseconds"},
            {"connected twice", head + "1 simulator connected\nend\n",
             "line 3, column 13: the connection exists already"},
            {"not connected", head + "1 machine disconnected\n1 machine message \"a\"\nend\n",
             "line 4, column 11: there is no connection"},
            {"unknown side", head + "1 \"machine\" disconnected\nend\n",
             "line 3, column 3: unknown word"},
        });
    }
    void readsRecordings()
    {
        const auto& [name, content, expected] = support::currentRow<Content>();
        QString error;
        const auto recording = SimulatorRecording::parse(content, error);
        QCOMPARE(error, expected);
        if (recording)
            QCOMPARE(recording->toText(), content);
    }

    void mayBeDeletedInASignal()
    {
        using Link = std::unique_ptr<SimulationInterface>;
        const QTemporaryDir folder;
        const QString path = folder.filePath("link");
        QString error;
        Link server(createInterface("unixserver/" + path, nullptr));
        Link client(createInterface("unixclient/" + path, nullptr));
        const auto script =
            SimulatorScript::parse("zelsim script 1\nconnected disconnect\n", error);
        auto simulator = std::make_unique<Simulator>(*script, *server);
        connect(server.get(), &SimulationInterface::connectedChanged, [&] {
            if (!server->connected())
                simulator.reset(), server.reset();
        });
        connect(client.get(), &SimulationInterface::connectedChanged, [&] { client.reset(); });
        QTRY_VERIFY(!server && !client);

        auto recording = SimulatorRecording::parse(
            "zelsim recording 1\n0 machine connected\n0 machine message \"a\"\nend\n", error);
        auto replayer = std::make_unique<LinkReplayer>(*recording, LinkReplayer::Options());
        connect(replayer.get(), &LinkReplayer::finished, [&] { replayer.reset(); });
        QCOMPARE(replayer->start("unixserver/" + path), QString());
        LinkReplayer::Options options;
        options.side = LinkSide::Machine;
        recording->events[1].bytes = "b";
        LinkReplayer machine(*recording, options);
        QCOMPARE(machine.start("unixclient/" + path), QString());
        QTRY_VERIFY(!replayer);
    }

    void stopsListening()
    {
        const QTemporaryDir folder;
        LinkRecorder recorder;
        recorder.start("tcpserver/127.0.0.1/0", "tcpclient/127.0.0.1/1", folder.filePath("file"));
        const QString address = recorder.listeningAddress(LinkSide::Machine);
        recorder.stop();
        QCOMPARE(recorder.listeningAddress(LinkSide::Machine), QString());
        QTcpSocket machine;
        machine.connectToHost("127.0.0.1", address.section('/', 2).toUShort());
        QVERIFY(!address.isEmpty() && !machine.waitForConnected());
    }
};

QTEST_GUILESS_MAIN(TestSimulatorKit)
#include "tst_simulatorkit.moc"
