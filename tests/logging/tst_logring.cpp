#include "logging/linering_p.h"
#include "logging/log.h"
#include "logging/logformatter.h"
#include "logging/logmanager.h"
#include "logging/logrecovery.h"
#include "logging/logsink.h"
#include "logging/ringfile_p.h"
#include "support.h"
#include "support/rows.h"

#include <QtTest>

#include <array>
#include <set>
#include <thread>
#include <vector>

#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace
{

constexpr bool s_isSanitized = ZELTOOLS_IS_SANITIZED;
constexpr quint64 s_capacity = 32; // of the ring of the model: two records of 16 bytes

// Everything that a thread of the model has read so far. A thread is run again from its beginning
// with these values, so that a state of the model is a plain value.
using Reads = std::vector<quint64>;

struct State
{
    std::array<quint64, 3> cursors = {}; // head, written and tail
    std::array<quint64, s_capacity / 8> data = {};
    std::array<Reads, 3> reads;
    std::array<bool, 3> isOver = {};
    std::vector<quint64> accepted;  // by a producer whose call has returned
    std::vector<quint64> refused;   // the same
    std::vector<quint64> delivered; // in the files
    bool operator<(const State& other) const
    {
        return std::tie(cursors, data, reads, isOver) <
               std::tie(other.cursors, other.data, other.reads, other.isOver);
    }
};

struct Paused
{
};

// Answers the accesses of a thread from its past, makes one real access, and pauses at the next.
struct ModelMemory
{
    static inline Reads* past = nullptr;
    static inline size_t step = 0;
    static inline bool isDone = false;

    template <typename Access>
    static quint64 access(const Access& access)
    {
        if (past == nullptr)
            return access();
        if (step < past->size())
            return past->at(step++);
        if (isDone)
            throw Paused();
        isDone = true;
        past->push_back(access());
        return past->at(step++);
    }

    using Word = std::atomic<quint64>;
    static quint64 load(const Word& word, std::memory_order)
    {
        return access([&] { return word.load(); });
    }
    static void store(Word& word, quint64 value, std::memory_order)
    {
        access([&] { return word = value; });
    }
    static bool exchange(Word& word, quint64& expected, quint64 value)
    {
        const quint64 wanted = expected;
        expected = access([&] {
            quint64 found = wanted;
            word.compare_exchange_strong(found, value);
            return found;
        });
        return expected == wanted;
    }
    template <typename Fill>
    static void fill(char* to, const Fill& fill)
    {
        access([&] {
            fill(to);
            return quint64(0);
        });
    }
    static void clear(char* from, quint64 size)
    {
        access([&] {
            std::memset(from, 0, size);
            return size;
        });
    }
};

class Model
{
public:
    // Follows every order in which the threads can take their steps.
    void explore(const State& state)
    {
        if (!m_seen.insert(state).second)
            return;
        check(state);
        for (size_t thread = 0; thread < 3; ++thread) {
            if (!state.isOver[thread])
                explore(after(state, thread));
        }
    }
    size_t statesCount() const { return m_seen.size(); }

private:
    using Ring = LineRing<ModelMemory>;

    void load(const State& state)
    {
        m_cursors.head = state.cursors[0];
        m_cursors.written = state.cursors[1];
        m_cursors.tail = state.cursors[2];
        m_data = state.data;
    }

    State after(State state, size_t thread)
    {
        load(state);
        ModelMemory::past = &state.reads[thread];
        ModelMemory::step = 0;
        ModelMemory::isDone = false;
        Ring ring(m_cursors, reinterpret_cast<char*>(m_data.data()), s_capacity, 8);
        try {
            if (thread < 2)
                produce(ring, state, 10 * (thread + 1), 2 - thread);
            else
                consume(ring, state);
            state.isOver[thread] = true;
        } catch (const Paused&) {
        }
        ModelMemory::past = nullptr;
        state.cursors = {m_cursors.head, m_cursors.written, m_cursors.tail};
        state.data = m_data;
        return state;
    }

    static void note(std::vector<quint64>& list, quint64 content)
    {
        if (std::find(list.begin(), list.end(), content) == list.end())
            list.push_back(content);
    }

    static void produce(Ring& ring, State& state, quint64 first, size_t count)
    {
        for (quint64 content = first; content < first + count; ++content) {
            const bool isAdded = ring.add(
                8, s_capacity, [&](char* to) { std::memcpy(to, &content, sizeof content); });
            note(isAdded ? state.accepted : state.refused, content);
        }
    }

    // Looks for a record three times.
    static void consume(Ring& ring, State& state)
    {
        quint64 at = 0;
        for (int i = 0; i < 3; ++i) {
            Ring::Record record;
            if (ring.find(at, record) != Ring::Found::Record)
                continue;
            ModelMemory::access([&] { // the write to the file
                state.delivered.push_back(contentOf(record));
                return 0;
            });
            at = record.end;
            ring.setWritten(at);
            ring.clearWritten();
        }
    }

    static quint64 contentOf(const Ring::Record& record)
    {
        quint64 content = 0;
        std::memcpy(&content, record.content, sizeof content);
        return content;
    }

    // All threads are killed in this state: what do the files hold after a recovery?
    void check(const State& state)
    {
        load(state);
        Ring ring(m_cursors, reinterpret_cast<char*>(m_data.data()), s_capacity, 8);
        std::vector<quint64> found = state.delivered;
        const size_t told = state.cursors[1] / 16;
        Ring::Record record;
        quint64 skipped = found.size() - told; // a recovery sees in the file that it was written
        bool isDamaged = false;
        for (quint64 at = state.cursors[1]; ring.findAbandoned(at, record, &isDamaged);
             at = record.end) {
            if (skipped > 0)
                --skipped;
            else
                found.push_back(contentOf(record));
        }
        require(!isDamaged, "damage");
        for (const quint64 content : state.accepted)
            require(std::count(found.begin(), found.end(), content) == 1, "not found once");
        for (const quint64 content : state.refused)
            require(std::count(found.begin(), found.end(), content) == 0, "refused, but found");
        for (const quint64 first : {10, 20}) {
            const auto begin = std::find(found.begin(), found.end(), first);
            const auto second = std::find(found.begin(), found.end(), first + 1);
            require(begin <= second || second == found.end() || begin == found.end(), "order");
        }
        const std::set<quint64> known(found.begin(), found.end());
        require(known.size() == found.size(), "found twice");
        for (const quint64 content : known)
            require(content / 10 >= 1 && content / 10 <= 2 && content % 10 < 2, "garbage");
    }

    void require(bool condition, const char* what)
    {
        if (!condition)
            fault = what;
    }

    RingCursors m_cursors;

public:
    QString fault; // of the last state that is wrong

private:
    std::set<State> m_seen;
    std::array<quint64, s_capacity / 8> m_data;
};

// The file before the recovery; the size of what the ended process was appending, 0 for nothing;
// whether a thread was killed inside of its call; the file afterwards; the number of lines found.
using Leftover = std::tuple<const char*, QByteArray, qint64, bool, QByteArray, int>;

// A sink that holds up the writer thread.
class Barrier : public LogSink
{
public:
    void write(const LogRecord&) override
    {
        m_reached.release();
        m_open.acquire();
        m_open.release();
    }
    void waitUntilReached() { m_reached.acquire(); }
    void open() { m_open.release(); }

private:
    QSemaphore m_reached;
    QSemaphore m_open;
};

// All lines of the log files without their times.
QList<QByteArray> linesWithoutTimes()
{
    QList<QByteArray> lines;
    for (const QString& folder : {Path::instance()->debugLogsDir, Path::instance()->eventLogsDir}) {
        for (const QString& name : QDir(folder).entryList(QDir::Files, QDir::Name)) {
            if (name.contains("deleted"))
                continue;
            lines.append("== " + name.toLatin1());
            for (const QByteArray& line : support::readFile(folder + name).split('\n'))
                lines.append(line.mid(line.indexOf('|')));
        }
    }
    return lines;
}

void logLineOfEachKind(int number)
{
    for (const LogLevel::Level level : {LogLevel::Info, LogLevel::Warning, LogLevel::Event,
                                        LogLevel::Grinder, LogLevel::Capsule, LogLevel::M4})
        LogFormatter(level).log(Log::GrinderRegulation) << "line" << number;
    LogFormatter(LogLevel::Debug).log(Log::Failure) << "failure" << number;
}

} // namespace

class TestLogRing : public QObject
{
    Q_OBJECT

private:
    support::TemporaryLayout m_layout;
    LogManager* m_manager = LogManager::instance();
    const support::StandardErrorCapture m_standardError; // which the test does not print

    bool setDelivery(LogDelivery::Mode mode)
    {
        LogDelivery delivery;
        delivery.mode = mode;
        delivery.ringSize_B = 1; // the smallest
        return m_manager->setDelivery(delivery);
    }

private Q_SLOTS:
    void initTestCase()
    {
        LogManager::initialize();
        m_manager->enableLogToFile(true);
        m_manager->enableModuleDebugging(Log::GrinderRegulation);
        m_manager->enableModuleDebugging(Log::Failure);
    }
    void cleanup()
    {
        QVERIFY(setDelivery(LogDelivery::Immediate));
        for (const auto id : {LogManager::General, LogManager::Events, LogManager::Grinder,
                              LogManager::Capsule, LogManager::M4ActuatorBoard})
            m_manager->deleteLogFile(id);
    }

    // The same lines give the same files in both modes, with rotations at the same lines.
    void bothModesWriteTheSameFiles()
    {
        QList<QByteArray> files[2];
        for (const LogDelivery::Mode mode : {LogDelivery::Immediate, LogDelivery::Buffered}) {
            QVERIFY(setDelivery(mode));
            QCOMPARE(m_manager->isBuffered(), mode == LogDelivery::Buffered);
            m_manager->setAppLogFileMaximumSizeMiB(0.01);
            for (int i = 0; i < 300; ++i) {
                logLineOfEachKind(i);
                QVERIFY(i % 50 != 0 || m_manager->flush(10s));
            }
            QVERIFY(m_manager->flush(10s));
            files[mode] = linesWithoutTimes();
            cleanup();
        }
        QVERIFY(files[0].contains("== zel_logs.log.1"));
        QCOMPARE(files[1], files[0]);
    }

    void aFullRingKeepsWhatMattersAndTellsTheRest()
    {
        Barrier barrier;
        m_manager->addSink(&barrier);
        const auto end = qScopeGuard([&] {
            barrier.open();
            m_manager->removeSink(&barrier);
        });
        QVERIFY(setDelivery(LogDelivery::Buffered));
        m_manager->setAppLogFileMaximumSizeMiB(1);
        LogFormatter(LogLevel::Info) << "sent";
        barrier.waitUntilReached();
        constexpr int count = 3000; // of each level, far more than the ring takes
        std::array<quint64, 4> accepted;
        for (const LogLevel::Level level : {LogLevel::Debug, LogLevel::Info, LogLevel::Warning}) {
            for (int i = 0; i < count; ++i)
                LogFormatter(level).log(Log::GrinderRegulation) << "sent";
            accepted[level] = count - m_manager->losses().lines[level]["GrinderRegulation"];
            QVERIFY(accepted[level] > 50 && accepted[level] < count);
        }
        QElapsedTimer timer;
        timer.start();
        LogFormatter(LogLevel::Error).log(Log::Payment) << "sent";
        QVERIFY(timer.elapsed() >= 100);
        const LogLosses losses = m_manager->losses();
        QCOMPARE(losses.lines[LogLevel::Error]["Payment"], quint64(1));
        barrier.open();
        const QString file = m_manager->appLogFilePath();
        const QByteArray told = QByteArray::number(losses.total) + " lines were lost (" +
                                QByteArray::number(losses.total) + " since the start of process ";
        QTRY_VERIFY(support::readFile(file).contains(told));
        QVERIFY(support::readFile(file).contains("Error 1 (Payment 1)"));
        QCOMPARE(quint64(support::readFile(file).count("sent\n")), 3 * count + 2 - losses.total);
    }

    void forkedChildrenLog_data()
    {
        QTest::addColumn<bool>("isBuffered");
        QTest::newRow("immediate") << false;
        QTest::newRow("buffered") << true;
    }
    void forkedChildrenLog()
    {
        if (s_isSanitized) {
            const char* const reason = "The allocator of a sanitizer may stay locked in a child";
            return QTest::qSkip(reason, __FILE__, __LINE__);
        }
        QFETCH(const bool, isBuffered);
        QVERIFY(setDelivery(isBuffered ? LogDelivery::Buffered : LogDelivery::Immediate));
        std::atomic<bool> isOver{false};
        std::vector<std::thread> threads;
        for (int i = 0; i < 4; ++i)
            threads.emplace_back([&] {
                while (!isOver)
                    logLineOfEachKind(0);
            });
        int hanging = 0;
        for (int i = 0; i < 40; ++i) {
            const pid_t child = fork();
            if (child == 0) {
                LogFormatter(LogLevel::Capsule) << "child";
                logLineOfEachKind(1);
                _exit(0);
            }
            QDeadlineTimer deadline(10000);
            while (waitpid(child, nullptr, WNOHANG) == 0) {
                if (deadline.hasExpired() && ++hanging > 0)
                    kill(child, SIGKILL);
                QThread::msleep(1);
            }
        }
        isOver = true;
        for (std::thread& thread : threads)
            thread.join();
        QCOMPARE(hanging, 0);
        QByteArray lines;
        for (const char* suffix : {"", ".1"})
            lines += support::readFile(Path::instance()->eventLogsDir + "zel_capsule.log" + suffix);
        QCOMPARE(lines.count("child\n"), 40);
    }

    void recovery_data()
    {
        const QByteArray all = "old\nfirst\nsecond\nthird\n";
        support::addRows<Leftover>({
            {"nothing was being written", "old\n", 0, false, all, 3},
            {"not written any more", "old\n", 13, false, all, 3},
            {"written, but not marked", "old\nfirst\nsecond\n", 13, false, all, 1},
            {"half a line", "old\nfirst\nsec", 13, false, all, 2},
            {"another process has appended", "old\nfirst\nother\n", 13, false,
             "old\nfirst\nother\nsecond\nthird\n", 2},
            {"a call that has not returned", "old\n", 0, true, all, 3},
        });
    }
    void recovery()
    {
        const auto& [name, before, appended_B, hasHole, recovered, count] =
            support::currentRow<Leftover>();
        const QTemporaryDir folder;
        const QString path = folder.filePath("zel_logs.log");
        support::writeFile(path, before);
        QString error;
        std::unique_ptr<RingFile> ring = RingFile::create(folder.path(), 1, error);
        QVERIFY2(ring != nullptr, qPrintable(error));
        RingHeader& header = ring->header();
        header.process = 4711;
        header.isGeneralFileEnabled = 1;
        header.files[0].maximumSize_B = 1000;
        header.files[0].predecessorsCount = 1;
        qstrncpy(header.files[0].path, QFile::encodeName(path).constData(), RingHeader::pathSize);
        RingLine line = {};
        if (hasHole) // a reservation without an announcement, and a call before the commit
            header.cursors.head += 40;
        ring->add(line, "first\n", 6, 65536);
        ring->add(line, "second\n", 7, 65536);
        ring->add(line, "third\n", 6, 65536);
        struct stat file;
        QCOMPARE(stat(QFile::encodeName(path).constData(), &file), 0);
        header.append.device = file.st_dev;
        header.append.inode = file.st_ino;
        header.append.offset = 4;
        header.append.length = appended_B;
        header.append.begin = appended_B > 0 ? 1 : 0;

        // The reader of the documents, which knows the format from its page only.
        QProcess reader;
        reader.start(RING_READER, {ring->path()});
        QVERIFY(reader.waitForFinished());
        QCOMPARE(reader.readAllStandardOutput(), QByteArray("0 first\n0 second\n0 third\n"));

        QCOMPARE(LogRecovery::run(folder.path()).linesCount, quint64(0)); // it is in use
        ring.reset();
        const LogRecovery report = LogRecovery::run(folder.path());
        QCOMPARE(report.problems, QStringList());
        QCOMPARE(report.linesCount, quint64(count));
        const QByteArray found = support::readFile(path);
        QCOMPARE(found.left(recovered.size()), recovered);
        const QByteArray told =
            "| Warning  | Recovered " + QByteArray::number(count) + " lines of process 4711";
        QCOMPARE(found.mid(recovered.size()).count(told), 1);
        QCOMPARE(found.count('\n'), recovered.count('\n') + 1);
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList("zel_logs.log"));
    }

    // Two producers, of which one adds two records, and the writer, killed at every step of every
    // order.
    void everyInterleaving()
    {
        Model model;
        model.explore(State());
        QCOMPARE(model.fault, QString());
        qInfo("%zu states", model.statesCount());
        QVERIFY(model.statesCount() > 10000);
    }
};

QTEST_GUILESS_MAIN(TestLogRing)

#include "tst_logring.moc"
