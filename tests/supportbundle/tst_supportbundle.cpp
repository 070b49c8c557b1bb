#include "supportbundle/supportbundle.h"

#include "filedescriptor.h"
#include "logging/log.h"
#include "logging/logformatter.h"
#include "logging/logmanager.h"
#include "secretmask.h"
#include "support.h"
#include "support/rows.h"
#include "supportbundle/bundlearchive_p.h"
#include "supportbundle/supportbundlereader.h"

#include <QtTest>

#include <thread>

#include <fcntl.h>
#include <sys/stat.h>

using namespace std::chrono_literals;
using namespace zeltools;
using support::currentRow;
using support::writeFile;

namespace
{

using Members = std::vector<std::pair<const char*, QByteArray>>;

/// Any content of a bundle, forged or not.
void writeArchive(const QString& path, const Members& members)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    BundleArchive archive(BundleArchive::Format::Zstandard, 1, [&](const char* bytes, size_t size) {
        return file.write(bytes, qint64(size)) == qint64(size) ? QString() : file.errorString();
    });
    for (const auto& [name, content] : members)
        QVERIFY(archive.beginMember(name, content.size(), {}) &&
                archive.write(content.constData(), size_t(content.size())));
    QVERIFY(archive.close());
}

QByteArray sha256(const QByteArray& content)
{
    return QCryptographicHash::hash(content, QCryptographicHash::Sha256);
}

/// The members of a bundle with this manifest and a member "a" with the content "x".
Members withManifest(QByteArray json)
{
    json.replace("DIGEST", sha256("x").toHex());
    return {{"a", "x"},
            {"manifest.json", json},
            {"manifest.sha256", sha256(json).toHex() + "  manifest.json\n"}};
}

constexpr auto s_head = R"({"format":"ZelTools support bundle","version":1,"members":)";
constexpr auto s_memberA = R"({"name":"a","size":1,"sha256":"DIGEST"})";

SimpleCrypt cryptOf(const QString& path)
{
    return path.endsWith(".crypt") ? SimpleCrypt(4711) : SimpleCrypt();
}

QString verify(const QString& path)
{
    SupportBundleReader reader(path);
    reader.setCrypt(SimpleCrypt(4711));
    return reader.verify() ? QString() : reader.errorString();
}

} // namespace

class TestSupportBundle : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_dir;
    QString path(const QString& name) const { return m_dir->filePath(name); }
    QStringList outputs() const
    {
        return QDir(m_dir->path()).entryList(QDir::Files | QDir::Hidden);
    }

private Q_SLOTS:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir(m_dir->path()).mkpath("logs/debug/crashes"));
    }

    void otherProgramsReadIt_data()
    {
        support::addRows<std::tuple<const char*>>(
            {{"a.tar.zst"}, {"a.tar.gz"}, {"a.tar.zst.crypt"}});
    }
    void otherProgramsReadIt()
    {
        const QString out = path(std::get<0>(currentRow<std::tuple<const char*>>()));
        const QByteArray odd = QFile::encodeName(path("logs/debug")) + "/caff\xe8.log";
        QFile byBytes;
        QVERIFY(byBytes.open(fopen(odd.constData(), "w"), QIODevice::WriteOnly,
                             QFileDevice::AutoCloseHandle));
        byBytes.write("odd");
        byBytes.close();
        const QVector<int> sizes{0, 1, 511, 512, 1 << 20, (1 << 20) + 1, 9 << 20};
        for (const int size : sizes)
            writeFile(path(QString("logs/debug/%1.log").arg(size)), QByteArray(size, 'x'));
        writeFile(path("logs/debug/crashes/one.report"), "crashed");
        QVERIFY(QFile::link("/etc/passwd", path("logs/debug/link")));

        SupportBundle bundle;
        QVERIFY(bundle.addMachineFolder(m_dir->path()));
        bundle.addFile("linked", path("logs/debug/link")); // named by the host, and so followed
        if (out.endsWith(".crypt"))
            bundle.setCrypt(cryptOf(out));
        QVERIFY2(bundle.create(out), qPrintable(bundle.errorString()));
        QCOMPARE(verify(out), QString());
        QVERIFY(!bundle.manifest().missing.isEmpty());
        QCOMPARE(bundle.manifest().missing.first().name, QByteArray("logs/debug/link"));

        QString plain = out;
        if (out.endsWith(".crypt")) {
            plain.chop(6);
            QVERIFY(cryptOf(out).decryptFileSmart(out, plain));
        }
        QByteArray sums;
        for (const auto& member : bundle.manifest().members)
            sums += member.sha256.toHex() + "  " + member.name + '\n';
        writeFile(path("sums"), sums);
        QProcess shell; // the names are bytes, which QProcess cannot pass
        shell.setWorkingDirectory(m_dir->path());
        shell.setProcessChannelMode(QProcess::ForwardedChannels);
        shell.start("/bin/sh", {"-ec",
                                "mkdir x; cd x; tar -xf $0; sha256sum --quiet -c ../sums;"
                                "diff -r -x link ../logs logs; test -s linked; rm -r ../logs ../x",
                                plain});
        QVERIFY(shell.waitForFinished() && shell.exitCode() == 0);
    }

    void namesAreEscaped()
    {
        const QByteArray name = "a/caff\xc3\xa8 caff\xe8\\\n\xed\xa0\x80.log";
        const QString text = SupportBundleManifest::escaped(name);
        QCOMPARE(text, QString("a/caff\u00e8 caff\\xe8\\x5c\\x0a\\xed\\xa0\\x80.log"));
        QCOMPARE(SupportBundleManifest::unescaped(text), std::optional(name));
        for (const char* const bad : {"\\", "\\x", "\\x1", "\\y61", "\\xg1", "\\x 1"})
            QVERIFY(!SupportBundleManifest::unescaped(bad));
    }

    void secretsAreMasked_data()
    {
        support::addRows<std::tuple<const char*, const char*>>({
            {"WIFI_PASSWORD=a=b\r\nA=1\r\n", "WIFI_PASSWORD=***\r\nA=1\r\n"},
            {"export wifiPassphrase = x", "export wifiPassphrase =***"},
            {"#API_KEY=x", "#API_KEY=***"},
            {"wifikey=x\nPIN=1\nUSER_PIN_2=3", "wifikey=***\nPIN=***\nUSER_PIN_2=***"},
            {"cardPin=1\nDBPASS=2\nmainPukFile=3\nWPA2=4\nMQTT_LOGIN=u:p\nadminAuthorisation=5",
             "cardPin=***\nDBPASS=***\nmainPukFile=***\nWPA2=***\nMQTT_LOGIN=***\n"
             "adminAuthorisation=***"},
            {"KEYBOARD=us\nBYPASSED=1\nSPINNER=2\nAUTHOR=me",
             "KEYBOARD=us\nBYPASSED=1\nSPINNER=2\nAUTHOR=me"},
            {"URL=https://u:p:@q@host/x:1\nDB=a://u:p@ss/w@host b://t@h\n# https://u:p@h",
             "URL=https://***@host/x:1\nDB=a://***@host b://***@h\n# https://***@h"},
            {"HEADER=bearer abc", "HEADER=***"},
            {"DB=user:a;Password:b", "DB=***"},
            {"NOTE=caff\xe8\n\nSECRET", "NOTE=caff\xe8\n\nSECRET"},
        });
    }
    void secretsAreMasked()
    {
        const auto& [text, expected] = currentRow<std::tuple<const char*, const char*>>();
        QCOMPARE(withoutSecrets(text), QByteArray(expected));
    }

    void filesChangeMeanwhile()
    {
        const QByteArray content = QByteArray(30 << 20, 'c');
        writeFile(path("logs/debug/0.log"), content);
        writeFile(path("logs/debug/1.log"), "live");
        writeFile(path("logs/debug/1.log.1"), "former");
        const QString out = path("logs/debug/out.tar.gz"); // is not part of itself
        SupportBundle bundle;
        bundle.addMachineFolder(path("logs"));
        bool isChanged = false;
        connect(&bundle, &SupportBundle::progress, this, [&](qint64 done_B, qint64 total_B) {
            QCOMPARE(total_B, content.size() + 10);
            if (done_B == 0 || std::exchange(isChanged, true))
                return;
            QVERIFY(QFile::resize(path("logs/debug/0.log"), 12 << 20));
            QVERIFY(QFile::remove(path("logs/debug/1.log.1")));
            QVERIFY(QFile::rename(path("logs/debug/1.log"), path("logs/debug/1.log.1")));
            writeFile(path("logs/debug/1.log"), "new");
        });
        QVERIFY(bundle.create(out));
        QCOMPARE(verify(out), QString());
        const auto& members = bundle.manifest().members;
        QVERIFY(members.size() > 3);
        QCOMPARE(members[0].size_B, qint64(content.size()));
        QVERIFY(members[0].padded_B >= 17 << 20 && members[0].padded_B <= 18 << 20);
        QVERIFY(!members[0].fault.isEmpty());
        QCOMPARE(members[1].sha256, sha256("live"));
        QCOMPARE(members[2].sha256, sha256("former"));
        QVERIFY(!members[3].name.startsWith("logs/"));
    }

    void eventLoopGoesOnAndCancels()
    {
        writeFile(path("logs/debug/0.log"), QByteArray(50 << 20, 'c'));
        writeFile(path("out.tar.zst"), "old");
        SupportBundle bundle;
        bundle.addMachineFolder(m_dir->path());
        QSignalSpy finished(&bundle, &SupportBundle::finished);
        const auto cancelling =
            connect(&bundle, &SupportBundle::progress, &bundle, &SupportBundle::cancel);
        bundle.start(path("out.tar.zst"));
        QVERIFY(bundle.isRunning());
        QTRY_COMPARE(finished.size(), 1);
        QVERIFY(!finished.takeFirst().first().toBool() && !bundle.isRunning());
        QVERIFY(bundle.errorString().contains("cancelled"));
        QCOMPARE(support::readFile(path("out.tar.zst")), QByteArray("old"));
        QCOMPARE(outputs(), QStringList("out.tar.zst"));

        disconnect(cancelling);
        bundle.start(path("out.tar.zst"));
        QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, 30000);
        QVERIFY(finished.first().first().toBool());
        QCOMPARE(verify(path("out.tar.zst")), QString());
    }

    void cancelCutsNoCyphertext()
    {
        int ends[2];
        QVERIFY(pipe2(ends, O_CLOEXEC) == 0);
        QByteArray content(2200 << 10, 'x');
        for (char& byte : content)
            byte = char(QRandomGenerator::global()->generate());
        SupportBundle bundle;
        bundle.setCrypt(SimpleCrypt(1));
        bundle.addContent("a", content);
        std::thread stick([&] { // takes nothing until the archive is at its end
            std::this_thread::sleep_for(1s);
            bundle.cancel();
            const FileDescriptor reading(ends[0]);
            char bytes[65536];
            while (read(reading, bytes, sizeof bytes) > 0) {
            }
        });
        const QString error = bundle.write(ends[1], "a.tar.zst.crypt");
        close(ends[1]);
        stick.join();
        QVERIFY2(error.contains("cancelled"), qPrintable(error));
    }

    void thisMachineIsPacked()
    {
        const support::StandardErrorCapture standardError;
        const support::TemporaryLayout layout;
        LogManager::initialize();
        LogManager::instance()->enableLogToFile(true);
        LogFormatter(LogLevel::Warning).log(Log::Global) << "Espresso";
        SupportBundle bundle;
        bundle.addThisMachine();
        QVERIFY2(bundle.create(path("out.tar.zst")), qPrintable(bundle.errorString()));
        QSet<QByteArray> names;
        for (const auto& member : bundle.manifest().members)
            names.insert(member.name);
        QVERIFY(names.contains("losses.json") && names.contains("system/versions.txt"));
        QVERIFY(names.contains("logs/debug/zel_logs.log") &&
                names.contains("logs/events/zel_events.log"));
        LogManager::instance()->finalizeLogFiles();
    }

    void namesAndLevelsAreChecked()
    {
        SupportBundle bundle;
        QVERIFY(!bundle.create(path("out.tar")) && bundle.errorString().contains(".tar.zst"));
        QVERIFY(!bundle.create(path("out.tar.gz.crypt")) && bundle.errorString().contains("key"));
        bundle.setLevel(10);
        QVERIFY(bundle.problemWith("a.tar.zst").isEmpty());
        QVERIFY(!bundle.problemWith("a.tar.gz").isEmpty());
        bundle.setCrypt(SimpleCrypt(1));
        QVERIFY(bundle.problemWith("a.tar.zst").contains(".crypt"));
        QVERIFY(!bundle.addMachineFolder(path("missing")) && outputs().isEmpty());
    }

    void forgedBundlesAreRefused_data()
    {
        const QByteArray head(s_head);
        const QByteArray member(s_memberA);
        support::addRows<std::tuple<const char*, Members, const char*>>({
            {"nothing forged", withManifest(head + '[' + member + "]}"), ""},
            {"parent folder", {{"../a", "x"}}, "name \"../a\""},
            {"parent folder inside", {{"a/../../b", "x"}}, "name"},
            {"absolute", {{"/etc/passwd", "x"}}, "name"},
            {"twice", {{"a", "x"}, {"a", "y"}}, "twice"},
            {"no manifest", {{"a", "x"}}, "cut"},
            {"no digest", {{"a", "x"}, {"manifest.json", "{}"}}, "cut"},
            {"wrong digest", {{"manifest.json", "{}"}, {"manifest.sha256", "x"}}, "damaged"},
            {"large digest",
             {{"manifest.json", "{}"}, {"manifest.sha256", QByteArray(300, 'x')}, {"a", "x"}},
             "damaged"},
            {"many values",
             withManifest(head + "[],\"more\":[" + QByteArray("[0],").repeated(1 << 18) + "0]}"),
             "too many values"},
            {"no JSON", withManifest("x"), "not readable"},
            {"other JSON", withManifest("[1]"), "not a manifest"},
            {"other version", withManifest(QByteArray(s_head).replace(":1,", ":2,") + "[]}"),
             "version"},
            {"member behind", {{"manifest.json", "{}"}, {"a", "x"}}, "goes on"},
            {"one more", withManifest(head + "[]}"), "does not name the member a"},
            {"one less",
             withManifest(head + '[' + member + ',' + QByteArray(member).replace("\"a\"", "\"b\"") +
                          "]}"),
             "lacks the member b"},
            {"named twice", withManifest(head + '[' + member + ',' + member + "]}"),
             "lacks the member a"},
            {"other size", withManifest(head + '[' + QByteArray(member).replace(":1", ":2") + "]}"),
             "damaged"},
            {"endless size",
             withManifest(head + '[' + QByteArray(member).replace(":1", ":1e300") + "]}"),
             "member 1"},
            {"unsafe name",
             withManifest(head + '[' + QByteArray(member).replace("\"a\"", "\"../a\"") + "]}"),
             "member 1"},
        });
    }
    void forgedBundlesAreRefused()
    {
        const auto& [name, members, message] =
            currentRow<std::tuple<const char*, Members, const char*>>();
        writeArchive(path("a.tar.zst"), members);
        const QString found = verify(path("a.tar.zst"));
        QVERIFY2(found.contains(message) && found.isEmpty() == (*message == '\0'),
                 qPrintable(found));
    }

    /// A damaged bundle is refused, unless the damage changes nothing.
    void damageIsFound_data()
    {
        support::addRows<std::tuple<const char*>>({{"a.tar.zst"}, {"a.tar.gz"}});
    }
    void damageIsFound()
    {
        const QString out = path(std::get<0>(currentRow<std::tuple<const char*>>()));
        SupportBundle bundle;
        bundle.addContent("note.txt", "Espresso");
        QVERIFY(bundle.create(out));
        const QByteArray good = support::readFile(out);
        int refused = 0;
        for (int at = 0; at < good.size(); at += 1 + good.size() / 200) {
            QByteArray bad = good;
            bad[at] = char(bad[at] ^ (1 << at % 8));
            writeFile(out, bad);
            SupportBundleReader reader(out);
            if (reader.verify())
                QCOMPARE(reader.manifest().members, bundle.manifest().members);
            else
                ++refused;
            writeFile(out, good.left(at));
            QVERIFY2(!verify(out).isEmpty(), qPrintable(QString::number(at)));
        }
        QVERIFY(refused > 150);
    }
};

QTEST_GUILESS_MAIN(TestSupportBundle)
#include "tst_supportbundle.moc"
