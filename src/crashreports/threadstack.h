#pragma once

#include <zeltools/zeltools_export.h>

#include <QStringList>
#include <QVector>

#include <chrono>

namespace zeltools
{

/// The call stack of a thread at one moment. The thread itself writes it, interrupted by
/// stackSignal(); it then continues. A call in which it was waiting may end earlier: sleep(),
/// poll() and similar system calls return with EINTR, others are restarted.
struct ZELTOOLS_EXPORT ThreadStack
{
    static constexpr int mostCalls = 64; ///< Further calls are left out.

    qint32 thread = 0; ///< The kernel's id, as gettid() returns it.
    /// The address of the current instruction, then the return addresses, the innermost first.
    /// Empty if the thread has not answered: it has ended, blocks the signal or hangs in the
    /// kernel.
    QVector<quintptr> calls;

    /// The calls in the form of WindowsTools::callStack(). It is slow and takes locks.
    QStringList described() const;

    /// Takes the call stack of a thread of this process. The first call installs the handler of the
    /// signal. Any thread may call it.
    static ThreadStack of(qint32 thread,
                          std::chrono::milliseconds patience = std::chrono::milliseconds(200));
};

} // namespace zeltools
