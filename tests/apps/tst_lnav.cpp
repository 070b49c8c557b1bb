#include "machinelogs.h"
#include "shell.h"

#include <QDateTime>
#include <QStandardPaths>

/// The format file for lnav, read by the real lnav from files that the library has written.
class TestLnav : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsTimesAndLevels()
    {
        const MachineLogs logs;
        QStringList texts;
        const std::vector<std::pair<LogLevel::Level, QString>> lines{
            {LogLevel::Debug, "zel_log,debug"},      {LogLevel::Event, "zel_event,notice"},
            {LogLevel::Info, "zel_log,info"},        {LogLevel::Capsule, "zel_capsule,info"},
            {LogLevel::Warning, "zel_log,warning"},  {LogLevel::Grinder, "zel_grinder,info"},
            {LogLevel::Error, "zel_log,error"},      {LogLevel::M4, "zel_m4,info"},
            {LogLevel::Critical, "zel_log,critical"}};
        QString expected = "log_time,log_format,log_level,log_body\n";
        for (const auto& [level, answer] : lines) {
            MachineLogs::write(level, "text | " + answer);
            QTest::qWait(2); // so that lnav sorts the lines in this order
            const QString written =
                runInShell("tail -qn 1 */*.log | grep '" + answer + "$'", MachineLogs::folder());
            const auto time = QDateTime::fromString(written.left(23), "dd/MM/yyyy hh:mm:ss:zzz");
            expected += time.toString("yyyy-MM-dd hh:mm:ss.zzz,") + answer +
                        QString(",\"text | %1\"\n").arg(answer);
        }
        const QTemporaryDir home;
        const QString command =
            QString("export HOME=%1; lnav -i %2 >/dev/null 2>&1 && lnav -C && lnav -n -c ';SELECT "
                    "log_time, log_format, log_level, log_body FROM all_logs' "
                    "-c ':write-csv-to -' */*.log")
                .arg(home.path(), LNAV_FORMAT);
        QCOMPARE(runInShell(command, MachineLogs::folder()), expected);
    }
};

int main(int argc, char* argv[])
{
    if (QStandardPaths::findExecutable("lnav").isEmpty())
        return 77; // ctest counts the test as skipped
    const QCoreApplication application(argc, argv);
    TestLnav test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_lnav.moc"
