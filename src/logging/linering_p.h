#pragma once

#include <QtGlobal>

#include <atomic>
#include <cstring>

/// The cursors of a LineRing. They only grow; a position modulo the capacity is an offset in the
/// data. Between `tail` and `head` lie the records, outside of them every byte is zero.
struct RingCursors
{
    alignas(64) std::atomic<quint64> head;    ///< The end of the newest record.
    alignas(64) std::atomic<quint64> written; ///< The end of the records that are delivered.
    std::atomic<quint64> tail;                ///< The end of the records whose bytes are cleared.
};
static_assert(std::atomic<quint64>::is_always_lock_free);

/// The accesses of a LineRing to shared memory. The model that tests its protocol has others, which
/// interleave the accesses of several threads.
struct RingMemory
{
    using Word = std::atomic<quint64>;

    static quint64 load(const Word& word, std::memory_order order) { return word.load(order); }
    static void store(Word& word, quint64 value, std::memory_order order)
    {
        word.store(value, order);
    }
    static bool exchange(Word& word, quint64& expected, quint64 value)
    {
        return word.compare_exchange_weak(expected, value, std::memory_order_relaxed);
    }
    template <typename Fill>
    static void fill(char* to, const Fill& fill)
    {
        fill(to);
    }
    static void clear(char* from, quint64 size) { std::memset(from, 0, size); }
};

/// A queue of records with several producers and one consumer, in memory that outlives the process.
/// No operation waits, and the process may be killed between any two steps: every record whose
/// add() has returned is then found between `written` and `head`, once and whole.
///
/// A record starts at a multiple of 8 bytes with one word, which holds its size, its state and a
/// tag that depends on its position. A producer reserves the bytes by moving the head, announces
/// the record by the word in the state Busy, copies the content, and commits it by the state Ready.
/// The consumer delivers a record, then moves `written`, clears the bytes, and moves the tail.
///
/// The data must be mapped twice in a row, so that no record is cut at the end.
template <typename Memory = RingMemory>
class LineRing
{
public:
    struct Record
    {
        quint64 end = 0; ///< The position behind the record.
        const char* content = nullptr;
        quint32 size = 0;
    };
    enum class Found { Record, Nothing, Damage };

    /// `capacity` is a power of two, below 1 GiB. Every record has at least `smallest` bytes.
    LineRing(RingCursors& cursors, char* data, quint64 capacity, quint32 smallest)
        : m_cursors(cursors)
        , m_data(data)
        , m_capacity(capacity)
        , m_smallest(smallest)
    {
    }

    /// The memory that a record of this size takes.
    static quint64 lengthOf(quint32 size)
    {
        return sizeof(quint64) + ((quint64(size) + 7) & ~7ULL);
    }

    /// Adds a record, whose content `fill(char*)` writes, if at most `limit` bytes are then in use.
    /// Nothing is added after close(). Any thread may call it.
    template <typename Fill>
    bool add(quint32 size, quint64 limit, const Fill& fill)
    {
        const quint64 length = lengthOf(size);
        quint64 at = Memory::load(m_cursors.head, std::memory_order_relaxed);
        do {
            // The head that was read may be older than the tail; the exchange then fails.
            const quint64 tail = Memory::load(m_cursors.tail, std::memory_order_acquire);
            if (qint64(at + length - tail) > qint64(limit))
                return false;
        } while (!Memory::exchange(m_cursors.head, at, at + length));
        Memory::store(wordAt(at), word(at, size, Busy), std::memory_order_relaxed);
        std::atomic_signal_fence(std::memory_order_seq_cst); // the compiler keeps this order
        Memory::fill(dataAt(at) + sizeof(quint64), fill);
        // The order also holds for a following load of whether the consumer is asleep.
        Memory::store(wordAt(at), word(at, size, Ready), std::memory_order_seq_cst);
        return true;
    }

    /// Looks for the record at the position. It finds nothing at the end and at a record that its
    /// producer has not committed.
    Found find(quint64 at, Record& record) const
    {
        const quint64 found = Memory::load(wordAt(at), std::memory_order_seq_cst);
        if (found == 0)
            return Found::Nothing;
        if (!isWord(at, found))
            return Found::Damage;
        const quint32 size = sizeOf(found);
        record = {at + lengthOf(size), dataAt(at) + sizeof(quint64), size};
        return stateOf(found) == Ready ? Found::Record : Found::Nothing;
    }

    /// Looks for the first committed record at the position or behind it, in a ring that has no
    /// producers left. It skips what they have not committed. A reservation that is not even
    /// announced consists of zeros, and its size is not known. Anything else sets `isDamaged`.
    bool findAbandoned(quint64 at, Record& record, bool* isDamaged = nullptr) const
    {
        const quint64 head = this->head();
        while (at < head) {
            const quint64 found = wordAt(at).load();
            const Found result = find(at, record);
            if (result == Found::Record && record.end <= head)
                return true;
            if (result == Found::Damage && isDamaged != nullptr)
                *isDamaged = true;
            const bool isBusy = result == Found::Nothing && found != 0;
            at = isBusy ? record.end : at + sizeof(quint64);
        }
        return false;
    }

    /// Tells that all records before the position are delivered. Only the consumer calls it.
    void setWritten(quint64 end)
    {
        Memory::store(m_cursors.written, end, std::memory_order_release);
    }

    /// Gives the memory of the delivered records back to the producers.
    void clearWritten()
    {
        const quint64 tail = m_cursors.tail.load(std::memory_order_relaxed);
        const quint64 end = m_cursors.written.load(std::memory_order_relaxed);
        Memory::clear(dataAt(tail), end - tail);
        Memory::store(m_cursors.tail, end, std::memory_order_release);
    }

    /// Makes every later add() fail. Records that are reserved already will still be committed.
    void close() { m_cursors.head.fetch_or(s_closed); }
    /// Allows add() again, in a ring that has no producers.
    void open() { m_cursors.head.fetch_and(~s_closed); }
    bool isClosed() const { return (m_cursors.head.load() & s_closed) != 0; }

    quint64 head() const { return endOf(m_cursors.head.load(std::memory_order_acquire)); }
    /// The end of the newest record for a value of RingCursors::head.
    static quint64 endOf(quint64 head) { return head & ~s_closed; }
    quint64 written() const { return m_cursors.written.load(std::memory_order_acquire); }
    quint64 used() const
    {
        const quint64 tail = m_cursors.tail.load(std::memory_order_acquire);
        return head() - tail;
    }

private:
    // In the head it exceeds every limit of add().
    static constexpr quint64 s_closed = 1ULL << 62;
    enum State : quint64 { Busy = 1, Ready = 2, StateMask = 3 };

    char* dataAt(quint64 at) const { return m_data + (at & (m_capacity - 1)); }
    std::atomic<quint64>& wordAt(quint64 at) const
    {
        return *static_cast<std::atomic<quint64>*>(static_cast<void*>(dataAt(at)));
    }

    // The upper half is the tag: a word that was not written for this position is recognised.
    static quint64 tagOf(quint64 at)
    {
        return ((at >> 3) * 0x9E3779B97F4A7C15ULL) & ~0xFFFFFFFFULL;
    }
    static quint64 word(quint64 at, quint32 size, State state)
    {
        return tagOf(at) | (quint64(size) << 2) | state;
    }
    static quint32 sizeOf(quint64 word) { return quint32(word & 0xFFFFFFFFULL) >> 2; }
    static State stateOf(quint64 word) { return State(word & StateMask); }
    bool isWord(quint64 at, quint64 found) const
    {
        const State state = stateOf(found);
        return (found & ~0xFFFFFFFFULL) == tagOf(at) && (state == Busy || state == Ready) &&
               sizeOf(found) >= m_smallest && lengthOf(sizeOf(found)) <= m_capacity;
    }

    RingCursors& m_cursors;
    char* m_data;
    quint64 m_capacity;
    quint32 m_smallest;
};
