#include "binarydataformatter.h"
#include "keyvaluefile.h"
#include "keyvaluelines.h"
#include "support.h"
#include "versionapp.h"
#include "wrongbytedataexception.h"

#include <QtTest>

#include <new>

using Map = QMap<QString, QString>;
namespace keyvaluefile = zeltools::keyvaluefile;

static QStringList warnings;

/// Version numbers, hexadecimal text and key-value files.
class TestValues : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext&, const QString& text) { warnings << text; });
    }

    void comparesVersions_data()
    {
        QTest::addColumn<QString>("holds");
        const auto row = [](const char* versions, auto holds) { QTest::newRow(versions) << holds; };
        row("2.9/2.10", "< <= !=");
        row(" 3\t.2/-3.+02", "> >= !=");
        row("1..2a.0x3/1.0.0.0", "<= >= =="); // a part that is not a number is 0
        row("2147483648/", "<= >= ==");
        row("1.2/1.2.1", "<= >= !=");
        row("1.3/1.2.7", "> >= !=");
    }
    void comparesVersions()
    {
        const QStringList texts = QString(QTest::currentDataTag()).split('/');
        const VersionNumber a(texts[0]), b(texts[1]);
        warnings.clear();
        const QPair<const char*, bool> answers[]{{"<", a < b},   {">", a > b},   {"<=", a <= b},
                                                 {">=", a >= b}, {"==", a == b}, {"!=", a != b}};
        QStringList holds;
        for (const auto& [sign, isTrue] : answers)
            holds += isTrue ? QStringList(sign) : QStringList();
        QTEST(holds.join(' '), "holds");
        const QString warning =
            "static bool VersionNumber::isValidComparison(const VersionNumber&, const "
            "VersionNumber&) Invalid comparison version ( \"%1\" ) , expecting ( \"%2\" ) versions "
            "identifiers";
        QCOMPARE(warnings.size(), a.size() == b.size() ? 0 : 6);
        QCOMPARE(warnings.count(warning.arg(texts[0], texts[1])), warnings.size());
    }

    void parsesHexadecimalText_data()
    {
        QTest::addColumn<QString>("result"); // in plain form, or the text of the exception
        const auto row = [](const char* text, auto result) { QTest::newRow(text) << result; };
        const auto refused = [&row](const char* text, const char* cleaned) {
            const QString message =
                "WrongByteDataException details: \"Wrong format: \"%1\" -> \"%2\"\"";
            row(text, message.arg(text, cleaned));
        };
        row("-:0x", "");
        row("0x0a0X0B", "0a0b");
        row("0123456789:abcdef-ABCDEF-", "0123456789abcdefabcdef");
        row("A-0:xB", "ab");
        row("a00x0xb0", "a0b0");
        row("\ufb00", "ff"); // a ligature, which is FF in upper case
        row("ABC", "WrongByteDataException details: \"Odd number of hex characters\"");
        refused("de:ad-BE ef", "DEADBE EF");
        refused("AB\n", "AB\n");
        refused("00XX", "0X");
        refused("%2g0-%1", "%2G0%1");
        refused("\u0130\u0141A", "\u0130\u0141A"); // their lower bytes are digits
    }
    void parsesHexadecimalText()
    {
        QString result;
        try {
            result = BinaryDataFormatter(QString(QTest::currentDataTag())).data().toHex();
        } catch (const WrongByteDataException& exception) {
            result = QString::fromLocal8Bit(exception.what());
        }
        QTEST(result, "result");
    }

    void formatsBytes()
    {
        const BinaryDataFormatter formatter(QByteArray("\0\xaf\x80", 3));
        QCOMPARE(formatter.format("0x", "-"), "0x00-AF-80");
        QCOMPARE(formatter.format("", "\u00dfx"), "00SSXAFSSX80");
        QVERIFY(formatter.format("", QString(QChar(0xd8ac))).contains("AF")); // half a character
        QCOMPARE(BinaryDataFormatter(QByteArray()).format("pre", "-"), "pre");
        const QString separator(3000000, '-');
        QVERIFY(support::throws<std::bad_alloc>(
            [&] { BinaryDataFormatter(QByteArray(1000, 'a')).format("", separator); }));
    }

    void loadsKeyValueFiles_data()
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
        row("the later line wins", "A=1\n\nB\n=\nA=2", {{"A", "2"}, {"B", "1"}, {"", ""}});
        row("and in a later piece of a large file",
            QByteArray("A=1\nBBB=2\n").repeated(300000) + "A=3", {{"A", "3"}, {"BBB", "2"}});
        const QByteArray longest(16 * 1024 * 1024 - 2, 'x');
        row("a line of more than 16 MiB gives no pair",
            "A\nB=" + longest + "\nC= " + longest + "\nD",
            {{"A", "1"}, {"B", longest}, {"D", "1"}});
        row("a NUL ends key and value", QByteArray("A\0B=1\0 2", 8), {{"A", "1"}});
    }
    void loadsKeyValueFiles()
    {
        QFETCH(QByteArray, content);
        support::writeFile(m_path, content);
        support::LineRecorder recorder;
        QTEST(keyvaluefile::load(m_path, true).value(), "map");
        QCOMPARE(recorder.takeMessages().filter("Ignoring line 3 longer").size(),
                 content.size() > 20'000'000 ? 1 : 0);
    }

    void savesAndPrintsKeyValueFiles()
    {
        support::writeFile(m_path, "something longer that was there before");
        QVERIFY(keyvaluefile::save(m_path, {{"B", "x=%1 \""}, {"A%2", "\u20ac"}, {"", ""}}));
        QCOMPARE(support::readFile(m_path), QByteArray("=\nA%2=\u20ac\nB=x=%1 \"\n"));
        support::LineRecorder recorder;
        keyvaluefile::print({{"B", "\"quoted\""}, {"A%2", "1"}});
        QCOMPARE(recorder.takeMessages(), QStringList({"A1=1", "B=\"quoted\""}));
    }

    void editsALargeFileWithManyKeys()
    {
        zeltools::KeyValueLines lines(QByteArray("OTHER=1\n").repeated(20000) + "LAST=1");
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < 100; ++i)
            lines.unset(QString::number(i));
        lines.unset("LAST");
        lines.set("NEW", "1");
        lines.unset("OTHER");
        QCOMPARE(lines.text(), QByteArray("NEW=1\n"));
        QVERIFY(timer.elapsed() < 2000);
    }

    void reportsKeyValueFilesThatFail()
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

QTEST_GUILESS_MAIN(TestValues)
#include "tst_values.moc"
