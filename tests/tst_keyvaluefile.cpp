#include "keyvaluefile.h"
#include "support.h"

#include <QtTest>

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
        row("lines end in LF, CR LF or not at all", "A=1\r\nB", {{"A", "1"}, {"B", "1"}});
        row("a # begins a comment, elsewhere text", "#A=1\n \t# B=2\nA=#", {{"A", "#"}});
        row("white space at the ends of the line goes, inside it stays",
            "\v\f A = 1 \t\nB=\u00a01\u2003", {{"A ", " 1"}, {"B", "\u00a01\u2003"}});
        row("the first = separates", "A=B=C\nKEY=\n", {{"A", "B=C"}, {"KEY", ""}});
        row("the later line wins, also among many blank ones",
            QByteArray("A=1\n\n").repeated(20) + "=\nA=2", {{"A", "2"}, {"", ""}});
        row("and in a later piece of a large file",
            QByteArray("A=1\nBBB=2\n").repeated(300000) + "A=3", {{"A", "3"}, {"BBB", "2"}});
        row("and beyond ASCII", "\xff=1\nB=\u20ac\n\xfe=2\n", {{"\ufffd", "2"}, {"B", "\u20ac"}});
        const QByteArray longest(16 * 1024 * 1024 - 2, 'x');
        row("a line of more than 16 MiB gives no pair",
            "A\nB=" + longest + "\nC= " + longest + "\nD",
            {{"A", "1"}, {"B", longest}, {"D", "1"}});
        row("a NUL ends key and value", QByteArray("A\0B=1\0 2", 8), {{"A", "1"}});
    }
    void loads()
    {
        QFETCH(QByteArray, content);
        support::writeFile(m_path, content);
        support::LineRecorder recorder;
        QTEST(keyvaluefile::load(m_path, true).value(), "map");
        QCOMPARE(recorder.takeMessages().filter("Ignoring line 3 longer").size(),
                 content.size() > 20'000'000 ? 1 : 0);
    }

    void savesAndPrints()
    {
        support::writeFile(m_path, "something longer that was there before");
        QVERIFY(keyvaluefile::save(m_path, {{"B", "x=%1 \""}, {"A%2", "\u20ac"}, {"", ""}}));
        QCOMPARE(support::readFile(m_path), QByteArray("=\nA%2=\u20ac\nB=x=%1 \"\n"));
        support::LineRecorder recorder;
        keyvaluefile::print({{"B", "\"quoted\""}, {"A%2", "1"}});
        QCOMPARE(recorder.takeMessages(), QStringList({"A1=1", "B=\"quoted\""}));
    }

    void saysWhatFailed()
    {
        support::LineRecorder recorder;
        QVERIFY(!keyvaluefile::load("/none/a", false) && !keyvaluefile::load("/none/a", true));
        QVERIFY(!keyvaluefile::load("/proc/self/mem", true)); // every read fails
        QVERIFY(keyvaluefile::load("/dev/null", true).value().isEmpty());
        QVERIFY(!keyvaluefile::save("/none/a", {}) && !keyvaluefile::save("/dev/full", {{"", ""}}));
        QCOMPARE(recorder.takeMessages().replaceInStrings(QRegularExpression(".*::|\\(.*\\)"), ""),
                 QStringList({"load Failed opening file \"/none/a\"",
                              "load Failed opening file \"/proc/self/mem\"",
                              "save Failed opening file \"/none/a\"",
                              "save Failed writing to file \"/dev/full\""}));
    }

private:
    QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath("file");
};

QTEST_GUILESS_MAIN(TestKeyValueFile)
#include "tst_keyvaluefile.moc"
