#include "envvar/envvars.h"
#include "envvar/envvarstore.h"
#include <zeltools/platform.h>

#include <QProcess>
#include <QtTest>

using namespace zeltools::envvar;

class TestEnvVars : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isComplete()
    {
        QMap<int, int> types, categories, flags;
        QStringList defined;
        const QVector<EnvVar*> vars = EnvVarStore::instance().vars();
        for (const EnvVar* var : vars) {
            ++types[var->type()];
            ++categories[var->category()];
            ++flags[int(var->flags())];
            if (var->stringValueOpt(EnvVar::Defines))
                defined << var->name();
        }
        QCOMPARE(types.values(), QList<int>({82, 14}));
        QCOMPARE(flags.values(), QList<int>({11, 15, 2, 14, 2, 1, 5, 46}));
        QCOMPARE(categories.values(),
                 QList<int>({20, 6, 11, 12, 1, 1, 5, 2, 5, 4, 1, 3, 5, 6, 4, 1, 2, 2, 1, 3, 1}));
        QCOMPARE(vars.at(48), &EnvVars::NoPaymentVisible);
        QStringList expected = {"PLATFORM_DESKTOP", "OS_WINDOWS"};
        if (platform::isBoard)
            expected = QStringList{"PLATFORM_BOARD", "OS_LINUX"};
        QCOMPARE(defined, expected + QStringList({"ENCRYPTED_CONFIG", "ENCRYPTED_MACHINE",
                                                  ZELTOOLS_MODEL_SWITCH}));
    }

    void aMalformedEnvironmentEndsTheProgram()
    {
        QProcess program;
        program.start("env", {"CUPSENSOR_SIMULATION=yes", QCoreApplication::applicationFilePath(),
                              "-functions"});
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitStatus(), QProcess::CrashExit);
        const QByteArray said = program.readAllStandardError();
        QVERIFY2(said.contains("Invalid value yes for variable CUPSENSOR_SIMULATION\n"), said);
    }
};

QTEST_GUILESS_MAIN(TestEnvVars)
#include "tst_envvars.moc"
