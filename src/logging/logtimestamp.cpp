#include "logging/logtimestamp.h"

#include <QByteArray>

#include <mutex>
#include <tuple>
#include <utility>

#include <pthread.h>
#include <sys/stat.h>
#include <time.h>

namespace
{

constexpr int s_length = 23;
constexpr const char* s_zoneFile = "/etc/localtime"; // which localtime_r() reads

// The class is trivial, so that an object stays usable until the very end of a thread.
struct Cache
{
    qint64 moment_ms = -1;
    time_t second = -1;
    uint zoneVersion = 0;
    char text[s_length + 1] = {};
};

using FileState = std::tuple<dev_t, ino_t, time_t, long>;

// The zone of localtime_r(). The mutex is held for each access to it, and for each call of
// localtime_r(), tzset() and qgetenv().
struct Zone
{
    std::mutex mutex;
    uint version = 0;
    const QByteArray* variable = nullptr; // TZ
    FileState file;
    qint64 nextFileCheck_ms = 0;
};

// It needs no constructor at run time, so that a fork() never finds it half constructed.
Zone s_zone;

// A child process gets the locks as they are at the fork(), and a lock that another thread holds is
// never released in it. The three functions that the mutex guards have such locks inside. So the
// forking thread holds the mutex until the process has been copied.
[[maybe_unused]] const int s_forkHandlers = pthread_atfork(
    [] { s_zone.mutex.lock(); }, [] { s_zone.mutex.unlock(); }, [] { s_zone.mutex.unlock(); });

bool hasVariableChanged()
{
    const QByteArray now = qgetenv("TZ");
    const QByteArray* last = s_zone.variable;
    if (last != nullptr && now == *last && now.isNull() == last->isNull())
        return false;
    delete last;
    s_zone.variable = new QByteArray(now);
    return true;
}

bool hasFileChanged()
{
    constexpr qint64 interval_ms = 100; // stat() costs as much as a write
    timespec clock;
    clock_gettime(CLOCK_MONOTONIC_COARSE, &clock);
    const qint64 now_ms = qint64(clock.tv_sec) * 1000 + clock.tv_nsec / 1000000;
    if (now_ms < s_zone.nextFileCheck_ms)
        return false;
    s_zone.nextFileCheck_ms = now_ms + interval_ms;
    struct stat file = {};
    if (stat(s_zoneFile, &file) != 0)
        file = {};
    const FileState now(file.st_dev, file.st_ino, file.st_mtim.tv_sec, file.st_mtim.tv_nsec);
    return std::exchange(s_zone.file, now) != now;
}

// localtime_r() keeps its first zone until tzset() is called, and tzset() reads the environment
// without the lock that qputenv() holds. So tzset() is only called after a change of the variable
// or the file that determine the zone.
void followZone()
{
    const bool hasOtherVariable = hasVariableChanged();
    if (hasFileChanged() || hasOtherVariable) {
        tzset();
        ++s_zone.version;
    }
}

char* writeNumber(char* to, int value, int digits, char separator)
{
    for (int i = digits - 1; i >= 0; --i) {
        to[i] = static_cast<char>('0' + value % 10);
        value /= 10;
    }
    to[digits] = separator;
    return to + digits + 1;
}

void formatSecond(char* to, const tm& local)
{
    to = writeNumber(to, local.tm_mday, 2, '/');
    to = writeNumber(to, local.tm_mon + 1, 2, '/');
    to = writeNumber(to, local.tm_year + 1900, 4, ' ');
    to = writeNumber(to, local.tm_hour, 2, ':');
    to = writeNumber(to, local.tm_min, 2, ':');
    writeNumber(to, local.tm_sec, 2, ':');
}

QLatin1String text(Cache& cache, qint64 moment_ms)
{
    constexpr int digits = 3;
    const time_t second = moment_ms / 1000;
    const std::lock_guard<std::mutex> lock(s_zone.mutex);
    followZone();
    if (second != cache.second || s_zone.version != cache.zoneVersion) {
        tm local;
        localtime_r(&second, &local);
        formatSecond(cache.text, local);
        cache.second = second;
        cache.zoneVersion = s_zone.version;
    }
    writeNumber(cache.text + s_length - digits, static_cast<int>(moment_ms % 1000), digits, '\0');
    cache.moment_ms = moment_ms;
    return QLatin1String(cache.text, s_length);
}

thread_local Cache s_cache;

} // namespace

QLatin1String logTimestamp()
{
    timespec now;
    clock_gettime(CLOCK_REALTIME, &now);
    const qint64 moment_ms = qint64(now.tv_sec) * 1000 + now.tv_nsec / 1000000;
    return moment_ms == s_cache.moment_ms ? QLatin1String(s_cache.text, s_length)
                                          : text(s_cache, moment_ms);
}

QLatin1String logTimestamp(qint64 moment_ms)
{
    return text(s_cache, moment_ms);
}
