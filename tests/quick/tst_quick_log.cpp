#include "logging/log.h"
#include "logging/logformatter.h"
#include "logging/logmanager.h"
#include "logging/logsink.h"
#include "path.h"
#include "quick/access.h"
#include "quick/eventhistorymodel.h"
#include "quick/library.h"
#include "quick/logfilesmodel.h"
#include "quick/logmodel.h"
#include "quick/logmodulesmodel.h"
#include "quick/lossesmodel.h"

#include "support.h"
#include "support/rows.h"
#include "support/threads.h"

#include <QAbstractItemModelTester>
#include <QElapsedTimer>
#include <QSemaphore>
#include <QSignalSpy>
#include <QtTest>

#include <algorithm>
#include <memory>

using namespace zeltools::quick;

namespace
{

QVariant value(const QAbstractItemModel& model, int row, const char* role)
{
    return model.data(model.index(row, 0), model.roleNames().key(role));
}

QString texts(const QAbstractItemModel& model, const char* role = "text")
{
    QStringList list;
    for (int row = 0; row < model.rowCount(); ++row)
        list.append(value(model, row, role).toString());
    return list.join(' ');
}

bool isReady(const EventHistoryModel& model)
{
    return QTest::qWaitFor([&] { return model.status() == EventHistoryModel::Ready; });
}

void logEvent(const QString& text)
{
    LogFormatter(LogLevel::Event).logEvent(LogEventModule::MenuAccess).noquote() << text;
}

void logLine(LogLevel::Level level, const LogModules& modules, const QString& text)
{
    LogFormatter(level).log(modules).noquote() << text;
}

/// Keeps the writer of buffered delivery from writing.
class Barrier : public LogSink
{
public:
    void write(const LogRecord&) override
    {
        reached.release();
        opened.acquire();
    }

    QSemaphore reached;
    QSemaphore opened;
};

using EventsRow = std::tuple<const char*, int, const char*, const char*, int, int, QString>;
using LinesRow = std::tuple<const char*, int, const char*, const char*, QString>;
using Change = std::tuple<const char*, void (*)()>;

} // namespace

class TestQuickLog : public QObject
{
    Q_OBJECT

private:
    support::TemporaryLayout m_layout;
    const support::StandardErrorCapture m_standardError; // which the test does not print
    LogManager* const m_manager = LogManager::instance();

    void writeEvents(const QByteArray& content)
    {
        support::writeFile(m_manager->filePath(LogManager::Events), content);
    }

private Q_SLOTS:
    void initTestCase()
    {
        LogManager::initialize();
        m_manager->enableLogToFile(true);
        m_manager->enableModuleDebugging(Log::CanBus);
    }
    void cleanup()
    {
        Access::instance()->setLevel(Access::ReadOnly);
        m_manager->deleteEventFile();
        m_manager->deleteLogFile(LogManager::General); // with which models begin
    }

    void aPageOfTheHistory_data()
    {
        const int all = LogManager::AllEvent;
        support::addRows<EventsRow>({
            {"the newest page", all, "", "", 0, 4, "7 6 5 4"},
            {"the last page has the rest", all, "", "", 1, 4, "3 2 1"},
            {"a page after the last is the last", all, "", "", 9, 4, "3 2 1"},
            {"a kind", LogManager::CleaningFilter, "", "", 0, 4, "5 2"},
            {"a number that is not a kind", 99, "", "", 0, 2, "7 6"},
            {"from a day", all, "02/01/2026", "", 0, 9, "7 6 5 4"},
            {"up to a day", all, "", "02/01/2026", 0, 9, "5 4 3 2 1"},
            {"two days and a kind", LogManager::CleaningFilter, "01/01/2026", "01/01/2026", 0, 9,
             "2"},
            {"days in the wrong order", all, "03/01/2026", "01/01/2026", 0, 9, ""},
            {"not a day", all, "31/02/2026", "", 0, 9, "no date"},
            {"rubbish for a day", all, "", "x'; --", 0, 9, "no date"},
        });
    }
    void aPageOfTheHistory()
    {
        const auto& [name, kind, from, to, page, rowsPerPage, expected] =
            support::currentRow<EventsRow>();
        Q_UNUSED(name)
        QByteArray content;
        for (int i = 1; i <= 7; ++i) {
            content += "0" + QByteArray::number((i + 2) / 3 + (i > 5 && i < 7 ? 1 : 0)) +
                       "/01/2026 08:30:00:00" + QByteArray::number(i) + "| " +
                       (i % 3 == 2 ? "CleaningEvent" : "MenuAccess") + "| " +
                       QByteArray::number(i) + "\n";
        }
        writeEvents(content);
        EventHistoryModel model;
        model.setKind(kind);
        model.setFrom(from);
        model.setTo(to);
        model.setRowsPerPage(rowsPerPage);
        model.setPage(page);
        QTRY_VERIFY(model.status() != EventHistoryModel::Loading);
        const bool isRefused = expected == QLatin1String("no date");
        QCOMPARE(model.status() == EventHistoryModel::Failed, isRefused);
        QCOMPARE(model.error().isEmpty(), !isRefused);
        QCOMPARE(texts(model), isRefused ? QString() : expected);
        if (page == 9) {
            QCOMPARE(model.page(), 1);
            QCOMPARE(model.pagesCount(), 2);
            QCOMPARE(value(model, 0, "time").toDateTime(),
                     QDateTime(QDate(2026, 1, 1), QTime(8, 30, 0, 3)));
            QCOMPARE(value(model, 1, "kind").toString(), QStringLiteral("Cleaning"));
        }
    }

    void newEventsMoveTheRowsOfAPage()
    {
        for (const QString text : {"a", "b", "c", "d", "e"})
            logEvent(text);
        EventHistoryModel model;
        const QAbstractItemModelTester tester(&model);
        model.setRowsPerPage(2);
        model.setPage(1);
        QVERIFY(isReady(model));
        QCOMPARE(texts(model), QStringLiteral("c b"));
        const QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
        const QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
        const QSignalSpy counted(&model, &EventHistoryModel::countChanged);
        logEvent("f");
        QTRY_COMPARE(texts(model), QStringLiteral("d c"));
        QCOMPARE(model.pagesCount(), 3);
        QCOMPARE(inserted.count(), 1);
        QCOMPARE(reset.count() + counted.count(), 0);
    }

    void noEventWaitsForAReading()
    {
        writeEvents(QByteArray("01/01/2026 08:30:00:001| MenuAccess| 1\n").repeated(300000));
        std::atomic<bool> isRead = false;
        const support::Threads reader(1, [&](int) {
            m_manager->eventsPage(LogManager::AllEvent, {}, {}, 0, 10);
            isRead = true;
        });
        int events = 0;
        for (; !isRead; ++events)
            logEvent("e");
        QVERIFY2(events > 20, qPrintable(QString::number(events)));
    }

    void theFileChangesUnderTheModel_data()
    {
        support::addRows<Change>({
            {"it rotates",
             [] {
                 for (int i = 0; i < 40; ++i)
                     logEvent(QString(60000, 'x') + QString::number(i));
             }},
            {"the library deletes it", [] { LogManager::instance()->deleteEventFile(); }},
            {"its folder vanishes",
             [] { QDir(Path::instance()->eventLogsDir).removeRecursively(); }},
        });
    }
    void theFileChangesUnderTheModel()
    {
        for (int i = 0; i < 30; ++i)
            logEvent(QString::number(i));
        EventHistoryModel model;
        const QAbstractItemModelTester tester(&model);
        model.setRowsPerPage(10);
        model.setPage(2);
        QTRY_COMPARE(model.count(), 10);
        const auto restore = qScopeGuard([this] {
            QDir().mkpath(Path::instance()->eventLogsDir);
            m_manager->initLogFiles();
        });
        std::get<1>(support::currentRow<Change>())();
        const auto isLikeTheFile = [&] {
            const QString page =
                m_manager->exportEventsHistory(LogManager::AllEvent, {}, {}, model.page(), 10);
            QStringList lines = page.split('\n', Qt::SkipEmptyParts);
            std::reverse(lines.begin(), lines.end());
            for (QString& line : lines)
                line = line.section("| ", 2);
            return model.status() == EventHistoryModel::Ready &&
                   lines.join(' ') == texts(model, "fullText");
        };
        QTRY_VERIFY(isLikeTheFile());
        QTRY_VERIFY(model.page() == 0 || model.page() < model.pagesCount());
    }

    void tenThousandEventsAndRubbish()
    {
        QByteArray content;
        for (int i = 0; i < 10000; ++i)
            content += "01/02/2026 08:30:00:000| MenuAccess| " + QByteArray::number(i) + "\n";
        content += "\xff\xfe|||\n\x1b[2J\x07\n";
        content += QByteArray(64, '\0') + QByteArray(2000000, 'x') + "\n";
        content += "01/02/2026 08:30:00:001| NONE| <img src=x> \xe2\x80\xae evil\tone\n";
        writeEvents(content);
        EventHistoryModel model;
        const QAbstractItemModelTester tester(&model);
        model.setRowsPerPage(20000);
        QVERIFY(isReady(model));
        QCOMPARE(model.count(), 10004);
        QCOMPARE(value(model, 0, "text").toString(),
                 QStringLiteral("<img src=x> ") + QChar(0xFFFD) + QStringLiteral(" evil one"));
        QCOMPARE(value(model, 1, "text").toString().size(), 1000);
        QVERIFY(value(model, 1, "isCut").toBool() && !value(model, 0, "isCut").toBool());
        QCOMPARE(value(model, 1, "fullText").toString().size(), 65536);
        QCOMPARE(value(model, 2, "text").toString(), QString::fromUtf8("�[2J�"));
        QCOMPARE(value(model, 3, "text").toString(), QString(2, QChar(0xFFFD)) + "|||");
        QVERIFY(!value(model, 3, "time").toDateTime().isValid());
        QCOMPARE(value(model, 10003, "text").toString(), QStringLiteral("0"));
    }

    void linesAreFiltered_data()
    {
        support::addRows<LinesRow>({
            {"all", 0, "", "", "debug Info event warning <b>error</b> grind"},
            {"warnings and worse", 3, "", "", "warning <b>error</b>"},
            {"no level", 77, "", "", "debug Info event warning <b>error</b> grind"},
            {"events and worse", 2, "", "", "event warning <b>error</b>"},
            {"a module", 0, "Payment", "", "Info warning"},
            {"a module that does not exist", 0, "Nobody", "", ""},
            {"a text in any case", 0, "", "IN", "Info warning grind"},
            {"all at once", 1, "Payment", "info", "Info"},
        });
    }
    void linesAreFiltered()
    {
        m_manager->enableModuleDebugging(Log::GrinderRegulation);
        const auto& [name, level, module, filter, expected] = support::currentRow<LinesRow>();
        Q_UNUSED(name)
        const auto log = [] {
            logLine(LogLevel::Debug, Log::CanBus, "debug");
            logLine(LogLevel::Debug, Log::Banner, "not printed");
            logLine(LogLevel::Info, Log::Payment, "Info");
            LogFormatter(LogLevel::Event).logEvent(LogEventModule::NoneEvent) << 1;
            logLine(LogLevel::Warning, Log::Payment, "warning");
            logLine(LogLevel::Error, Log::CanBus, "<b>error</b>");
            logLine(LogLevel::Grinder, Log::GrinderRegulation, "grind");
        };
        QString wanted = expected;
        wanted.replace("event", "NONE| 1");
        LogModel before;
        LogModel after;
        before.setLevel(level);
        before.setModule(module);
        before.setFilter(filter);
        const QAbstractItemModelTester tester(&before);
        log();
        QTRY_COMPARE(after.count(), 6);
        QTRY_COMPARE(texts(before), wanted);
        after.setLevel(level);
        after.setModule(module);
        after.setFilter(filter);
        QCOMPARE(texts(after), wanted);
    }

    void aModelBeginsWithThePast()
    {
        logLine(LogLevel::Warning, Log::CanBus, "past\nline");
        m_manager->flush();
        const QString path = m_manager->filePath(LogManager::General);
        const QByteArray past = support::readFile(path);
        // A line from before the clock was set back.
        support::writeFile(path, past + "01/01/2099 00:00:00:000| Info     | later\n more\n");
        LogModel model;
        LogModel live;
        live.setIncludesPast(false);
        const QAbstractItemModelTester tester(&model);
        logLine(LogLevel::Info, Log::CanBus, "now\nin two lines\n"); // is in the file, too
        QTRY_COMPARE(texts(model), QStringLiteral("past line later  more now in two lines "));
        QCOMPARE(model.count(), 3);
        QCOMPARE(texts(live), QStringLiteral("now in two lines "));
        QCOMPARE(value(model, 0, "level").toInt(), int(LogModel::Warning));
        const QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        Library().setLanguage("de");
        QCOMPARE(changed.count(), 1);
        Library().setLanguage("en");
    }

    void aModelKeepsTheLastLinesAndCountsTheOthers()
    {
        LogModel model;
        const QAbstractItemModelTester tester(&model);
        model.setMaximumRows(3);
        for (int i = 0; i < 3; ++i)
            logLine(LogLevel::Info, Log::CanBus, QString::number(i));
        QTRY_COMPARE(texts(model), QStringLiteral("0 1 2"));
        QCOMPARE(model.lostLines(), 0);
        model.setPaused(true);
        for (int i = 3; i < 13; ++i)
            logLine(LogLevel::Info, Log::CanBus, QString::number(i));
        QTest::qWait(50);
        QCOMPARE(texts(model), QStringLiteral("0 1 2"));
        model.setPaused(false);
        QTRY_COMPARE(texts(model), QStringLiteral("10 11 12"));
        QCOMPARE(model.lostLines(), 7);
        model.setMaximumRows(2);
        QCOMPARE(texts(model), QStringLiteral("11 12"));
        model.clear();
        QCOMPARE(model.count(), 0);
        logLine(LogLevel::Info, Log::CanBus | Log::Payment, "next");
        QTRY_COMPARE(texts(model, "modules"), QStringLiteral("CanBus, Payment"));
    }

    void megabyteLinesTakeBoundedMemory()
    {
        LogModel model;
        const auto isLast = [&](const QString& first) {
            return model.count() > 0 &&
                   value(model, model.count() - 1, "text").toString().startsWith(first);
        };
        const QString line = 'x' + QString(40000, QChar(0xE4)); // 80,001 bytes in UTF-8
        for (int i = 0; i < 300; ++i) {
            logLine(LogLevel::Info, Log::CanBus, line);
            if (i % 30 == 0)
                QCoreApplication::processEvents();
        }
        logLine(LogLevel::Info, Log::CanBus, "\x1b" + QString(1024 * 1024, 'm'));
        QTRY_VERIFY(isLast(QString(QChar(QChar::ReplacementCharacter)) + "mm"));
        QCOMPARE(model.lostLines(), 0);
        constexpr qint64 mega = qint64(1024) * 1024;
        qint64 characters = 0;
        for (int row = 0; row < model.count(); ++row)
            characters += value(model, row, "fullText").toString().size();
        QVERIFY2(characters <= 8 * mega && characters > 7 * mega,
                 qPrintable(QString::number(characters)));
        QVERIFY(!value(model, 0, "fullText").toString().contains(QChar(0xFFFD)));
        QVERIFY(value(model, 0, "isCut").toBool());

        for (int i = 0; i < 200; ++i)
            logLine(LogLevel::Info, Log::CanBus, line);
        logLine(LogLevel::Info, Log::CanBus, "end");
        QTRY_VERIFY(isLast("end"));
        QVERIFY(model.lostLines() > 50);
    }

    void linesAreAddedOncePerFrame()
    {
        LogModel model;
        model.setMaximumRows(100000);
        const QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
        QElapsedTimer timer;
        timer.start();
        int lines = 0;
        for (; timer.elapsed() < 200; ++lines) {
            logLine(LogLevel::Info, Log::CanBus, "line");
            QCoreApplication::processEvents();
        }
        const auto frames = int(timer.elapsed() / 16);
        QVERIFY(lines > 2 * frames);
        QVERIFY2(inserted.count() > 1 && inserted.count() <= frames + 1,
                 qPrintable(QString::number(inserted.count())));
        QTRY_COMPARE(model.count(), lines);
    }

    void threadsLogWhileModelsComeAndGo()
    {
        constexpr int threads = 4;
        constexpr int lines = 4000;
        LogModel model;
        model.setMaximumRows(threads * lines);
        std::atomic<int> running = threads;
        const support::Threads loggers(threads, [&running](int number) {
            for (int i = 0; i < lines; ++i)
                logLine(LogLevel::Info, Log::CanBus, QStringLiteral("%1 %2").arg(number).arg(i));
            --running;
        });
        while (running > 0) {
            LogModel shortLived;
            const EventHistoryModel events;
            shortLived.setMaximumRows(50);
            shortLived.setFilter(QStringLiteral("7"));
            QTest::qWait(5);
            shortLived.setFilter(QStringLiteral("1"));
            model.setFilter(model.filter().isEmpty() ? QStringLiteral("1") : QString());
        }
        model.setFilter({});
        QTRY_COMPARE(model.count() + model.lostLines(), threads * lines);
        std::array<int, threads> next = {};
        for (int row = 0; row < model.count() && model.lostLines() == 0; ++row) {
            const QStringList words = value(model, row, "text").toString().split(' ');
            QCOMPARE(words.at(1).toInt(), next[size_t(words.at(0).toInt())]++);
        }
    }

    void debugSwitchesFollowAndNeedAnOperator()
    {
        LogModulesModel model;
        const QAbstractItemModelTester tester(&model);
        QCOMPARE(model.count(), LogModule::registeredModulesConst().size());
        const int row = texts(model, "name").split(' ').indexOf("Payment");
        QCOMPARE(value(model, row, "variable").toString(), QStringLiteral("ZEL_DEBUG_PAYMENT"));
        support::LineRecorder lines;
        QVERIFY(!model.setDebugged(row, true).isEmpty());
        QVERIFY(lines.take().isEmpty());
        QVERIFY(!m_manager->isPrinted(LogLevel::Debug, Log::Payment));

        Access::instance()->setLevel(Access::Operator);
        const QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        QCOMPARE(model.setDebugged(row, true), QString());
        QCOMPARE(model.setDebugged(row, true), QString());
        QVERIFY(!model.setDebugged(model.count(), true).isEmpty());
        QVERIFY(m_manager->isPrinted(LogLevel::Debug, Log::Payment));
        QVERIFY(value(model, row, "isDebugged").toBool());
        const QStringList messages = lines.takeMessages();
        QCOMPARE(messages.size(), 1);
        QVERIFY(messages.first().contains("Debug lines of Payment switched on (by "));

        std::thread([this] { m_manager->disableModuleDebugging(Log::Payment); }).join();
        QTRY_VERIFY(!value(model, row, "isDebugged").toBool());
        QCOMPARE(changed.count(), 2);
    }

    void aFileThatFailsIsShown()
    {
        LogFilesModel model;
        const QAbstractItemModelTester tester(&model);
        const QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        QCOMPARE(texts(model, "isHealthy"), QStringLiteral("true true true true true"));
        QVERIFY(QFile::exists(value(model, LogManager::Events, "path").toString()));
        QDir(Path::instance()->eventLogsDir).removeRecursively();
        const auto isHealthy = [&] {
            return value(model, LogManager::Events, "isHealthy").toBool();
        };
        QTRY_VERIFY((logEvent("lost"), !isHealthy()));
        QTRY_COMPARE(changed.count(), 1);
        QVERIFY(!value(model, LogManager::Events, "problem").toString().isEmpty());
        QVERIFY(value(model, LogManager::Events, "linesNotWritten").toInt() > 0);
        QCOMPARE(value(model, LogManager::General, "problem").toString(), QString());
        QDir().mkpath(Path::instance()->eventLogsDir);
        m_manager->initLogFiles();
        QTRY_COMPARE(changed.count(), 2);
        QVERIFY(isHealthy());
    }

    void lossesGrow()
    {
        LossesModel model;
        const QAbstractItemModelTester tester(&model);
        Barrier barrier;
        m_manager->addSink(&barrier);
        LogDelivery delivery;
        delivery.mode = LogDelivery::Buffered;
        delivery.ringSize_B = 1; // the smallest
        QVERIFY(m_manager->setDelivery(delivery));
        const auto end = qScopeGuard([&] {
            barrier.opened.release(1000000);
            m_manager->removeSink(&barrier);
            m_manager->setDelivery(LogDelivery());
        });
        logLine(LogLevel::Info, Log::CanBus, "held");
        barrier.reached.acquire();
        const auto fill = [](LogLevel::Level level, const LogModule& module) {
            for (int i = 0; i < 6000; ++i)
                logLine(level, module, "full");
        };
        fill(LogLevel::Warning, Log::Payment);
        QTRY_COMPARE(model.count(), 1);
        const double before = model.total();
        QVERIFY(before > 0 && before < 6000);
        QCOMPARE(value(model, 0, "lines").toDouble(), before);
        fill(LogLevel::Info, Log::CanBus);
        QTRY_COMPARE(model.total(), before + 6000);
        QCOMPARE(texts(model, "modules"), QStringLiteral("CanBus Payment"));
        QCOMPARE(texts(model, "levelName"), QStringLiteral("Info Warning"));
    }
};

QTEST_GUILESS_MAIN(TestQuickLog)
#include "tst_quick_log.moc"
