#include "crashreports/threadstack.h"

#include "stacksignal.h"
#include "support/threads.h"

#include <QtTest>

#include <array>
#include <atomic>
#include <thread>

#include <pthread.h>
#include <unistd.h>

using namespace std::chrono_literals;
using zeltools::ThreadStack;

namespace
{

std::atomic<bool> s_isOver{false};

void block(int how)
{
    sigset_t signal;
    sigemptyset(&signal);
    sigaddset(&signal, zeltools::stackSignal());
    pthread_sigmask(how, &signal, nullptr);
}

} // namespace

// The functions are exported and not inlined, so that call stacks have their names.
Q_NEVER_INLINE void waitForMilk()
{
    while (!s_isOver)
        std::this_thread::sleep_for(1ms);
}

Q_NEVER_INLINE void grindForever()
{
    while (!s_isOver) {
    }
}

void hearNothing()
{
    block(SIG_BLOCK);
    waitForMilk();
    block(SIG_UNBLOCK);
    s_isOver = false;
    grindForever();
}

using Function = void (*)();
Q_DECLARE_METATYPE(Function)

class TestThreadStack : public QObject
{
    Q_OBJECT

private:
    // Takes the stack of a thread in the function.
    static ThreadStack stackIn(Function run)
    {
        std::atomic<qint32> thread{0};
        s_isOver = false;
        std::thread running([&] {
            thread = gettid();
            run();
        });
        while (thread == 0)
            std::this_thread::yield();
        std::this_thread::sleep_for(5ms);
        ThreadStack stack = ThreadStack::of(thread, run == hearNothing ? 20ms : 10s);
        s_isOver = true;
        if (run == hearNothing) {
            while (s_isOver)
                std::this_thread::yield();
            // The thread has answered the first request late. The second answer is its own.
            const bool isLater =
                ThreadStack::of(thread, 10s).described().join(' ').contains("grindForever");
            s_isOver = true;
            running.join();
            return isLater ? stack : ThreadStack{thread, {1}};
        }
        running.join();
        return stack;
    }

private Q_SLOTS:
    void tellsWhereAThreadIs_data()
    {
        QTest::addColumn<Function>("run");
        QTest::addColumn<QString>("call");
        QTest::newRow("asleep") << Function(waitForMilk) << "waitForMilk()";
        QTest::newRow("busy") << Function(grindForever) << "grindForever()";
        QTest::newRow("blocks the signal") << Function(hearNothing) << QString();
    }
    void tellsWhereAThreadIs()
    {
        QFETCH(Function, run);
        QFETCH(QString, call);
        const ThreadStack stack = stackIn(run);
        QCOMPARE(stack.calls.isEmpty(), call.isEmpty());
        QVERIFY2(stack.described().join(' ').contains(call),
                 qPrintable(stack.described().join('\n')));
    }

    void answersManyAtOnce()
    {
        std::array<std::atomic<qint32>, 8> threads{};
        std::atomic<int> answers{0};
        std::atomic<int> working{8};
        support::runInThreads(8, [&](int number) {
            threads[size_t(number)] = gettid();
            for (int i = 0; i < 200; ++i) {
                const qint32 other = threads[size_t(i % 8)];
                answers += other == 0 || !ThreadStack::of(other, 10s).calls.isEmpty();
            }
            --working;
            while (working > 0) // A thread that has ended does not answer.
                std::this_thread::sleep_for(1ms);
        });
        QCOMPARE(answers, 8 * 200);
        QVERIFY(ThreadStack::of(INT_MAX, 10s).calls.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestThreadStack)
#include "tst_threadstack.moc"
