#include "envvar/envvarint.h"
#include "envvar/envvars.h"
#include "envvar/envvarstore.h"
#include "support.h"
#include <zeltools/platform.h>

#include <QtTest>

#include <thread>

#include <sys/stat.h>
#include <unistd.h>

using namespace zeltools::envvar;

/// A variable that leaves the store at the end of its life.
template <typename Variable = EnvVarBool>
struct Scoped : Variable
{
    explicit Scoped(const char* n, const char* v = nullptr)
        : Variable(n, "", Test, {}, v)
    {
    }
    ~Scoped() override { EnvVarStore::instance().removeEnvVar(this); }
};

class TestEnvVar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesTheDefinesOfTheBuild()
    {
        QStringList defined;
        for (const EnvVar* var : m_store.vars()) {
            if (var->stringValueOpt(EnvVar::Defines))
                defined << var->name();
        }
        QCOMPARE(m_store.vars().at(48), &EnvVars::NoPaymentVisible);
        QStringList expected = {"PLATFORM_DESKTOP", "OS_WINDOWS"};
        if (platform::isBoard)
            expected = QStringList{"PLATFORM_BOARD", "OS_LINUX"};
        QCOMPARE(defined, expected + QStringList({"ENCRYPTED_CONFIG", "ENCRYPTED_MACHINE",
                                                  ZELTOOLS_MODEL_SWITCH}));
    }

    void theEnvironmentWinsOverTheBuild()
    {
        qputenv("A", "0");
        Scoped a("A", "1");
        QCOMPARE(a.toString(3), "A   (set from env)    : 0");
        qunsetenv("A"); // an update forgets a value that is gone
        a.update("1");
        QVERIFY(a());
        QCOMPARE(a.toString(0), "A (set from defines): 1");
        a.update("A"); // an undefined symbol stands for its name
        QCOMPARE(a.toString(3), "A   unset ");
        a.enableIfUnset();
        QVERIFY(a());
        a.set(false);
        a.enableIfUnset();
        QVERIFY(!a());
    }

    void acceptsAndRefuses()
    {
        Scoped boolean("A", "1");
        Scoped<EnvVarInt> integer("B");
        for (const char* value : {"1", "0", "01", " 1", "+7", "-5", "2147483647"}) {
            QCOMPARE(boolean.isStringValueValid(value), qstrlen(value) == 1);
            integer.setStringValueOpt(EnvVar::Env, QString(value));
            QCOMPARE(integer(), atoi(value));
        }
        for (const char* value : {"true", "", "0x10", "1.5", "2147483648"})
            QVERIFY(!boolean.isStringValueValid(value) && !integer.isStringValueValid(value));

        QVERIFY(support::throws<Refusal>(
            [&] { boolean.setStringValueOpt(EnvVar::Env, QString("yes")); }));
        QVERIFY(boolean() && !boolean.stringValueOpt(EnvVar::Env));
        QVERIFY(support::throws<Refusal>([&] { Scoped("C", "yes"); }));
        Scoped<EnvVarString> c("C"); // a failed construction leaves the name free
        QVERIFY(support::throws<Refusal>([&] { Scoped("C"); }));
        QVERIFY(m_store.findEnvVar("C") == &c && m_store.findEnvVar("C", Boolean) == nullptr);
        c.set("");
        QVERIFY(c.stringValueOpt()); // empty is not the same as not set
    }

    void announcesEveryCall()
    {
        Scoped<EnvVarInt> a("A");
        QVector<int> seen;
        connect(&a, &EnvVar::changed, this, [&] { seen.append(a()); });
        a.set(-3);
        a.set(-3);
        a.setFlag(Visible, false);
        a.update(nullptr);
        QCOMPARE(seen, QVector<int>({-3, -3, -3, -3, 0}));
    }

    void isReadFromAnyThreadWhileItIsWritten()
    {
        Scoped a("A");
        std::thread reader([&] {
            while (!a())
                std::this_thread::yield();
        });
        a.set(true);
        reader.join();
    }

    void loads()
    {
        Scoped on("LOADED_A");
        Scoped off("LOADED_B", "1");
        support::writeFile(m_path, "# switches\nLOADED_B=0\nNOTE=b\u00e0r\nLOADED_A\n\n");
        QVERIFY(m_store.load(m_path) && on() && !off());
        QCOMPARE(qgetenv("LOADED_A") + qgetenv("NOTE"), QByteArray("1b\u00e0r"));

        support::writeFile(m_path, "NOTE=1\nLOADED_B=yes\nLOADED_A=0\n"); // stops at B
        QVERIFY(support::throws<Refusal>([&] { m_store.load(m_path); }));
        QVERIFY(!on() && !off());
        QCOMPARE(qgetenv("LOADED_B") + qgetenv("NOTE"), QByteArray("yesb\u00e0r"));
        QVERIFY(!m_store.load("/missing") && !m_store.load("/"));
    }

    void savesInPlaceWhereTheFolderTakesNoSecondFile()
    {
        support::writeFile(m_path, "old");
        QVERIFY(chmod(qPrintable(m_path), 0666) == 0 && QFile::link(m_path, m_path + "link"));
        QVERIFY(chmod(qPrintable(m_folder.path()), 0555) == 0);
        if (seteuid(getuid() == 0 ? 65534 : getuid()) != 0)
            QSKIP("The namespace, such as that of the emulator, has no second user", SkipSingle);
        const bool isSaved = m_store.save(m_path + "link").success;
        QVERIFY(seteuid(getuid()) == 0 && chmod(qPrintable(m_folder.path()), 0700) == 0);
        QVERIFY(isSaved && support::readFile(m_path).isEmpty());
    }

    void savesAndPrints()
    {
        Scoped longer("LONGER_THAN_ALL_OTHERS_SO_THAT_IT_GIVES_THE_WIDTH", "1");
        Scoped b("B");
        b.set(true);
        QVERIFY(m_store.save(m_path).success);
        support::LineRecorder recorder;
        m_store.printEnabledEnvVars();
        QCOMPARE(recorder.takeMessages().last(), "     " + b.toString(longer.name().size()));

        QCOMPARE(m_store.save("/missing/file").message.value(), "File access error");
        QFile old(m_path);
        QVERIFY(old.open(QIODevice::ReadOnly));
        b.set(false);
        QVERIFY(m_store.save(m_path).success);
        QCOMPARE(old.readAll(), QByteArray("B=1\n")); // it is replaced, and not overwritten
        m_store.m_preSaveFunction = [] { return SaveResult{false, QString("not now")}; };
        b.set(true);
        QCOMPARE(m_store.save(m_path).message.value(), "not now");
        QCOMPARE(support::readFile(m_path), QByteArray("B=0\n"));
    }

    void linksVariables()
    {
        auto& a = *new Scoped("LINKED_A", "1"); // linked variables must live until the end
        auto& b = *new Scoped("LINKED_B", "1");
        auto& c = *new Scoped("LINKED_C");
        m_store.setVisibleIf(&b, &a);
        m_store.setVisibleIf(&a, &b); // a circle
        support::LineRecorder recorder;
        m_store.makeExclusive({&a, &b});
        m_store.makeExclusive({&b, &c});
        QCOMPARE(recorder.take().size(), 1); // Only the first set has two members that are on.
        QVERIFY(a() && b() && a.flags() == Visible && b.flags() == Visible);
        a.set(true);
        QVERIFY(a() && !b() && a.flags() == Flags() && b.flags() == Visible);
        c.set(true);
        QVERIFY(a() && !b() && c());
        b.set(true);
        QVERIFY(!a() && b() && !c() && a.flags() == Visible && b.flags() == Flags());
    }

private:
    using Refusal = std::invalid_argument;
    EnvVarStore& m_store = EnvVarStore::instance();
    QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath("environment");
};

QTEST_GUILESS_MAIN(TestEnvVar)
#include "tst_envvar.moc"
