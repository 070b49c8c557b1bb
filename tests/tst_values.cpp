#include "binarydataformatter.h"
#include "support.h"
#include "versionapp.h"
#include "wrongbytedataexception.h"

#include <QtTest>

#include <new>

static QStringList warnings;

/// Version numbers and hexadecimal text.
class TestValues : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext&, const QString& text) { warnings << text; });
    }
    void cleanupTestCase() { qInstallMessageHandler(nullptr); }

    void comparesVersions_data()
    {
        QTest::addColumn<QString>("texts");
        QTest::addColumn<QString>("holds");
        QTest::addColumn<int>("countOfWarnings");
        QTest::newRow("numbers") << "2.9/2.10"
                                 << "< <= !=" << 0;
        QTest::newRow("signs and white space") << " 3\t.2/-3.+02"
                                               << "> >= !=" << 0;
        QTest::newRow("no numbers") << "1..2a.0x3/1.0.0.0"
                                    << "<= >= ==" << 0;
        QTest::newRow("beyond int") << "2147483648/"
                                    << "<= >= ==" << 0;
        QTest::newRow("begin of the other") << "1.2/1.2.1"
                                            << "<= >= !=" << 6;
        QTest::newRow("shorter but above") << "1.3/1.2.7"
                                           << "> >= !=" << 6;
    }
    void comparesVersions()
    {
        QFETCH(QString, texts);
        QFETCH(int, countOfWarnings);
        const VersionNumber a(texts.section('/', 0, 0)), b(texts.section('/', 1));
        warnings.clear();
        const bool answers[]{a<b, a> b, a <= b, a >= b, a == b, a != b};
        QStringList holds{"<", ">", "<=", ">=", "==", "!="};
        for (int i = 5; i >= 0; --i) {
            if (!answers[i])
                holds.removeAt(i);
        }
        QTEST(holds.join(' '), "holds");
        const QString warning =
            "static bool VersionNumber::isValidComparison(const VersionNumber&, const "
            "VersionNumber&) Invalid comparison version ( \"%1\" ) , expecting ( \"%2\" ) versions "
            "identifiers";
        QCOMPARE(warnings.count(warning.arg(a.toString(), b.toString())), countOfWarnings);
        QCOMPARE(warnings.size(), countOfWarnings);
    }

    void knowsTheVersionOfAnApplication()
    {
        warnings.clear();
        VersionApp app(1, 4, 2);
        QCOMPARE(app.majorVersionApp() * 100 + app.minorVersionApp() * 10 + app.fixVersionApp(),
                 142);
        QString text;
        QDebug(&text) << 1 << app << "a";
        QCOMPARE(text, "1 \"VersionNumber - \\\"1.4.2\\\"\" a ");
        app = {1, 4};
        QCOMPARE(app.majorVersionApp(), 0);
        QCOMPARE(warnings, QStringList("bool VersionApp::isValidVersionApp() const Invalid version "
                                       "application ( \"1.4\" ) must contains 3 identifiers"));
    }

    void parsesHexadecimalText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("result"); // or what the cleaned text is, which is refused
        const auto row = [](const QString& text, const char* result) {
            QTest::newRow(qPrintable(text)) << text << QString(result);
        };
        row("-:0x", "");
        row("0x0a0X0B", "0a0b");
        row("0123456789:abcdef-ABCDEF-", "0123456789abcdefabcdef");
        row("A-0:xB", "ab");
        row("a00x0xb0", "a0b0");
        row("\ufb00", "ff");
        row("ABC", "Odd number of hex characters");
        row("de:ad-BE ef", "DEADBE EF");
        row("AB\n", "AB\n");
        row("00XX", "0X");
        row("%2g0-%1", "%2G0%1");
        row("\u0130\u0141A", "\u0130\u0141A"); // their lower bytes are digits
    }
    void parsesHexadecimalText()
    {
        QFETCH(QString, text);
        QFETCH(QString, result);
        const QString format = "Wrong format: \"" + text + "\" -> \"" + result + '"';
        const QString longer = text + '0'; // the text is not followed by a NUL
        try {
            const QString part = QString::fromRawData(longer.constData(), text.size());
            QCOMPARE(QString(BinaryDataFormatter(part).data().toHex()), result);
        } catch (const WrongByteDataException& exception) {
            const QString details = text == "ABC" ? result : format;
            QCOMPARE(exception.what(), "WrongByteDataException details: \"" + details + '"');
        }
    }

    void formatsBytes()
    {
        const BinaryDataFormatter formatter(QByteArray("\0\xaf\x80", 3));
        QCOMPARE(formatter.format("0x", "-"), "0x00-AF-80");
        QCOMPARE(formatter.format("", "\u00dfx"), "00SSXAFSSX80");
        QCOMPARE(BinaryDataFormatter(QByteArray()).format("pre", "-"), "pre");
        const QString separator(3000000, '-');
        QVERIFY(support::throws<std::bad_alloc>(
            [&] { BinaryDataFormatter(QByteArray(1000, 'a')).format("", separator); }));
    }
};

QTEST_GUILESS_MAIN(TestValues)
#include "tst_values.moc"
