#include "simplecrypt.h"
#include "support.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <dlfcn.h>

static bool s_isMemoryShort = false;

// Stands in front of zlib's own, so that qCompress() finds no memory.
extern "C" Q_DECL_EXPORT int deflateInit_(void* stream, int level, const char* version, int size)
{
    static const auto own =
        reinterpret_cast<decltype(&deflateInit_)>(dlsym(RTLD_NEXT, "deflateInit_"));
    return s_isMemoryShort ? -4 /* Z_MEM_ERROR */ : own(stream, level, version, size);
}

namespace
{

constexpr int s_chunk = 0x100000;
const QByteArray s_text = "Espresso 25 ml, 92.5 degrees";

/// The warnings of the library while it lives.
class Warnings
{
public:
    Warnings()
    {
        s_texts.clear();
        m_kept = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext&, const QString& text) { s_texts += text; });
    }
    ~Warnings() { qInstallMessageHandler(m_kept); }
    Q_DISABLE_COPY(Warnings)

    static QStringList texts() { return s_texts; }

private:
    static inline QStringList s_texts;
    QtMessageHandler m_kept;
};

QByteArray number(int value)
{
    return SimpleCrypt::convertInt32ToQByteArray(value);
}

} // namespace

class TestSimpleCrypt : public QObject
{
    Q_OBJECT

    QString file(const QString& name) const { return m_dir.filePath(name); }
    QByteArray content(const QString& name) const { return support::readFile(file(name)); }

    /// What an operation gives, the error that it leaves (2 is the one before it) and its warnings.
    QString report(const std::function<QString(SimpleCrypt&)>& operation,
                   SimpleCrypt crypt = SimpleCrypt(7))
    {
        const Warnings warnings;
        crypt.getMetadataSize("\5");
        const int before = Warnings::texts().size();
        support::LineRecorder recorder;
        const QString result = operation(crypt);
        QStringList lines = Warnings::texts().mid(before);
        for (const QString& line : recorder.takeMessages())
            lines += line.left(line.indexOf(", file"));
        return QString("%1|%2|%3")
            .arg(result)
            .arg(crypt.lastError())
            .arg(lines.join("; "))
            .remove(QRegularExpression("Z_[A-Z]+_ERROR: ")); // which only Qt 5 writes
    }

    QString decryptSmart(const QString& path, const QString& output = QString(),
                         const SimpleCrypt& crypt = SimpleCrypt(7))
    {
        const QString target = output.isEmpty() ? file("text") : output;
        return report(
            [&](SimpleCrypt& c) { return c.decryptFileSmart(path, target) ? "yes" : "no"; }, crypt);
    }

    QTemporaryDir m_dir;

private Q_SLOTS:
    // The other side's files, which a program in another language has written.
    void writesAndReadsTheFormat()
    {
        const QString folder = QFINDTESTDATA("golden");
        const auto cases =
            QJsonDocument::fromJson(support::readFile(folder + "/cases.json")).array();
        QVERIFY(cases.size() > 10);
        for (const QJsonValue& value : cases) {
            const QJsonObject one = value.toObject();
            const QString path = folder + '/' + one["name"].toString() + ".crypt";
            const QByteArray golden = support::readFile(path);
            const QByteArray text = one["text"].toString().repeated(one["times"].toInt()).toUtf8();
            const QStringList compressions{"smaller", "forced", "off"};
            const QStringList protections{"off", "checksum", "sha1"};
            const auto compression = compressions.indexOf(one["compression"].toString("off"));
            const auto protection = protections.indexOf(one["protection"].toString("sha1"));
            SimpleCrypt crypt(one["key"].toString().toULongLong(nullptr, 16));
            crypt.setCompression(static_cast<SimpleCrypt::CompressionMode>(compression));
            crypt.setProtection(static_cast<SimpleCrypt::ProtectionMode>(protection));
            crypt.setMetadata(one["metadata"].toString());
            crypt.setPlainPayload(one["plain"].toBool());
            crypt.setRandomCharEnabled(false);
            const QByteArray name = path.toUtf8();

            QVERIFY2(crypt.encryptToByteArray(text) == golden, name);
            QVERIFY2(crypt.decryptToByteArray(golden) == text, name);
            QCOMPARE(crypt.lastError(), SimpleCrypt::CryptNoError);
            QCOMPARE(int(crypt.checkedProtection()), int(protection));
            QVERIFY(!crypt.decryptFile("", "") && !crypt.checkedProtection());
            QVERIFY2(crypt.decryptFile(path, file("text")) && content("text") == text, name);
            if (compression == 2 && protection != 1 && !text.isEmpty()) {
                QVERIFY(crypt.encryptFileSmart(file("text"), file("streamed")));
                QVERIFY2(content("streamed") == golden, name);
            }
            if (golden.size() >= 30)
                QVERIFY2(crypt.decryptFileSmart(path, file("text")) && content("text") == text,
                         name);
        }
    }

    void keepsTexts()
    {
        SimpleCrypt crypt(1);
        const QString text = QString("caf\u00e9") + QChar(0) + "\U0001f375";
        QCOMPARE(crypt.decryptToString(crypt.encryptToString(text)), text);
        QCOMPARE(crypt.decryptToString(crypt.encryptToByteArray(text)), text);
        // Within a hundred the lead byte has been another one.
        QSet<QByteArray> cyphertexts;
        for (int i = 0; i < 100; ++i)
            cyphertexts += crypt.encryptToByteArray(text);
        QVERIFY(cyphertexts.size() > 10);
    }

    void noticesDamage()
    {
        SimpleCrypt crypt(7);
        crypt.setMetadata("backup");
        const QByteArray good = crypt.encryptToByteArray(s_text);
        const Warnings warnings;
        for (int i = 0; i < good.size(); ++i) {
            const QByteArray cut = good.left(i);
            QVERIFY2(crypt.decryptToByteArray(cut).isEmpty(), QByteArray::number(i));
            support::writeFile(file("bad"), cut);
            QVERIFY2(!crypt.decryptFileSmart(file("bad"), file("text")), QByteArray::number(i));
            for (int bit = 0; bit < 8; ++bit) {
                QByteArray bad = good;
                bad[i] = static_cast<char>(bad[i] ^ 1 << bit);
                const bool isMetadata = crypt.getMetadata(bad) != "backup";
                const bool isUnused = i == 1 && bit > 4; // of the flags
                const bool isPayload = crypt.decryptToByteArray(bad) != s_text;
                crypt.setPlainPayload(false);
                QVERIFY2(isMetadata || isPayload || isUnused, QByteArray::number(i));
            }
        }
    }

    void refusesBytes()
    {
        const QString signature = "QByteArray SimpleCrypt::decryptToByteArray(const QByteArray&) ";
        const QString few = "|2|" + signature + "Too few bytes";
        const QString remove = "|2|" + signature + "Not enough bytes to remove.";
        const QString negative = "|3|" + signature + "Not enough bytes to remove.";
        const auto decrypt = [this](const QByteArray& data) {
            return report([&](SimpleCrypt& crypt) { return crypt.decryptToByteArray(data); });
        };
        const QByteArray rest(60, 'x'), metadata = QByteArray("\4\14", 2);
        QCOMPARE(decrypt(""), few);
        QCOMPARE(decrypt("\4\4"), few);
        QCOMPARE(decrypt("\5" + rest), "|2|" + signature + "Invalid version or not a cyphertext.");
        QCOMPARE(decrypt("\4\4x"), "|3|");
        QCOMPARE(decrypt("\4\2xx"), "|3|");
        QCOMPARE(decrypt(metadata + number(90) + number(~90) + rest), remove);
        QCOMPARE(decrypt(metadata + number(INT_MAX) + number(~INT_MAX) + rest), remove);
        QCOMPARE(decrypt(metadata + number(-1) + number(0) + rest), negative);
        QCOMPARE(decrypt(metadata + number(INT_MIN) + number(INT_MAX) + rest), negative);
        QCOMPARE(decrypt(metadata + number(5) + number(5) + rest), "|3|Metadata size is corrupted");
        QCOMPARE(decrypt(metadata + number(5)), "|2|Not enough bytes to get metadata size; " +
                                                    signature + "Not enough bytes to remove.");
        // A version without metadata: thirty bytes are cut off all the same.
        QCOMPARE(decrypt("\3\14" + rest),
                 "|3|qint64 SimpleCrypt::getMetadataSize(const QByteArray&) "
                 "Invalid version or not a cyphertext.");
        QCOMPARE(decrypt(QByteArray("\4\x11\0\x7f\xff\xff\xf0", 7) + rest),
                 "|3|qUncompress: Input data is corrupted");
    }

    void refusesMetadata()
    {
        const QString signature = "|2|QString SimpleCrypt::getMetadata(const QByteArray&) ";
        const auto metadata = [this](const QByteArray& data) {
            return report([&](SimpleCrypt& crypt) { return crypt.getMetadata(data); });
        };
        const QByteArray header = QByteArray("\4\14", 2) + number(-1) + number(0);
        QCOMPARE(metadata(header), signature + "not enough bytes to get hash of metadata");
        QCOMPARE(metadata(header + QByteArray(60, 'x')),
                 signature + "metadata hash check is not valid");
        QCOMPARE(
            report([](SimpleCrypt& crypt) { return crypt.getMetadataHeader("").mid(8).toHex(); }),
            "da39a3ee5e6b4b0d3255bfef95601890afd80709|2|"
            "ASSERT failure: Empty string provided ( metadataStr.size()>0 )");
        QCOMPARE(report([](SimpleCrypt& crypt) { return QString::number(crypt.checkVersion("")); }),
                 "0|2|ASSERT failure: Data size to get version is empty ( data.size()>0 )");
    }

    void needsAKey()
    {
        SimpleCrypt none;
        const QString line =
            "|1|QByteArray SimpleCrypt::%1cryptToByteArray(const QByteArray&) No key set.";
        QCOMPARE(report([](SimpleCrypt& crypt) { return crypt.encryptToString(s_text); }, none),
                 line.arg("en"));
        QCOMPARE(report([](SimpleCrypt& crypt) { return crypt.decryptToString(s_text); }, none),
                 line.arg("de"));
        QCOMPARE(
            decryptSmart("missing", "", none),
            "no|1|bool SimpleCrypt::decryptFileSmart(const QString&, const QString&) No key set.");
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
        SimpleCrypt crypt(7);
        crypt.setPlainPayload(true);
        const QByteArray plain = crypt.encryptToByteArray(s_text);
        SimpleCrypt reader(7);
        QCOMPARE(reader.decryptToByteArray(plain), s_text);
        QVERIFY(reader.encryptToByteArray(s_text).endsWith(s_text));
    }

    // The sizes around the end of a chunk, where the streamed form loses bytes.
    void streams_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<bool>("hasHash");
        QTest::addColumn<int>("written");
        for (const bool hasHash : {true, false}) {
            const int prefix = hasHash ? 21 : 1;
            const auto row = [&](int size, int written) {
                QTest::addRow("%d, %d", size, hasHash) << size << hasHash << written;
            };
            row(0, 2);
            for (const int size : {s_chunk - prefix, s_chunk, s_chunk + prefix + 1, 2 * s_chunk})
                row(size, 2 + prefix + size);
            row(s_chunk + 1, 2 + prefix + s_chunk);
            row(2 * s_chunk + prefix, 2 + prefix + 2 * s_chunk);
        }
    }
    void streams()
    {
        QFETCH(int, size);
        QFETCH(int, written);
        QFETCH(bool, hasHash);
        const Warnings warnings;
        QByteArray bytes(size, 'x');
        for (int i = 0; i < size; ++i)
            bytes[i] = static_cast<char>(i ^ i >> 8);
        support::writeFile(file("bytes"), bytes);
        SimpleCrypt crypt(0x0123456789abcdef);
        crypt.setRandomCharEnabled(false);
        if (!hasHash)
            crypt.setProtection(SimpleCrypt::ProtectionOff);
        qint64 done = 0, total = 0;
        const auto progress = [&](qint64 done_B, qint64 total_B) {
            QVERIFY(done_B >= done && done_B <= total_B);
            done = done_B;
            total = total_B;
        };
        QVERIFY(crypt.encryptFileSmart(file("bytes"), file("streamed"), progress));
        QCOMPARE(total, hasHash ? 2 * size : size);
        const QByteArray streamed = content("streamed");
        QCOMPARE(streamed.size(), written);
        crypt.setCompression(SimpleCrypt::CompressionOff);
        const QByteArray complete = crypt.encryptToByteArray(bytes);
        QVERIFY(complete.startsWith(streamed));
        QVERIFY(crypt.encryptFileInChunks(file("bytes"), file("text")));
        QVERIFY(content("text") == complete);

        if (size == 0)
            return;
        const QByteArray kept = bytes.left(written - 2 - (hasHash ? 21 : 1));
        const bool isWhole = kept == bytes;
        QCOMPARE(crypt.decryptFileSmart(file("streamed"), file("text")), isWhole || !hasHash);
        QVERIFY(content("text") == kept);
        QCOMPARE(crypt.decryptToByteArray(streamed), isWhole || !hasHash ? kept : QByteArray());
        const QString why = Warnings::texts().join("; ");
        QCOMPARE(why.contains(") hashExpected!=hash.result \""), !isWhole && hasHash);
    }

    void refusesFiles()
    {
        const QString smart = "bool SimpleCrypt::%1FileSmart(const QString&, const QString&) ";
        support::writeFile(file("bytes"), s_text);
        const auto encrypt = [this](const QString& in, const QString& out, auto compression,
                                    auto protection) {
            SimpleCrypt crypt(7);
            crypt.setCompression(compression);
            crypt.setProtection(protection);
            return report(
                [&](SimpleCrypt& c) { return c.encryptFileSmart(in, out) ? "yes" : "no"; }, crypt);
        };
        const auto smaller = SimpleCrypt::CompressionWhenSmaller;
        const auto sha1 = SimpleCrypt::ProtectionSha1;
        QCOMPARE(encrypt(file("missing"), file("bytes"), smaller, sha1), "no|6|");
        QCOMPARE(encrypt(file("bytes"), file("bytes"), smaller, sha1), "no|6|");
        QCOMPARE(encrypt(file("bytes"), m_dir.path(), smaller, sha1), "no|6|");
        QCOMPARE(encrypt(file("bytes"), "/dev/full", smaller, sha1), "no|6|");
        QCOMPARE(content("bytes"), s_text); // a failure has emptied nothing
        QCOMPARE(encrypt(file("bytes"), file("out"), smaller, sha1), "yes|2|");
        QCOMPARE(encrypt(file("bytes"), file("out"), SimpleCrypt::CompressionForced, sha1),
                 "no|4|");
        QCOMPARE(content("out"), "");
        QCOMPARE(encrypt(file("bytes"), file("out"), smaller, SimpleCrypt::ProtectionChecksum),
                 "no|5|" + smart.arg("encrypt") + "The computation of checksum is not allowed.");

        const auto whole = [this](const QString& in, const QString& out) {
            return report([&](SimpleCrypt& c) { return c.encryptFile(in, out) ? "yes" : "no"; });
        };
        support::writeFile(file("out"), "kept");
        QCOMPARE(whole(file("missing"), file("out")), "no|2|");
        QCOMPARE(whole("/proc/self/mem", file("out")), "no|6|");
        s_isMemoryShort = true;
        QVERIFY(whole(file("bytes"), file("out")).startsWith("no|6|qCompress"));
        s_isMemoryShort = false;
        support::writeFile(file("bad"), QByteArray("\4\x11\0\x7f\xff\xff\xf0", 7) + s_text);
        QCOMPARE(decryptSmart(file("bad"), file("out")),
                 "no|3|qUncompress: Input data is corrupted");
        QCOMPARE(content("out"), "kept");
        SimpleCrypt crypt(7);
        QVERIFY(!crypt.encryptFile(file("bytes"), "/dev/full"));
        QCOMPARE(crypt.lastError(), SimpleCrypt::CryptFileAccess);
        QCOMPARE(crypt.lastFailure().path + ": " + crypt.lastFailure().systemError,
                 "/dev/full: No space left on device");

        QCOMPARE(decryptSmart("/proc/self/mem"), "no|6|" + smart.arg("decrypt") + "Too few bytes");
        support::writeFile(file("out"), crypt.encryptToByteArray(QByteArray()));
        QCOMPARE(decryptSmart(file("out")), "no|6|" + smart.arg("decrypt") + "Too few bytes");
        crypt.setMetadata("metadata"); // behind which nothing follows
        support::writeFile(file("out"), crypt.encryptToByteArray(s_text).left(38));
        const QString report = decryptSmart(file("out"));
        QVERIFY2(
            report.startsWith("no|3|" + smart.arg("decrypt") + "hashExpected!=hash.result \"\""),
            qPrintable(report));
        QVERIFY(report.endsWith("ASSERT failure: Integrity field size not right ( "
                                "randomCharAndIntegrity.size()==SHA1_SIZE+1 )"));
    }

    void readsHeaders()
    {
        const QString length = "-1|2|int SimpleCrypt::getHeaderLength(QString) ";
        const QString metadata = "|2|QString SimpleCrypt::getMetadataFromFile(const QString&) ";
        const auto lengthOf = [this](const QString& name) {
            return report(
                [&](SimpleCrypt& c) { return QString::number(c.getHeaderLength(file(name))); });
        };
        const auto metadataOf = [this](const QString& name) {
            return report([&](SimpleCrypt& c) { return c.getMetadataFromFile(file(name)); });
        };
        const auto put = [this](const QByteArray& data) {
            support::writeFile(file("header"), data);
        };
        SimpleCrypt crypt(7);
        put(crypt.encryptToByteArray(s_text));
        QCOMPARE(lengthOf("header"), "23|2|");
        QCOMPARE(crypt.getDataHashOffset(file("header")), 31);
        QCOMPARE(metadataOf("header"), metadata + "This file has no metadata flag enabled");
        crypt.setMetadata("caf\u00e9"); // UTF-8 when written, Latin-1 when read
        put(crypt.encryptToByteArray(s_text));
        QCOMPARE(lengthOf("header"), "56|2|");
        QCOMPARE(metadataOf("header"), "caf\u00c3\u00a9|2|");
        QCOMPARE(crypt.getDataHashOffset(file("header")), 36);
        put(crypt.encryptToByteArray(s_text).left(34));
        QCOMPARE(lengthOf("header"), "56|2|"); // cut within the metadata
        put(QByteArray("\4\14", 2) + number(71) + number(~71) + QByteArray(60, 'x'));
        QCOMPARE(lengthOf("header"), length + "Metadata size is corrupted");
        put(QByteArray("\4\14", 2) + number(-7) + number(6) + QByteArray(60, 'x'));
        QCOMPARE(lengthOf("header"), length + "Metadata size is corrupted");
        QCOMPARE(metadataOf("header"), metadata + "metadataSize is : -7");
        put("x");
        QCOMPARE(lengthOf("header"), length + "File to small to get metadata");
        QCOMPARE(metadataOf("header"), metadata + "File to small to get metadata");
        QCOMPARE(lengthOf("missing"), QString(length).replace('2', '6') + "could not open file \"" +
                                          file("missing") + '"');
        QCOMPARE(metadataOf("missing"),
                 QString(metadata).replace('2', '6') + "metadata hash check is not valid");
    }

    void letsOthersWriteThePayload()
    {
        SimpleCrypt crypt(7);
        crypt.setMetadata("machine 4711");
        crypt.setPlainPayload(true);
        const QByteArray header = crypt.getHeaderForCompleteBackup();
        support::writeFile(file("backup"), header + s_text);
        QCOMPARE(crypt.getHeaderLength(file("backup")), header.size());
        QCOMPARE(header.at(header.size() - SHA1_SIZE - 1), '0');
        QCOMPARE(header.right(SHA1_SIZE),
                 QCryptographicHash::hash("not valid hash", QCryptographicHash::Sha1));
        QFile backup(file("backup"));
        QVERIFY(backup.open(QIODevice::ReadWrite));
        QVERIFY(backup.seek(crypt.getDataHashOffset(file("backup"))));
        backup.write(QCryptographicHash::hash(s_text, QCryptographicHash::Sha1));
        backup.close();
        SimpleCrypt reader(0);
        QVERIFY(reader.decryptFileSmart(file("backup"), file("text")));
        QCOMPARE(content("text"), s_text);
    }
};

QTEST_GUILESS_MAIN(TestSimpleCrypt)
#include "tst_simplecrypt.moc"
