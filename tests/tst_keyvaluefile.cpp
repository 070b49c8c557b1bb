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
        row("lines end in LF, CR LF or not at all", "A=1\nB=2\r\nC",
            {{"A", "1"}, {"B", "2"}, {"C", "1"}});
        row("a # begins a comment, also after blanks, and is text elsewhere",
            "#A=1\n \t# B=2\nA=#\nB#=1", {{"A", "#"}, {"B#", "1"}});
        row("white space at the ends of the line goes, inside it stays",
            "\v\f A = 1 \t\nB=\u00a01\u2003", {{"A ", " 1"}, {"B", "\u00a01\u2003"}});
        row("the first = separates", "A=B=C\nKEY=\n", {{"A", "B=C"}, {"KEY", ""}});
        row("the later line wins, also among many blank ones",
            "X=1\nA=1\nX=2\nA=2\n" + QByteArray(20, '\n') + "=\n",
            {{"A", "2"}, {"X", "2"}, {"", ""}});
        row("and beyond ASCII, where what is not UTF-8 is replaced", "\u00e8=1\nB=\xff\n\u00e8=2",
            {{"\u00e8", "2"}, {"B", "\ufffd"}});
        row("a NUL ends key and value", QByteArray("A\0B=1\0 2", 8), {{"A", "1"}});
    }
    void loads()
    {
        QFETCH(QByteArray, content);
        support::writeFile(m_path, content);
        QTEST(keyvaluefile::load(m_path, true).value(), "map");
    }

    void readsAFileOfSeveralPieces()
    {
        QByteArray content;
        Map map;
        for (int i = 0; i < 200000; ++i) {
            const QString key = QString::number(i * 7919LL % 100003), value = QString::number(i);
            map[key] = value;
            content += (key + '=' + value + '\n').toUtf8();
        }
        support::writeFile(m_path, content);
        QVERIFY(keyvaluefile::load(m_path, true) == map);
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
        QVERIFY(!keyvaluefile::load("/missing/file", false));
        QVERIFY(!keyvaluefile::load("/missing/file", true));
        QVERIFY(!keyvaluefile::save("/missing/file", {}));
        QVERIFY(!keyvaluefile::save("/dev/full", {{"A", "1"}}));
        QCOMPARE(recorder.takeMessages().replaceInStrings(QRegularExpression(".*::| .*\\)"), ""),
                 QStringList({"load( Failed opening file \"/missing/file\"",
                              "save( Failed opening file \"/missing/file\"",
                              "save( Failed writing to file \"/dev/full\""}));
    }

private:
    QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath("file");
};

QTEST_GUILESS_MAIN(TestKeyValueFile)
#include "tst_keyvaluefile.moc"
