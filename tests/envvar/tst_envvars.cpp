#include "envvar/envvars.h"
#include "envvar/envvarstore.h"
#include "platform.h"

#include <QProcess>
#include <QSet>
#include <QtTest>

using namespace zeltools::envvar;

class TestEnvVars : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isComplete()
    {
        QSet<QString> names;
        QMap<int, int> types;
        QMap<int, int> categories;
        QMap<int, int> flags;
        QSet<QString> defined;
        for (const EnvVar* var : m_vars) {
            names.insert(var->name());
            ++types[var->type()];
            ++categories[var->category()];
            ++flags[int(var->flags())];
            if (var->stringValueOpt(EnvVar::Defines))
                defined.insert(var->name());
        }
        QCOMPARE(m_vars.size(), 96);
        QCOMPARE(names.size(), 96);
        QCOMPARE(types.values(), QList<int>({82, 14}));
        QCOMPARE(flags.values(), QList<int>({11, 15, 2, 14, 2, 1, 5, 46}));
        QCOMPARE(categories.values(),
                 QList<int>({20, 6, 11, 12, 1, 1, 5, 2, 5, 4, 1, 3, 5, 6, 4, 1, 2, 2, 1, 3, 1}));
        QCOMPARE(m_vars.at(0), &EnvVars::Debug);
        QCOMPARE(m_vars.at(48), &EnvVars::NoPaymentVisible);
        QCOMPARE(m_vars.at(95), &EnvVars::CapKeysLedsSimulation);
        QCOMPARE(EnvVars::NoPaymentVisible.name(), "HIDE_PAYMENT");
        QVERIFY(EnvVars::VL6180XSimulationDevice.description().contains("bus.\nIf disabled,"));

        QSet<QString> expected{"ENCRYPTED_CONFIG", "ENCRYPTED_MACHINE", ZELTOOLS_MODEL_SWITCH};
        expected += platform::isBoard ? QSet<QString>{"OS_LINUX", "PLATFORM_BOARD"}
                                      : QSet<QString>{"OS_WINDOWS", "PLATFORM_DESKTOP"};
        QCOMPARE(defined, expected);
    }

    void aMalformedEnvironmentEndsTheProgram()
    {
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("CUPSENSOR_SIMULATION", "yes");
        program.setProcessEnvironment(environment);
        program.start(QCoreApplication::applicationFilePath(), {"-functions"});
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitStatus(), QProcess::CrashExit);
        const QByteArray said = program.readAllStandardError();
        QVERIFY2(said.contains("Invalid value yes for variable CUPSENSOR_SIMULATION\n"), said);
    }

private:
    const QVector<EnvVar*> m_vars = EnvVarStore::instance().vars();
};

QTEST_GUILESS_MAIN(TestEnvVars)
#include "tst_envvars.moc"
