#include "logging/logtimestamp.h"

#include <QByteArray>
#include <QHash>

#include <mutex>
#include <tuple>

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
    uint zoneVariable = 0; // hash
    char text[s_length + 1] = {};
};

// The variable; device, number and time of the file.
using ZoneSource = std::tuple<QByteArray, dev_t, ino_t, time_t, long>;

// localtime_r() keeps its first zone until tzset() is called, and tzset() reads the environment
// without the lock that qputenv() holds. So tzset() is only called after a change of the variable
// or the file that determine the zone.
void followZone(const QByteArray& variable)
{
    struct stat file = {};
    if (variable.isNull() && stat(s_zoneFile, &file) != 0)
        file = {};
    const ZoneSource now(variable, file.st_dev, file.st_ino, file.st_mtim.tv_sec,
                         file.st_mtim.tv_nsec);
    static std::mutex mutex;
    static ZoneSource* const last = [] {
        tzset();
        return new ZoneSource;
    }();
    const std::lock_guard<std::mutex> lock(mutex);
    if (now != *last) {
        *last = now;
        tzset();
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

void format(char* to, const tm& local, int millisecond)
{
    to = writeNumber(to, local.tm_mday, 2, '/');
    to = writeNumber(to, local.tm_mon + 1, 2, '/');
    to = writeNumber(to, local.tm_year + 1900, 4, ' ');
    to = writeNumber(to, local.tm_hour, 2, ':');
    to = writeNumber(to, local.tm_min, 2, ':');
    to = writeNumber(to, local.tm_sec, 2, ':');
    writeNumber(to, millisecond, 3, '\0');
}

} // namespace

QLatin1String logTimestamp()
{
    timespec now;
    clock_gettime(CLOCK_REALTIME, &now);
    return logTimestamp(qint64(now.tv_sec) * 1000 + now.tv_nsec / 1000000);
}

QLatin1String logTimestamp(qint64 moment_ms)
{
    static thread_local Cache cache;
    const QByteArray variable = qgetenv("TZ");
    const uint zoneVariable = qHash(variable);
    if (moment_ms != cache.moment_ms || zoneVariable != cache.zoneVariable) {
        followZone(variable);
        const time_t second = moment_ms / 1000;
        tm local;
        localtime_r(&second, &local);
        format(cache.text, local, static_cast<int>(moment_ms % 1000));
        cache.moment_ms = moment_ms;
        cache.zoneVariable = zoneVariable;
    }
    return QLatin1String(cache.text, s_length);
}
