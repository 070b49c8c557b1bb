#include "logging/logline_p.h"
#include "logging/logrenderer.h"
#include "logging/logtimestamp.h"
#include "support.h"

#include <QtTest>

class TestLogRenderer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lines_data()
    {
        QTest::addColumn<int>("level");
        QTest::addColumn<QString>("afterTime");
        QTest::newRow("debug") << int(LogLevel::Debug) << "| Debug    | x";
        QTest::newRow("critical") << int(LogLevel::Critical) << "| Critical | x";
        QTest::newRow("event") << int(LogLevel::Event) << "|x";
        QTest::newRow("grinder") << int(LogLevel::Grinder) << "|x";
        QTest::newRow("capsule") << int(LogLevel::Capsule) << "|x";
        QTest::newRow("M4 is not padded") << int(LogLevel::M4) << "| M4 | x";
        QTest::newRow("an unknown level is empty") << 9 << "|  | x";
    }
    void lines()
    {
        QFETCH(int, level);
        QFETCH(QString, afterTime);
        const auto value = static_cast<LogLevel::Level>(level);
        const QString format = "dd/MM/yyyy hh:mm:ss:zzz";
        const QDateTime before = QDateTime::currentDateTime();
        const QString line = LogRenderer::formattedMessage(value, "x");
        const QDateTime time = QDateTime::fromString(line.left(23), format);
        QVERIFY2(before <= time && time <= QDateTime::currentDateTime(), qPrintable(line));
        QCOMPARE(line.mid(23), afterTime);
        QCOMPARE(LogRenderer::pattern(value).mid(23), afterTime.chopped(1));
        const LogLine bytes(value, "x");
        QCOMPARE(QByteArray(bytes.data(), bytes.size()).mid(23), afterTime.toUtf8() + '\n');
    }

    void lettersBeyondAsciiAreEncoded()
    {
        const QString text = "caff\u00e8 \u2615 " + QString(600, 'x');
        const LogLine line(text);
        QCOMPARE(QByteArray(line.data(), line.size()), text.toLocal8Bit() + '\n');
    }

    void eventTexts()
    {
        using E = LogEventModule;
        QCOMPARE(LogRenderer::eventToString(E::UpdateEvent), "UpdateUpdateEvent");
        QCOMPARE(LogRenderer::eventToString(E::AllEvents), "ALL");
        QCOMPARE(LogRenderer::eventToString(static_cast<E::EventModule>(3)), "Undefined");
        QCOMPARE(LogRenderer::eventToString(E::WasteLevel | E::NoneEvent), "NONE,WasteLevel");
    }

    // The moments around a change of second, day and summer time, forwards and back again, in zones
    // with whole, odd and changing offsets.
    void timestamps_data()
    {
        QTest::addColumn<QByteArray>("zone");
        for (const char* zone : {"UTC", "Europe/Rome", "Asia/Kathmandu", "America/St_Johns",
                                 "Australia/Lord_Howe", "Pacific/Apia", ""})
            QTest::newRow(zone) << QByteArray(zone);
    }
    void timestamps()
    {
        QFETCH(QByteArray, zone);
        const support::EnvironmentGuard guard("TZ", zone);
        for (const char* text :
             {"1970-01-02T00:00:00Z", "2024-02-29T00:00:00Z", "2026-03-29T01:00:00Z",
              "2026-10-25T01:00:00Z", "2026-04-04T15:00:00Z", "2026-12-31T23:00:00Z",
              "2011-12-30T10:00:00Z", "2026-11-21T18:15:00Z"}) {
            const qint64 change =
                QDateTime::fromString(QLatin1String(text), Qt::ISODate).toMSecsSinceEpoch();
            for (qint64 offset : {-3600000, -1000, -1, 0, 1, 999, 1000, 1001, 3600000, 0, -1}) {
                const qint64 moment = change + offset;
                QCOMPARE(
                    QString(logTimestamp(moment)),
                    QDateTime::fromMSecsSinceEpoch(moment).toString("dd/MM/yyyy hh:mm:ss:zzz"));
            }
        }
    }

    void aChangedZoneShowsAtOnce()
    {
        const qint64 moment = 1790000000000;
        const support::EnvironmentGuard rome("TZ", "Europe/Rome");
        const QString inRome = logTimestamp(moment);
        const support::EnvironmentGuard tokyo("TZ", "Asia/Tokyo");
        logTimestamp(moment + 1);
        QCOMPARE(QString(logTimestamp(moment)).mid(11, 2).toInt(),
                 (inRome.mid(11, 2).toInt() + 7) % 24);
    }
};

QTEST_GUILESS_MAIN(TestLogRenderer)
#include "tst_logrenderer.moc"
