#include "simplecrypt.h"
#include "support.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <unistd.h>

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

    static QString text() { return s_texts.join('\n'); }

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

    void refuses_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<QString>("warning");
        QTest::addColumn<int>("error");
        const auto row = [](auto name, const QByteArray& data, auto warning, int error) {
            QTest::newRow(name) << data << QString(warning) << error;
        };
        const int unchanged = SimpleCrypt::CryptNoError;
        const int mismatch = SimpleCrypt::CryptIntegrityMismatch;
        const QByteArray rest(60, 'x'), metadata = QByteArray("\4\14", 2);
        row("nothing", "", "Too few bytes", unchanged);
        row("two bytes", "\4\4", "Too few bytes", unchanged);
        row("version 5", "\5" + rest, "Invalid version or not a cyphertext.",
            SimpleCrypt::CryptBadVersion);
        row("no digest", "\4\4x", "", mismatch);
        row("no checksum", "\4\2xx", "", mismatch);
        row("metadata longer", metadata + number(90) + number(~90) + rest,
            "Not enough bytes to remove.", unchanged);
        row("longest metadata", metadata + number(INT_MAX) + number(~INT_MAX) + rest,
            "Not enough bytes to remove.", unchanged);
        row("negative metadata", metadata + number(-1) + number(0) + rest,
            "Not enough bytes to remove.", mismatch);
        row("most negative metadata", metadata + number(INT_MIN) + number(INT_MAX) + rest,
            "Not enough bytes to remove.", mismatch);
        row("other complement", metadata + number(5) + number(5) + rest,
            "Metadata size is corrupted", mismatch);
        row("metadata size cut", metadata + number(5), "Not enough bytes to get metadata size",
            unchanged);
        // A version without metadata: thirty bytes are cut off all the same.
        row("version 3", "\3\14" + rest, "Invalid version or not a cyphertext.", mismatch);
        row("plain, states 2 GiB", QByteArray("\4\x11\0\x7f\xff\xff\xf0", 7) + rest, "Z_DATA_ERROR",
            unchanged);
    }
    void refuses()
    {
        QFETCH(QByteArray, data);
        QFETCH(QString, warning);
        const Warnings warnings;
        SimpleCrypt crypt(7);
        QCOMPARE(crypt.decryptToByteArray(data), QByteArray());
        QTEST(int(crypt.lastError()), "error");
        QVERIFY2(Warnings::text().contains(warning) &&
                     warning.isEmpty() == Warnings::text().isEmpty(),
                 qPrintable(Warnings::text()));
        crypt.getMetadata(data); // these must only survive it
        support::writeFile(file("bad"), data);
        crypt.getHeaderLength(file("bad"));
        QCOMPARE(crypt.getDataHashOffset(file("bad")), 31);
    }

    void needsAKey()
    {
        const Warnings warnings;
        SimpleCrypt crypt;
        QVERIFY(crypt.encryptToString(s_text).isEmpty());
        QCOMPARE(Warnings::text(),
                 "QByteArray SimpleCrypt::encryptToByteArray(const QByteArray&) No key set.");
        crypt.decryptToString(s_text);
        QVERIFY(!crypt.decryptFileSmart("missing", file("text")));
        QCOMPARE(crypt.lastError(), SimpleCrypt::CryptKeyMissing);
        QCOMPARE(Warnings::text().count("No key set."), 3);
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
        QVERIFY(crypt.encryptToByteArray(bytes).startsWith(streamed));

        if (size == 0)
            return;
        const QByteArray kept = bytes.left(written - 2 - (hasHash ? 21 : 1));
        const bool isWhole = kept == bytes;
        QCOMPARE(crypt.decryptFileSmart(file("streamed"), file("text")), isWhole || !hasHash);
        QVERIFY(content("text") == kept);
        QCOMPARE(crypt.decryptToByteArray(streamed), isWhole || !hasHash ? kept : QByteArray());
        QCOMPARE(Warnings::text().contains("hashExpected!=hash.result"), !isWhole && hasHash);
    }

    void refusesFiles()
    {
        const Warnings warnings;
        support::writeFile(file("bytes"), s_text);
        SimpleCrypt crypt(7);
        const auto smart = [&](const QString& in, const QString& out) {
            const bool isDone = crypt.encryptFileSmart(in, out);
            return isDone ? QString() : QString::number(crypt.lastError());
        };
        QCOMPARE(smart(file("missing"), file("bytes")), "6");
        QCOMPARE(smart(file("bytes"), file("bytes")), "6");
        QCOMPARE(smart(file("bytes"), m_dir.path()), "6");
        QCOMPARE(smart(file("bytes"), "/dev/full"), "6");
        QVERIFY(!crypt.encryptFile(file("bytes"), file("bytes")));
        QCOMPARE(content("bytes"), s_text); // a failure has emptied nothing
        crypt.setCompression(SimpleCrypt::CompressionForced);
        QCOMPARE(smart(file("bytes"), file("out")), "4");
        QCOMPARE(content("out"), "");
        crypt.setCompression(SimpleCrypt::CompressionOff);
        crypt.setProtection(SimpleCrypt::ProtectionChecksum);
        QCOMPARE(smart(file("bytes"), file("out")), "5");
        QVERIFY(Warnings::text().contains("The computation of checksum is not allowed."));
        QVERIFY(crypt.encryptFile(file("bytes"), file("out")));
        QCOMPARE(crypt.lastError(), SimpleCrypt::CryptNoError);
        QVERIFY(crypt.decryptFileSmart(file("out"), file("text"))); // hands it over
        QCOMPARE(content("text"), s_text);
        QVERIFY(crypt.decryptFile(file("out"), "/dev/full"));
        QCOMPARE(crypt.lastError(), SimpleCrypt::CryptFileAccess);
        SimpleCrypt fresh(7);
        support::writeFile(file("out"), fresh.encryptToByteArray(QByteArray()));
        QVERIFY(!fresh.decryptFileSmart(file("out"), file("text"))); // shorter than thirty bytes
        QVERIFY(Warnings::text().endsWith("Too few bytes"));
        QVERIFY(fresh.decryptFileSmart("/proc/self/mem", file("text")) == false);
        QCOMPARE(fresh.lastError(), SimpleCrypt::CryptFileAccess);
    }

    void readsHeaders()
    {
        const Warnings warnings;
        SimpleCrypt crypt(7);
        const auto query = [&](const QByteArray& data) {
            support::writeFile(file("header"), data);
            return QString("%1 %2 %3")
                .arg(crypt.getHeaderLength(file("header")))
                .arg(crypt.getDataHashOffset(file("header")))
                .arg(crypt.getMetadataFromFile(file("header")));
        };
        QCOMPARE(query(crypt.encryptToByteArray(s_text)), "23 31 ");
        crypt.setMetadata("12345");
        QCOMPARE(query(crypt.encryptToByteArray(s_text)), "56 36 12345");
        QCOMPARE(query(crypt.encryptToByteArray(s_text).left(34)), "-1 31 ");
        crypt.setMetadata("caf\u00e9"); // UTF-8 when written, Latin-1 when read
        QCOMPARE(query(crypt.encryptToByteArray(s_text)), "56 36 caf\u00c3\u00a9");
        QCOMPARE(query("x"), "-1 31 ");
        QCOMPARE(crypt.getHeaderLength(file("missing")), -1);
        QVERIFY(crypt.getMetadataFromFile(file("missing")).isEmpty());
        QCOMPARE(crypt.lastError(), SimpleCrypt::CryptFileAccess);
        QVERIFY(Warnings::text().endsWith("metadata hash check is not valid"));
    }

    void letsOthersWriteThePayload()
    {
        SimpleCrypt crypt(7);
        crypt.setMetadata("machine 4711");
        crypt.setPlainPayload(true);
        const QByteArray header = crypt.getHeaderForCompleteBackup();
        support::writeFile(file("backup"), header + s_text);
        QCOMPARE(crypt.getHeaderLength(file("backup")), header.size());
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
