#include "cleanreplacement.h"

#include <QFile>

#include <limits.h>
#include <signal.h>
#include <unistd.h>

namespace
{

constexpr int endingSignals[]{SIGHUP, SIGINT, SIGTERM};

/// Sets another signal mask during the life of the object.
class SignalMask
{
public:
    explicit SignalMask(const sigset_t& mask) { pthread_sigmask(SIG_SETMASK, &mask, &m_before); }
    ~SignalMask() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }
    Q_DISABLE_COPY(SignalMask)

    const sigset_t& before() const { return m_before; }

private:
    sigset_t m_before;
};

sigset_t maskWithEndingSignals()
{
    sigset_t mask;
    pthread_sigmask(SIG_SETMASK, nullptr, &mask);
    for (const int number : endingSignals)
        sigaddset(&mask, number);
    return mask;
}

/// Removes a file if a signal ends the process during the life of the object.
class SignalCleaner
{
public:
    explicit SignalCleaner(const QString& path)
    {
        qstrncpy(s_path, QFile::encodeName(path).constData(), sizeof s_path);
        change(SIG_DFL, removeAndEnd);
    }
    ~SignalCleaner() { change(removeAndEnd, SIG_DFL); }
    Q_DISABLE_COPY(SignalCleaner)

private:
    // A signal that is ignored stays ignored.
    static void change(void (*from)(int), void (*to)(int))
    {
        for (const int number : endingSignals) {
            const auto handler = signal(number, to);
            if (handler != from)
                signal(number, handler);
        }
    }
    static void removeAndEnd(int number)
    {
        unlink(s_path);
        signal(number, SIG_DFL);
        raise(number);
    }

    static inline char s_path[PATH_MAX];
};

} // namespace

bool replaceCleanly(zeltools::FileReplacement& file, const QByteArray& content)
{
    const SignalMask held(maskWithEndingSignals());
    return file.replace(content);
}

bool replaceCleanly(zeltools::FileReplacement& file,
                    const zeltools::FileReplacement::Writer& writer)
{
    // Outside the writer, the hidden file may belong to another process.
    const SignalMask held(maskWithEndingSignals());
    return file.replace([&](int descriptor) {
        const SignalCleaner cleaner(file.temporaryPath());
        const SignalMask released(held.before());
        return writer(descriptor);
    });
}
