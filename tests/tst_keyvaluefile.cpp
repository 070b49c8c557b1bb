#include "keyvaluefile.h"
#include "logging/log.h"
#include "support.h"

#include <QtTest>

#include <csignal>

#include <sys/resource.h>

using Map = QMap<QString, QString>;
namespace keyvaluefile = zeltools::keyvaluefile;

class TestKeyValueFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void loads_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<Map>("map");
        const auto row = [](const char* name, const QByteArray& content, const Map& map) {
            QTest::newRow(name) << content << map;
        };
        row("an empty file has no line", "", {});
        row("lines end in LF, CR LF or not at all", "A=1\nB=2\r\nC=3",
            {{"A", "1"}, {"B", "2"}, {"C", "3"}});
        row("comments are skipped, also after blanks", "#A=1\n \t# B=2\n", {});
        row("a # further on is none", "A=#\nB#=1", {{"A", "#"}, {"B#", "1"}});
        row("white space at the ends of the line goes, inside it stays", "\v\f A = 1 \t\n",
            {{"A ", " 1"}});
        row("the first = separates", "A=B=C\n=VALUE\nKEY=\n",
            {{"A", "B=C"}, {"", "VALUE"}, {"KEY", ""}});
        row("without = the value is 1, in a blank line too", "SWITCH\n\n",
            {{"SWITCH", "1"}, {"", "1"}});
        row("the later line wins, wherever it sorts", "X=1\nA=1\nX=2\nA=2\nM=1",
            {{"A", "2"}, {"M", "1"}, {"X", "2"}});
        row("a NUL ends key and value", QByteArray("A\0B=1\0 2\nC\0D\n\0=\0", 16),
            {{"A", "1"}, {"C", "1"}, {"", ""}});
        row("the texts are UTF-8, garbage becomes replacement characters",
            "caff\u00e8=\u20ac\nB=\xff\xc3\n", {{"caff\u00e8", "\u20ac"}, {"B", "\ufffd\ufffd"}});
        row("other white space of Unicode is text", "A=\u00a01\u2003", {{"A", "\u00a01\u2003"}});
    }
    void loads()
    {
        QFETCH(QByteArray, content);
        const QString path = m_folder.filePath("file");
        support::writeFile(path, content);
        const auto map = keyvaluefile::load(path, true);
        QVERIFY(map);
        QTEST(*map, "map");
        QVERIFY(!map->contains("KEY") || !map->value("KEY").isNull());
    }

    void saves()
    {
        const QString path = m_folder.filePath("file");
        const Map map{{"B", "x=%1 %2"}, {"A%1", "\u20ac"}, {"", ""}};
        support::writeFile(path, "something longer that was there before");
        QVERIFY(keyvaluefile::save(path, map));
        QCOMPARE(support::readFile(path), QByteArray("=\nA%1=\u20ac\nB=x=%1 %2\n"));
        QCOMPARE(keyvaluefile::load(path, true).value(), map);
        QVERIFY(keyvaluefile::save(path, Map()));
        QCOMPARE(support::readFile(path), QByteArray());
    }

    void saysWhatFailed()
    {
        const QString missing = m_folder.filePath("missing/file");
        support::LineRecorder recorder;
        QVERIFY(!keyvaluefile::load(missing, false));
        QVERIFY(!keyvaluefile::load(missing, true));
        QVERIFY(!keyvaluefile::load(m_folder.path(), false));
        QVERIFY(!keyvaluefile::save(missing, Map()));
        QVERIFY(!keyvaluefile::save("/dev/full", {{"A", "1"}}));
        const auto lines = recorder.take();
        const QString save = "bool zeltools::keyvaluefile::save(const QString&, const "
                             "QMap<QString, QString>&)";
        QCOMPARE(lines.size(), 3);
        QCOMPARE(lines[0].message,
                 "optional<QMap<QString, QString> > zeltools::keyvaluefile::load(const QString&, "
                 "bool) Failed opening file \"" +
                     missing + '"');
        QCOMPARE(lines[1].message, save + " Failed opening file \"" + missing + '"');
        QCOMPARE(lines[2].message, save + " Failed writing to file \"/dev/full\"");
        QCOMPARE(lines[2].level, LogLevel::Warning);
        QVERIFY(lines[2].modules == Log::Global);
    }

    void keepsTheLinesBeforeAShortWrite()
    {
        const QString path = m_folder.filePath("short");
        rlimit before{};
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit sixBytes{6, before.rlim_max};
        const auto handler = std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &sixBytes);
        const bool isSaved = keyvaluefile::save(path, {{"A", "1"}, {"B", "2"}, {"C", "3"}});
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
        QVERIFY(!isSaved);
        QCOMPARE(support::readFile(path), QByteArray("A=1\nB="));
    }

    void prints()
    {
        support::LineRecorder recorder;
        keyvaluefile::print({{"B", "\"quoted\""}, {"A%2", "1"}});
        QCOMPARE(recorder.takeMessages(), QStringList({"A1=1", "B=\"quoted\""}));
    }

private:
    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(TestKeyValueFile)
#include "tst_keyvaluefile.moc"
