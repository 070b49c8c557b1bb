#include "logging/linering_p.h"
#include "logging/log.h"
#include "logging/logformatter.h"
#include "logging/logmanager.h"
#include "logging/ringfile_p.h"
#include "logging/ringrecovery_p.h"
#include "logging/sinklist_p.h"
#include "support.h"
#include "support/rows.h"

#include <QtTest>

#include <array>
#include <set>
#include <thread>
#include <vector>

#include <sys/wait.h>

using namespace std::chrono_literals;

namespace
{

constexpr quint64 s_capacity = 64; // of the ring of the model: four records of 16 bytes
constexpr quint64 s_limit = 32;

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
    QString fault;

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
            const bool isAdded = ring.add(8, s_limit, [&](char* to) {
                std::memcpy(to, &content, sizeof content);
            });
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
        for (quint64 at = state.cursors[1]; ring.findAbandoned(at, record); at = record.end) {
            if (skipped > 0)
                --skipped;
            else
                found.push_back(contentOf(record));
        }
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
    std::array<quint64, s_capacity / 8> m_data;
    std::set<State> m_seen;
};

} // namespace

class TestLogRing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Two producers, of which one adds two records, and the writer, killed at every step of every order.
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
