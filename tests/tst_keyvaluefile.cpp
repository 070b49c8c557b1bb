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
        row("lines end in LF, CR LF or not at all", "A=1\nB=2\r\nC=3",
            {{"A", "1"}, {"B", "2"}, {"C", "3"}});
        row("a # begins a comment, also after blanks, and is text elsewhere",
            "#A=1\n \t# B=2\nA=#\nB#=1", {{"A", "#"}, {"B#", "1"}});
        row("white space at the ends of the line goes, inside it stays",
            "\v\f A = 1 \t\nB=\u00a01\u2003", {{"A ", " 1"}, {"B", "\u00a01\u2003"}});
        row("the first = separates, without one the value is 1", "A=B=C\nKEY=\nSWITCH\n\n",
            {{"A", "B=C"}, {"KEY", ""}, {"SWITCH", "1"}, {"", "1"}});
        row("the later line wins, wherever it sorts", "X=1\nA=1\nX=2\nA=2\nM=1",
            {{"A", "2"}, {"M", "1"}, {"X", "2"}});
        row("also among many blank ones", "B=1\nA=1\n" + QByteArray(20, '\n') + "=\n",
            {{"A", "1"}, {"B", "1"}, {"", ""}});
        row("a NUL ends key and value", QByteArray("A\0B=1\0 2\nC\0D\n\0=\0", 16),
            {{"A", "1"}, {"C", "1"}, {"", ""}});
        row("what is not UTF-8 becomes replacement characters", "\u00e8=\u20ac\nB=\xff\n",
            {{"\u00e8", "\u20ac"}, {"B", "\ufffd"}});
    }
    void loads()
    {
        QFETCH(QByteArray, content);
        support::writeFile(m_path, content);
        QTEST(keyvaluefile::load(m_path, true).value(), "map");
    }

    void saves()
    {
        const Map map{{"B", "x=%1 %2"}, {"A%1", "\u20ac"}, {"", ""}};
        support::writeFile(m_path, "something longer that was there before");
        QVERIFY(keyvaluefile::save(m_path, map));
        QCOMPARE(support::readFile(m_path), QByteArray("=\nA%1=\u20ac\nB=x=%1 %2\n"));
        QVERIFY(keyvaluefile::save(m_path, Map()));
        QCOMPARE(keyvaluefile::load(m_path, true).value(), Map());
    }

    void saysWhatFailed()
    {
        const QString missing = m_path + "/missing";
        support::LineRecorder recorder;
        QVERIFY(!keyvaluefile::load(missing, false));
        QVERIFY(!keyvaluefile::load(missing, true));
        QVERIFY(!keyvaluefile::save(missing, Map()));
        QVERIFY(!keyvaluefile::save("/dev/full", {{"A", "1"}}));
        const QString load = "optional<QMap<QString, QString> > zeltools::keyvaluefile::load("
                             "const QString&, bool)";
        const QString save = "bool zeltools::keyvaluefile::save("
                             "const QString&, const QMap<QString, QString>&)";
        QCOMPARE(recorder.takeMessages(),
                 QStringList({load + " Failed opening file \"" + missing + '"',
                              save + " Failed opening file \"" + missing + '"',
                              save + " Failed writing to file \"/dev/full\""}));
    }

    void prints()
    {
        support::LineRecorder recorder;
        keyvaluefile::print({{"B", "\"quoted\""}, {"A%2", "1"}});
        QCOMPARE(recorder.takeMessages(), QStringList({"A1=1", "B=\"quoted\""}));
    }

private:
    QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath("file");
};

QTEST_GUILESS_MAIN(TestKeyValueFile)
#include "tst_keyvaluefile.moc"
