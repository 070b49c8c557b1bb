#include "envvar/envvarint.h"
#include "envvar/envvarstore.h"
#include "envvar/envvarstring.h"
#include "support.h"

#include <QSignalSpy>
#include <QtTest>

#include <stdexcept>
#include <thread>

using namespace zeltools::envvar;
using support::EnvironmentGuard;

namespace
{

/// A variable that leaves the store when it goes.
template <typename Variable>
struct Scoped : Variable
{
    explicit Scoped(const char* name, const char* definedValue = nullptr)
        : Variable(name, "", Test, {}, definedValue)
    {
    }
    ~Scoped() override { EnvVarStore::instance().removeEnvVar(this); }
};
using Bool = Scoped<EnvVarBool>;
using Int = Scoped<EnvVarInt>;
using Text = Scoped<EnvVarString>;

template <typename Call>
QString thrownBy(Call&& call)
{
    try {
        call();
    } catch (const std::invalid_argument& error) {
        return QString::fromUtf8(error.what());
    }
    return QString();
}

} // namespace

class TestEnvVar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        for (const char* name : {"A", "B", "C", "FOO"})
            qunsetenv(name);
    }

    void sources_data()
    {
        QTest::addColumn<QByteArray>("define");
        QTest::addColumn<QByteArray>("environment");
        QTest::addColumn<QString>("line");
        const auto row = [](const char* name, const char* define, const char* environment,
                            const char* line) {
            QTest::newRow(name) << QByteArray(define) << QByteArray(environment) << line;
        };
        row("the build alone", "1", nullptr, "A   (set from defines): 1");
        row("the environment wins", "1", "0", "A   (set from env)    : 0");
        row("a symbol that is not defined stands for its name", "A", nullptr, "A   unset ");
        row("neither", nullptr, nullptr, "A   unset ");
    }
    void sources()
    {
        QFETCH(QByteArray, define);
        QFETCH(QByteArray, environment);
        if (!environment.isNull())
            qputenv("A", environment);
        Bool variable("A", define.isNull() ? nullptr : define.constData());
        QTEST(variable.toString(3), "line");
        QCOMPARE(variable(), variable.toString(0).endsWith('1'));

        qunsetenv("A"); // both are read again; what is no longer there is forgotten
        variable.update("0");
        QCOMPARE(variable.toString(0), "A (set from defines): 0");
    }

    void accepts()
    {
        const Bool boolean("A");
        Int integer("B");
        Text text("C");
        QCOMPARE(integer(), 0);
        for (const char* value : {"1", "0", "01", " 1", "+7", "-5", "2147483647"}) {
            QCOMPARE(boolean.isStringValueValid(value), qstrlen(value) == 1);
            integer.setStringValueOpt(EnvVar::Env, QString(value));
            QCOMPARE(integer(), atoi(value));
        }
        for (const char* value : {"true", "", "0x10", "1.5", "2147483648"}) {
            QVERIFY(!boolean.isStringValueValid(value) && !integer.isStringValueValid(value));
            text.set(value);
            QCOMPARE(text.toString(0), QString("C (set from env)    : ") + value);
        }
    }

    void refuses()
    {
        Bool b("B", "1");
        QSignalSpy spy(&b, &EnvVar::changed);
        QCOMPARE(thrownBy([&] { b.setStringValueOpt(EnvVar::Env, QString("y\u00e8s")); }),
                 "Invalid value y\u00e8s for variable B");
        QVERIFY(b() && spy.isEmpty() && !b.stringValueOpt(EnvVar::Env));
        {
            const EnvironmentGuard guard("A", ""); // empty is not the same as not set
            QCOMPARE(thrownBy([] { Int a("A"); }), "Invalid value  for variable A");
        }
        QCOMPARE(thrownBy([] { Bool a("A", "yes"); }), "Invalid value yes for variable A");

        Text a("A"); // what could not be constructed has left the name free
        const QString taken = "Env var with name A and type %1 was already added to the store";
        QCOMPARE(thrownBy([] { Bool again("A"); }), taken.arg("Boolean"));
        QCOMPARE(thrownBy([] { Int again("A"); }), taken.arg("Integer"));
        QCOMPARE(thrownBy([&] { m_store.addEnvVar(&a); }), taken.arg("String"));
        QCOMPARE(thrownBy([&] { m_store.throwNotFound("A", Integer); }),
                 "Env var with name A and type Integer was not found in the store");
        QCOMPARE(m_store.findEnvVar("A", String), &a);
        QCOMPARE(m_store.findEnvVar("A", Boolean), nullptr);
        m_store.removeEnvVar(&a);
        QCOMPARE(m_store.findEnvVar("A", std::nullopt), nullptr);
    }

    void announcesEveryCall()
    {
        Int variable("A");
        QVector<int> seen;
        connect(&variable, &EnvVar::changed, this, [&] { seen.append(variable()); });
        variable.set(-3);
        variable.set(-3);
        variable.setFlag(Visible, true);
        variable.setFlag(Visible, true);
        variable.update(nullptr);
        QCOMPARE(seen, QVector<int>({-3, -3, -3, -3, -3, 0}));
    }

    void enablesOnlyWhatIsUnset()
    {
        Bool a("A");
        a.conditionallyEnableIfUnset(false);
        QVERIFY(!a());
        a.enableIfUnset();
        QVERIFY(a());
        a.set(false);
        a.enableIfUnset();
        Bool b("B", "0");
        b.enableIfUnset();
        QVERIFY(!a() && !b());
    }

    void isReadFromAnyThreadWhileItIsWritten()
    {
        Bool variable("A");
        std::atomic<bool> isSeenOn{false};
        std::thread reader([&] {
            while (!variable()) {
            }
            isSeenOn = true;
        });
        for (int i = 0; !isSeenOn; ++i)
            variable.set(i % 2 == 0);
        reader.join();
    }

    void loads()
    {
        Bool a("A");
        Bool b("B", "1");
        Bool c("C");
        const QString path = m_folder.filePath("environment");
        support::LineRecorder recorder;
        support::writeFile(path, "# switches\nB=0\nFOO=b\u00e0r\nA\n\n");
        QVERIFY(m_store.load(path));
        QVERIFY(a() && !b());
        QCOMPARE(qgetenv("A") + qgetenv("FOO"), QByteArray("1b\u00e0r"));

        // Up to the malformed value, which has reached the process environment.
        support::writeFile(path, "C=1\nB=yes\nA=0\n");
        QCOMPARE(thrownBy([&] { m_store.load(path); }), "Invalid value yes for variable B");
        QVERIFY(!a() && !b() && !c());
        QCOMPARE(qgetenv("B") + qgetenv("C"), QByteArray("yes"));

        QVERIFY(!m_store.load(path + '1'));
        QVERIFY(!m_store.load(m_folder.path())); // exists, and cannot be opened
        const QStringList lines = recorder.takeMessages();
        QCOMPARE(lines[1], "Loading environment from file \"" + path + '"');
        QCOMPARE(lines[2],
                 "Environment file \"" + path + "1\" does not exist, using default environment");
        QCOMPARE(lines[5], "bool zeltools::envvar::EnvVarStore::load(const QString&) "
                           "Failed parsing file \"" +
                               m_folder.path() + '"');
    }

    void savesAndPrints()
    {
        Bool longer("LONGER_THAN_ALL_OTHERS_SO_THAT_IT_GIVES_THE_WIDTH", "1");
        Bool b("B");
        Bool a("A");
        b.set(true);
        const QString path = m_folder.filePath("saved");
        QVERIFY(m_store.save(path).success);
        QCOMPARE(support::readFile(path), QByteArray("B=1\n"));
        support::LineRecorder recorder;
        m_store.printEnabledEnvVars();
        const QStringList lines = recorder.takeMessages();
        QCOMPARE(lines.mid(lines.size() - 2),
                 QStringList({"     " + longer.name() + " (set from defines): 1",
                              "     " + QString("B").leftJustified(longer.name().size()) +
                                  " (set from env)    : 1"}));

        QCOMPARE(m_store.save(path + "/missing").message.value(), "File access error");
        const auto kept = std::exchange(m_store.m_preSaveFunction, [] {
            return SaveResult{false, QString("not now")};
        });
        a.set(true);
        QCOMPARE(m_store.save(path).message.value(), "not now");
        m_store.m_preSaveFunction = kept;
        QCOMPARE(support::readFile(path), QByteArray("B=1\n"));
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
        const QString line = recorder.takeMessages().join('|');
        const QString message = "Request to make a set exlusive, but the following variables are "
                                "enabled simultaneously: EXCLUSIVE_%1 EXCLUSIVE_%2";
        QVERIFY2(line == message.arg("A", "B") || line == message.arg("B", "A"), qPrintable(line));
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
        m_store.updateExclusiveVariables();
        QVERIFY(!a() && !b() && !c());
    }

    void visibilityFollowsAlsoInACircle()
    {
        auto& a = *new Bool("CIRCLE_A");
        auto& b = *new Bool("CIRCLE_B");
        b.setFlag(Visible, true);
        m_store.setVisibleIf(&b, &a);
        QCOMPARE(b.flags(), Flags());
        m_store.setVisibleIf(&a, &b);
        m_store.makeExclusive({&a, &b});
        a.set(true);
        QVERIFY(a() && !b() && b.flags() == Visible && a.flags() == Flags());
        b.set(true);
        QVERIFY(!a() && b() && b.flags() == Flags() && a.flags() == Visible);
    }

private:
    EnvVarStore& m_store = EnvVarStore::instance();
    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(TestEnvVar)
#include "tst_envvar.moc"
