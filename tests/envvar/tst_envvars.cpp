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
        for (const EnvVar* var : m_vars) {
            names.insert(var->name());
            ++types[var->type()];
            ++categories[var->category()];
            ++flags[int(var->flags())];
            QVERIFY(!var->description().isEmpty());
        }
        QCOMPARE(m_vars.size(), 96);
        QCOMPARE(names.size(), 96);
        QCOMPARE(types, (QMap<int, int>{{Boolean, 82}, {String, 14}}));
        QCOMPARE(flags, (QMap<int, int>{
                            {0, 11}, {1, 15}, {2, 2}, {3, 14}, {4, 2}, {5, 1}, {6, 5}, {7, 46}}));
        QCOMPARE(categories,
                 (QMap<int, int>{{0, 20}, {1, 6},  {2, 11}, {3, 12}, {4, 1},  {5, 1},  {6, 5},
                                 {7, 2},  {8, 5},  {9, 4},  {10, 1}, {11, 3}, {12, 5}, {13, 6},
                                 {14, 4}, {15, 1}, {16, 2}, {17, 2}, {18, 1}, {20, 3}, {21, 1}}));
    }

    void isInOrder_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<EnvVar*>("object");
        QTest::addColumn<QString>("name");
        const auto row = [](int number, EnvVar& object, const char* name) {
            QTest::newRow(name) << number << &object << name;
        };
        row(1, EnvVars::Debug, "ZEL_DEBUG_MODE");
        row(14, EnvVars::ModelVivo, "MODEL_VIVO");
        row(48, EnvVars::VL6180XSimulationDevice, "VL6180X_SIMULATION_DEVICE");
        row(49, EnvVars::NoPaymentVisible, "HIDE_PAYMENT");
        row(68, EnvVars::ErsProtocolMasterInterface, "ERS_PROTOCOL_MASTER_IFACE_PATH");
        row(96, EnvVars::CapKeysLedsSimulation, "CAPKEYS_LEDS_SIMULATION");
    }
    void isInOrder()
    {
        QFETCH(int, number);
        QFETCH(EnvVar*, object);
        QTEST(object->name(), "name");
        QCOMPARE(m_vars.at(number - 1), object);
        QCOMPARE(EnvVarStore::instance().findEnvVar(object->name()), object);
    }

    void oddRowsStay()
    {
        QVERIFY(EnvVars::VL6180XSimulationDevice.description().startsWith(
            "VL6180X simulation on PC via I2C bus.\nIf disabled,"));
        QVERIFY(EnvVars::PaymentSimulationCashless1Model.description().endsWith("/OPC"));
        QCOMPARE(EnvVars::CanBusDisableNewManagement.description(),
                 EnvVars::CanBusDisableNewSnackAndFoodManagement.description());
        QCOMPARE(EnvVars::EvadtsUartInterfacePath.category(), Test);
        QCOMPARE(EnvVars::EvadtsUartInterfacePath.flags(), Flags());
    }

    void theBuildGivesItsOwnValues()
    {
        QStringList expected{"ENCRYPTED_CONFIG", "ENCRYPTED_MACHINE", ZELTOOLS_MODEL_SWITCH};
        if constexpr (platform::isBoard)
            expected += {"OS_LINUX", "PLATFORM_BOARD"};
        else
            expected += {"OS_WINDOWS", "PLATFORM_DESKTOP"};
        QStringList defined;
        for (const EnvVar* var : m_vars) {
            if (const auto value = var->stringValueOpt(EnvVar::Defines)) {
                QCOMPARE(*value, "1");
                defined.append(var->name());
            }
        }
        expected.sort();
        defined.sort();
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
        QCOMPARE(program.readAllStandardOutput(), QByteArray());
    }

private:
    const QVector<EnvVar*> m_vars = EnvVarStore::instance().vars();
};

QTEST_GUILESS_MAIN(TestEnvVars)
#include "tst_envvars.moc"
