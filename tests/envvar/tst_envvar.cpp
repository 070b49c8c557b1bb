#include "envvar/envvarint.h"
#include "envvar/envvarstring.h"
#include "support.h"
#include "testvariable.h"

#include <QSignalSpy>
#include <QtTest>

#include <thread>

using namespace zeltools::envvar;
using support::EnvironmentGuard;
using Bool = TestVariable<EnvVarBool>;
using Int = TestVariable<EnvVarInt>;
using String_ = TestVariable<EnvVarString>;

class TestEnvVar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { qunsetenv("SWITCH"); }

    void sources_data()
    {
        QTest::addColumn<QByteArray>("define");
        QTest::addColumn<QByteArray>("environment");
        QTest::addColumn<bool>("isOn");
        QTest::addColumn<QString>("line");
        const QByteArray none;
        QTest::newRow("the build alone")
            << QByteArray("1") << none << true << "SWITCH   (set from defines): 1";
        QTest::newRow("the environment alone")
            << none << QByteArray("1") << true << "SWITCH   (set from env)    : 1";
        QTest::newRow("the environment wins")
            << QByteArray("1") << QByteArray("0") << false << "SWITCH   (set from env)    : 0";
        QTest::newRow("a symbol that is not defined stands for its name")
            << QByteArray("SWITCH") << none << false << "SWITCH   unset ";
        QTest::newRow("neither") << none << none << false << "SWITCH   unset ";
    }
    void sources()
    {
        QFETCH(QByteArray, define);
        QFETCH(QByteArray, environment);
        QFETCH(bool, isOn);
        if (!environment.isNull())
            qputenv("SWITCH", environment);
        Bool variable("SWITCH", define.isNull() ? nullptr : define.constData());
        QCOMPARE(variable(), isOn);
        QTEST(variable.toString(8), "line");
        QVERIFY(variable.toString(2).startsWith("SWITCH "));

        // Both are read again; what is no longer there is forgotten.
        qunsetenv("SWITCH");
        variable.update("0");
        QVERIFY(!variable() && !variable.stringValueOpt(EnvVar::Env));
        QCOMPARE(variable.stringValueOpt().value(), "0");
    }

    void accepts_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("asBool");
        QTest::addColumn<bool>("asInt");
        QTest::newRow("1") << "1" << true << true;
        QTest::newRow("0") << "0" << true << true;
        QTest::newRow("a word") << "true" << false << false;
        QTest::newRow("empty") << "" << false << false;
        QTest::newRow("null") << QString() << false << false;
        QTest::newRow("blank before") << " 1" << false << true;
        QTest::newRow("two digits") << "01" << false << true;
        QTest::newRow("a plus sign") << "+7" << false << true;
        QTest::newRow("a minus sign") << "-5" << false << true;
        QTest::newRow("hexadecimal") << "0x10" << false << false;
        QTest::newRow("a fraction") << "1.5" << false << false;
        QTest::newRow("the largest") << "2147483647" << false << true;
        QTest::newRow("too large") << "2147483648" << false << false;
    }
    void accepts()
    {
        QFETCH(QString, value);
        QFETCH(bool, asBool);
        QFETCH(bool, asInt);
        Bool boolean("SWITCH");
        QCOMPARE(boolean.isStringValueValid(value), asBool);
        Int integer("NUMBER");
        QCOMPARE(integer.isStringValueValid(value), asInt);
        if (asInt) {
            integer.setStringValueOpt(EnvVar::Env, value);
            QCOMPARE(integer(), value.toInt());
        }
        String_ text("TEXT");
        text.set(value);
        QCOMPARE(text(), value);
        QCOMPARE(text.toString(4), "TEXT (set from env)    : " + value);
    }

    void refuses()
    {
        const QString message = QStringLiteral("Invalid value y\u00e8s for variable SWITCH");
        const auto construct = [] { Bool variable("SWITCH"); };
        Bool other("OTHER", "1");
        QSignalSpy spy(&other, &EnvVar::changed);
        QCOMPARE(thrownBy([&] { other.setStringValueOpt(EnvVar::Env, QString("yes")); }),
                 "Invalid value yes for variable OTHER");
        QVERIFY(other() && spy.isEmpty() && !other.stringValueOpt(EnvVar::Env));
        {
            const EnvironmentGuard guard("SWITCH", "y\u00e8s");
            QCOMPARE(thrownBy(construct), message);
            QCOMPARE(thrownBy([] { Int variable("SWITCH"); }), message);
        }
        {
            const EnvironmentGuard guard("SWITCH", ""); // empty is not the same as not set
            QCOMPARE(thrownBy(construct), "Invalid value  for variable SWITCH");
        }
        QCOMPARE(thrownBy([] { Bool variable("SWITCH", ""); }),
                 "Invalid value  for variable SWITCH");
        // What was never constructed is not in the store either.
        QCOMPARE(EnvVarStore::instance().findEnvVar("SWITCH"), nullptr);
        QCOMPARE(thrownBy(construct), "nothing was thrown");
    }

    void aNameIsTakenOnce()
    {
        const Bool variable("SWITCH");
        const auto message = [](const char* type) {
            return QString("Env var with name SWITCH and type %1 was already added to the store")
                .arg(type);
        };
        QCOMPARE(thrownBy([] { Bool again("SWITCH"); }), message("Boolean"));
        QCOMPARE(thrownBy([] { Int again("SWITCH"); }), message("Integer"));
        QCOMPARE(thrownBy([] { String_ again("SWITCH"); }), message("String"));
        QCOMPARE(EnvVarStore::instance().findEnvVar("SWITCH"), &variable);
    }

    void announcesEveryCall()
    {
        Int variable("NUMBER");
        QCOMPARE(variable(), 0);
        QSignalSpy spy(&variable, &EnvVar::changed);
        connect(&variable, &EnvVar::changed, this, [&] { m_seen = variable(); });
        variable.set(-3);
        QCOMPARE(m_seen, -3); // the new value is there when the signal comes
        QCOMPARE(variable.stringValueOpt(EnvVar::Env).value(), "-3");
        variable.set(-3);
        variable.setFlag(Visible, true);
        variable.setFlag(Visible, true);
        QCOMPARE(spy.count(), 4);
        QCOMPARE(variable.flags(), Flags(Visible));
        variable.setFlag(Visible, false);
        QCOMPARE(variable.flags(), Flags());
        variable.update(nullptr);
        QCOMPARE(spy.count(), 7);
    }

    void enablesOnlyWhatIsUnset()
    {
        Bool unset("UNSET");
        unset.conditionallyEnableIfUnset(false);
        QVERIFY(!unset.stringValueOpt());
        unset.enableIfUnset();
        QVERIFY(unset());
        unset.set(false);
        unset.enableIfUnset();
        QVERIFY(!unset());
        Bool definedOff("DEFINED_OFF", "0");
        definedOff.enableIfUnset();
        QVERIFY(!definedOff());
    }

    void isReadFromAnyThreadWhileItIsWritten()
    {
        Bool variable("SWITCH");
        std::atomic<bool> isOver{false};
        std::atomic<int> seenOn{0};
        std::thread reader([&] {
            while (!isOver)
                seenOn += variable();
        });
        for (int i = 0; i < 2000 || seenOn == 0; ++i)
            variable.set(i % 2 == 0);
        isOver = true;
        reader.join();
    }

private:
    int m_seen = 0;
};

QTEST_GUILESS_MAIN(TestEnvVar)
#include "tst_envvar.moc"
