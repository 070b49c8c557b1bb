#include "crypt/addtohash_p.h"
#include "crypt/digest.h"
#include "simplecrypt.h"
#include "support.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <dlfcn.h>

static bool s_isMemoryShort = false;

// This function replaces that of zlib, so that qCompress() finds no memory.
extern "C" Q_DECL_EXPORT int deflateInit_(void* stream, int level, const char* version, int size)
{
    static const auto own =
        reinterpret_cast<decltype(&deflateInit_)>(dlsym(RTLD_NEXT, "deflateInit_"));
    return s_isMemoryShort ? -4 /* Z_MEM_ERROR */ : own(stream, level, version, size);
}

namespace
{

constexpr int s_chunk = 0x100000;
const QByteArray s_text = "Espresso 25 ml, 92.5 degrees\n";
QStringList s_warnings;

QByteArray golden(const QString& name)
{
    return support::readFile(QFINDTESTDATA("golden/" + name + ".crypt"));
}

QByteArray sha1(const QByteArray& bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1);
}

bool isLibcryptoLoaded()
{
    return support::readFile("/proc/self/maps").contains("/libcrypto.so");
}

void addRecords(const QString& path)
{
    QTest::addColumn<QJsonObject>("record");
    const auto records = QJsonDocument::fromJson(support::readFile(path)).array();
    for (const QJsonValue& record : records)
        QTest::newRow(record["name"].toString().toUtf8()) << record.toObject();
}

SimpleCrypt cryptOf(const QJsonObject& record)
{
    const QStringList compressions{"smaller", "forced", "off"};
    const QStringList protections{"off", "checksum", "sha1"};
    const auto compression = compressions.indexOf(record["compression"].toString("off"));
    const auto protection = protections.indexOf(record["protection"].toString("sha1"));
    SimpleCrypt crypt;
    if (!record["keyless"].toBool())
        crypt.setKey(record["key"].toString("7").toULongLong(nullptr, 16));
    crypt.setCompression(static_cast<SimpleCrypt::CompressionMode>(compression));
    crypt.setProtection(static_cast<SimpleCrypt::ProtectionMode>(protection));
    crypt.setMetadata(record["metadata"].toString());
    crypt.setPlainPayload(record["plain"].toBool());
    crypt.setRandomCharEnabled(false);
    return crypt;
}

} // namespace

class TestSimpleCrypt : public QObject
{
    Q_OBJECT

    QVariant call(const QString& name, SimpleCrypt& crypt, const QString& in, const QString& out)
    {
        const QByteArray bytes = support::readFile("in");
        const QHash<QString, std::function<QVariant()>> calls{
            {"checkVersion", [&] { return crypt.checkVersion(bytes); }},
            {"decryptFileSmart", [&] { return crypt.decryptFileSmart(in, out); }},
            {"decryptToByteArray", [&] { return crypt.decryptToByteArray(bytes); }},
            {"encryptFile", [&] { return crypt.encryptFile(in, out); }},
            {"encryptFileSmart", [&] { return crypt.encryptFileSmart(in, out); }},
            {"encryptToString", [&] { return crypt.encryptToString(bytes); }},
            {"getDataHashOffset", [&] { return crypt.getDataHashOffset(in); }},
            {"getHeaderLength", [&] { return crypt.getHeaderLength(in); }},
            {"getMetadata", [&] { return crypt.getMetadata(bytes); }},
            {"getMetadataFromFile", [&] { return crypt.getMetadataFromFile(in); }},
            {"getMetadataHeader", [&] { return crypt.getMetadataHeader("").toHex(); }},
        };
        return calls.value(name)();
    }

    QTemporaryDir m_dir;

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(QDir::setCurrent(m_dir.path()));
        qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext&, const QString& text) { s_warnings += text; });
        QVERIFY2(!isLibcryptoLoaded(), "A host that needs no digest waits for libcrypto");
    }

    void hasTheDigestsOfQt()
    {
        for (const auto algorithm :
             {QCryptographicHash::Md5, QCryptographicHash::Sha1, QCryptographicHash::Sha256}) {
            zeltools::Digest digest(algorithm);
            digest.add(s_text.constData(), 3);
            digest.add(s_text.constData() + 3, s_text.size() - 3);
            QCryptographicHash inPieces(algorithm);
            zeltools::addToHash(inPieces, s_text.constData(), s_text.size(), 4);
            QCOMPARE(digest.result(), QCryptographicHash::hash(s_text, algorithm));
            QCOMPARE(inPieces.result(), QCryptographicHash::hash(s_text, algorithm));
            QCOMPARE(isLibcryptoLoaded(), HAS_LIBCRYPTO && algorithm != QCryptographicHash::Md5 &&
                                              !qEnvironmentVariableIsSet("HIDDEN_LIBRARY"));
        }
    }

    // cryptformat.py has written the files.
    void writesAndReadsTheFormat_data() { addRecords(QFINDTESTDATA("golden/cases.json")); }
    void writesAndReadsTheFormat()
    {
        QFETCH(const QJsonObject, record);
        const QByteArray cyphertext = golden(record["name"].toString());
        const QByteArray text =
            record["text"].toString().repeated(record["times"].toInt()).toUtf8();
        const QString protection = record["protection"].toString("sha1");
        support::writeFile("cyphertext", cyphertext);
        SimpleCrypt crypt = cryptOf(record);

        QCOMPARE(crypt.encryptToByteArray(text), cyphertext);
        QCOMPARE(crypt.decryptToByteArray(cyphertext), text);
        QCOMPARE(crypt.lastError(), SimpleCrypt::CryptNoError);
        QCOMPARE(QStringList({"off", "checksum", "sha1"})[crypt.checkedProtection()], protection);
        QVERIFY(!crypt.decryptFile("", "") && !crypt.checkedProtection());
        QVERIFY(crypt.decryptFile("cyphertext", "text"));
        QCOMPARE(support::readFile("text"), text);
        const bool isLong = cyphertext.size() >= 30;
        QCOMPARE(crypt.decryptFileSmart("cyphertext", "text"), isLong);
        QCOMPARE(support::readFile("text"), isLong ? text : QByteArray());
        if (record["compression"].isUndefined() && protection != "checksum" && !text.isEmpty()) {
            QVERIFY(crypt.encryptFileSmart("text", "streamed"));
            QCOMPARE(support::readFile("streamed"), cyphertext);
        }
    }

    // A report consists of the result, lastError(), which was 2 before the call, and the warnings.
    void reports_data() { addRecords(QFINDTESTDATA("reports.json")); }
    void reports()
    {
        QFETCH(const QJsonObject, record);
        QByteArray bytes = QByteArray::fromHex(record["bytes"].toString().toLatin1());
        bytes += QByteArray(record["filler"].toInt(), 'x');
        if (record.contains("golden"))
            bytes = golden(record["golden"].toString()).left(record["cut"].toInt(INT_MAX));
        support::writeFile("in", bytes);
        support::writeFile("out", "kept");
        SimpleCrypt crypt = cryptOf(record);
        crypt.getMetadataSize("\5");
        s_warnings.clear();
        support::LineRecorder recorder;
        s_isMemoryShort = record["memoryShort"].toBool();
        const QString result =
            call(record["call"].toString(), crypt, record["input"].toString("in"),
                 record["output"].toString("out"))
                .toString();
        s_isMemoryShort = false;
        for (const QString& line : recorder.takeMessages())
            s_warnings += line.left(line.indexOf(", file"));
        QString report =
            QString("%1|%2|%3").arg(result).arg(crypt.lastError()).arg(s_warnings.join("; "));
        // The versions of Qt word their own warnings differently.
        report.remove(QRegularExpression("Z_[A-Z]+_ERROR: |(?<=qCompress).*"));
        QCOMPARE(report, record["report"].toString());
        const SimpleCrypt::Failure failure = crypt.lastFailure();
        QCOMPARE(failure.path + ": " + failure.systemError, record["failure"].toString(": "));
        QCOMPARE(support::readFile("in"), bytes);
        QCOMPARE(QString(support::readFile("out").toHex()),
                 record["left"].toString("6b657074")); // "kept"
    }

    void keepsTexts()
    {
        SimpleCrypt crypt(1);
        const QString text = QString("caf\u00e9") + QChar(0) + "\U0001f375";
        QCOMPARE(crypt.decryptToString(crypt.encryptToString(text)), text);
        QCOMPARE(crypt.decryptToString(crypt.encryptToByteArray(text)), text);
        QSet<QByteArray> cyphertexts; // with different lead bytes
        for (int i = 0; i < 100; ++i)
            cyphertexts += crypt.encryptToByteArray(text);
        QVERIFY(cyphertexts.size() > 10);
        QCOMPARE(crypt.encryptToByteArray(QByteArray()).size(), 2 + 1 + SHA1_SIZE);
        QVERIFY(crypt.encryptToByteArray(QByteArray(999, 'x')).size() < 99);
    }

    void noticesDamage()
    {
        SimpleCrypt crypt = cryptOf({{"metadata", "backup"}});
        const QByteArray good = crypt.encryptToByteArray(s_text);
        for (int i = 0; i < good.size(); ++i) {
            QVERIFY2(crypt.decryptToByteArray(good.left(i)).isEmpty(), QByteArray::number(i));
            support::writeFile("bad", good.left(i));
            QVERIFY2(!crypt.decryptFileSmart("bad", "text"), QByteArray::number(i));
            for (int bit = 0; bit < 8; ++bit) {
                QByteArray bad = good;
                bad[i] = static_cast<char>(bad[i] ^ 1 << bit);
                const bool isNoticed =
                    crypt.getMetadata(bad) != "backup" || crypt.decryptToByteArray(bad) != s_text;
                crypt.setPlainPayload(false);
                // Three flags are unused.
                QVERIFY2(isNoticed || (i == 1 && bit > 4), QByteArray::number(i));
            }
        }
    }

    void wipesTheKey()
    {
        alignas(SimpleCrypt) static char memory[sizeof(SimpleCrypt)];
        auto* crypt = new (memory) SimpleCrypt(0x0123456789abcdef);
        const QByteArray bytes = QByteArray::fromRawData(memory, sizeof memory);
        QVERIFY(bytes.contains(QByteArray::fromHex("efcdab8967452301")));
        crypt->~SimpleCrypt();
        QVERIFY(!bytes.contains(QByteArray::fromHex("efcdab8967452301")));
    }

    void staysPlainOnceItReadPlain()
    {
        SimpleCrypt reader(0xffffffffffffffff);
        QVERIFY(!reader.decryptToByteArray(golden("plain")).isEmpty());
        QVERIFY(reader.encryptToByteArray(s_text).endsWith(s_text));
    }

    // The sizes are those around the end of a chunk, where encryptFileSmart() loses bytes.
    void streams_data()
    {
        QTest::addColumn<int>("prefix");
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("lost");
        for (const int prefix : {1, 1 + SHA1_SIZE}) {
            // An empty file even loses the prefix.
            const std::pair<int, int> sizes[]{{0, prefix},
                                              {s_chunk - prefix, 0},
                                              {s_chunk, 0},
                                              {s_chunk + 1, 1},
                                              {s_chunk + prefix + 1, 0},
                                              {2 * s_chunk, 0},
                                              {2 * s_chunk + prefix, prefix}};
            for (const auto& [size, lost] : sizes)
                QTest::addRow("%d bytes behind %d", size, prefix) << prefix << size << lost;
        }
    }
    void streams()
    {
        QFETCH(const int, prefix);
        QFETCH(const int, size);
        QFETCH(const int, lost);
        const QByteArray bytes = s_text.repeated(size / s_text.size() + 1).left(size);
        support::writeFile("bytes", bytes);
        SimpleCrypt crypt =
            cryptOf({{"protection", prefix == 1 ? "off" : "sha1"}, {"compression", "smaller"}});
        qint64 done = 0, total = 0;
        const auto progress = [&](qint64 done_B, qint64 total_B) {
            QVERIFY(done_B >= done && done_B <= total_B);
            done = done_B;
            total = total_B;
        };
        QVERIFY(crypt.encryptFileSmart("bytes", "streamed", progress));
        QCOMPARE(total, prefix == 1 ? size : 2 * size);
        crypt.setCompression(SimpleCrypt::CompressionOff);
        const QByteArray complete = crypt.encryptToByteArray(bytes);
        QVERIFY(support::readFile("streamed") == complete.chopped(lost));
        QVERIFY(crypt.encryptFileInChunks("bytes", "text"));
        QVERIFY(support::readFile("text") == complete);

        done = 0;
        const bool isAccepted = lost == 0 || (prefix == 1 && size > 0);
        QCOMPARE(crypt.decryptFileSmart("streamed", "text", progress), isAccepted);
        QVERIFY(support::readFile("text") == bytes.left(size - lost));
        QCOMPARE(crypt.decryptToByteArray(support::readFile("streamed")),
                 isAccepted ? bytes.left(size - lost) : QByteArray());
    }

    void letsOthersWriteThePayload()
    {
        SimpleCrypt crypt = cryptOf({{"metadata", "machine 4711"}, {"plain", true}});
        QByteArray backup = crypt.getHeaderForCompleteBackup();
        const int header_B = backup.size();
        backup += s_text;
        support::writeFile("backup", backup);
        QCOMPARE(crypt.getHeaderLength("backup"), header_B);
        const int offset = crypt.getDataHashOffset("backup");
        QCOMPARE(backup.mid(offset - 1, 1 + SHA1_SIZE), '0' + sha1("not valid hash"));
        support::writeFile("backup", backup.replace(offset, SHA1_SIZE, sha1(s_text)));
        QVERIFY(SimpleCrypt(0).decryptFileSmart("backup", "text"));
        QCOMPARE(support::readFile("text"), s_text);
    }
};

QTEST_GUILESS_MAIN(TestSimpleCrypt)
#include "tst_simplecrypt.moc"
