#include "envvar/envvarstring.h"
#include "logging/log.h"
#include "support.h"
#include "testvariable.h"

#include <QSignalSpy>
#include <QtTest>

using namespace zeltools::envvar;
using Bool = TestVariable<EnvVarBool>;

class TestEnvVarStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        for (const char* name : {"A", "B", "C", "FOO"})
            qunsetenv(name);
    }

    void registers()
    {
        QSignalSpy spy(&m_store, &EnvVarStore::unregisterEnvVar);
        QString added;
        const auto connection = connect(&m_store, &EnvVarStore::envVarAdded, this,
                                        [&](const EnvVar& var) { added = var.name(); });
        const int count = m_store.vars().size();
        {
            TestVariable<EnvVarString> variable("A");
            QCOMPARE(added, "A");
            QCOMPARE(m_store.vars().last(), &variable);
            QCOMPARE(m_store.findEnvVar("A", String), &variable);
            QCOMPARE(m_store.findEnvVar("A", Boolean), nullptr);
            QCOMPARE(m_store.findEnvVar("a", std::nullopt), nullptr);
            m_store.removeEnvVar(&variable);
            QCOMPARE(m_store.findEnvVar("A"), nullptr);
            m_store.addEnvVar(&variable);
            QCOMPARE(thrownBy([&] { m_store.addEnvVar(&variable); }),
                     "Env var with name A and type String was already added to the store");
        }
        QCOMPARE(spy.count(), 2);
        QCOMPARE(m_store.vars().size(), count);
        QCOMPARE(thrownBy([&] { m_store.throwNotFound("A", Integer); }),
                 "Env var with name A and type Integer was not found in the store");
        disconnect(connection);
    }

    void loadsWhatIsThere()
    {
        Bool a("A");
        Bool b("B", "1");
        const QString path = m_folder.filePath("environment");
        support::writeFile(path, "# switches\nB=0\nFOO=b\u00e0r\nA\n\n");
        support::LineRecorder recorder;
        QVERIFY(m_store.load(path));
        QVERIFY(a() && !b());
        QCOMPARE(qgetenv("FOO"), QByteArray("b\u00e0r"));
        QCOMPARE(qgetenv("A"), QByteArray("1"));
        QCOMPARE(recorder.takeMessages(),
                 QStringList("Loading environment from file \"" + path + '"'));
        a.update(nullptr); // as at the next start with this environment
        QVERIFY(a());
    }

    void loadStopsAtAMalformedValue()
    {
        Bool a("A");
        Bool b("B");
        Bool c("C");
        const QString path = m_folder.filePath("environment");
        support::writeFile(path, "C=1\nB=yes\nA=1\n");
        QCOMPARE(thrownBy([&] { m_store.load(path); }), "Invalid value yes for variable B");
        QVERIFY(a() && !b.stringValueOpt() && !c.stringValueOpt());
        QCOMPARE(qgetenv("B"), QByteArray("yes"));
        QVERIFY(!qEnvironmentVariableIsSet("C"));
    }

    void loadSaysWhatIsMissing()
    {
        support::LineRecorder recorder;
        const QString missing = m_folder.filePath("missing");
        QVERIFY(!m_store.load(missing));
        QVERIFY(!m_store.load(m_folder.path())); // exists, and cannot be opened
        const auto lines = recorder.take();
        QCOMPARE(lines.size(), 4);
        QCOMPARE(lines[0].message,
                 "Environment file \"" + missing + "\" does not exist, using default environment");
        QCOMPARE(lines[0].level, LogLevel::Info);
        QVERIFY(lines[0].modules == Log::Global);
        QCOMPARE(lines[3].message, "bool zeltools::envvar::EnvVarStore::load(const QString&) "
                                   "Failed parsing file \"" +
                                       m_folder.path() + '"');
        QCOMPARE(lines[3].level, LogLevel::Warning);
    }

    void savesWhatTheEnvironmentGave()
    {
        Bool a("A", "1");
        Bool b("B");
        Bool c("C");
        c.set(false);
        b.set(true);
        const QString path = m_folder.filePath("saved");
        const SaveResult done = m_store.save(path);
        QVERIFY(done.success && !done.message);
        QCOMPARE(support::readFile(path), QByteArray("B=1\nC=0\n"));

        const SaveResult failed = m_store.save(m_folder.filePath("missing/file"));
        QVERIFY(!failed.success);
        QCOMPARE(failed.message.value(), "File access error");

        b.set(false);
        const auto kept = std::exchange(m_store.m_preSaveFunction, [] {
            return SaveResult{false, QString("not now")};
        });
        const SaveResult refused = m_store.save(path);
        m_store.m_preSaveFunction = kept;
        QVERIFY(!refused.success);
        QCOMPARE(refused.message.value(), "not now");
        QCOMPARE(support::readFile(path), QByteArray("B=1\nC=0\n"));
    }

    void printsWhatIsInForce()
    {
        support::LineRecorder recorder;
        m_store.printEnabledEnvVars();
        QCOMPARE(recorder.takeMessages().filter("LONGER"), QStringList());
        Bool longer("LONGER_THAN_ALL_OTHERS_SO_THAT_IT_GIVES_THE_WIDTH", "1");
        Bool unset("A");
        Bool b("B");
        b.set(false);
        m_store.printEnabledEnvVars();
        const QStringList lines = recorder.takeMessages();
        QCOMPARE(lines.mid(lines.size() - 2),
                 QStringList({"     " + longer.name() + " (set from defines): 1",
                              "     " + QString("B").leftJustified(longer.name().size()) +
                                  " (set from env)    : 0"}));
    }

    // Linked variables live on, as those of a program do.
    void keepsSetsExclusive()
    {
        auto& a = *new Bool("EXCLUSIVE_A", "1");
        auto& b = *new Bool("EXCLUSIVE_B", "1");
        auto& c = *new Bool("EXCLUSIVE_C");
        support::LineRecorder recorder;
        m_store.makeExclusive({&a, &b});
        m_store.makeExclusive({&b, &c});
        const auto lines = recorder.take();
        QCOMPARE(lines.size(), 1);
        const QString message = "Request to make a set exlusive, but the following variables are "
                                "enabled simultaneously: ";
        QVERIFY(lines[0].message == message + "EXCLUSIVE_A EXCLUSIVE_B" ||
                lines[0].message == message + "EXCLUSIVE_B EXCLUSIVE_A");
        QCOMPARE(lines[0].level, LogLevel::Error);
        QVERIFY(a() && b());

        QSignalSpy spy(&a, &EnvVar::changed);
        a.set(true);
        QVERIFY(a() && !b() && !c());
        c.set(true);
        QVERIFY(a() && !b() && c());
        b.set(true);
        QVERIFY(!a() && b() && !c());
        QCOMPARE(spy.count(), 2); // once by each, though b is in two sets
        b.set(false);
        QVERIFY(!a() && !b() && !c());
        m_store.updateExclusiveVariables();
        QVERIFY(!a() && !b() && !c());
    }

    void visibilityFollows()
    {
        auto& condition = *new Bool("CONDITION");
        auto& variable = *new Bool("FOLLOWER");
        variable.setFlag(Visible, true);
        m_store.setVisibleIf(&variable, &condition);
        QCOMPARE(variable.flags(), Flags());
        QSignalSpy spy(&variable, &EnvVar::changed);
        condition.set(true);
        condition.set(true);
        QCOMPARE(variable.flags(), Flags(Visible));
        QCOMPARE(spy.count(), 2);
        condition.set(false);
        QCOMPARE(variable.flags(), Flags());
    }

    void linksThatLeadBackEnd()
    {
        auto& a = *new Bool("CIRCLE_A");
        auto& b = *new Bool("CIRCLE_B");
        m_store.makeExclusive({&a, &b});
        m_store.setVisibleIf(&a, &b);
        m_store.setVisibleIf(&b, &a);
        m_store.setVisibleIf(&a, &a);
        a.set(true);
        QVERIFY(a() && !b());
        QCOMPARE(b.flags(), Flags(Visible));
        b.set(true);
        QVERIFY(!a() && b());
        QCOMPARE(b.flags(), Flags());
    }

private:
    EnvVarStore& m_store = EnvVarStore::instance();
    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(TestEnvVarStore)
#include "tst_envvarstore.moc"
