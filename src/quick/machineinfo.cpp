#include "quick/machineinfo.h"

#include "envvar/envvars.h"
#include "libraryversion.h"
#include "machine.h"
#include "path.h"
#include "quick/diskspace_p.h"
#include "quick/language_p.h"
#include "quick/systemclock_p.h"
#include "system/datetimemanager.h"

#include <QCoreApplication>
#include <QFile>
#include <QSysInfo>

#include <time.h>

namespace zeltools::quick
{

namespace
{

/// The value of a line such as "MemTotal:  8123456 kB" in bytes.
qint64 memoryFact(const QByteArray& facts, const QByteArray& name)
{
    constexpr int KiB_B = 1024;
    const auto begin = facts.indexOf(name + ':');
    if (begin < 0)
        return 0;
    const QByteArray rest = facts.mid(begin + name.size() + 1);
    return rest.left(rest.indexOf('k')).trimmed().toLongLong() * KiB_B;
}

QByteArray memoryFacts()
{
    QFile file(QStringLiteral("/proc/meminfo"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

qint64 uptime_s()
{
    timespec time = {};
    ::clock_gettime(CLOCK_BOOTTIME, &time);
    return time.tv_sec;
}

} // namespace

MachineInfo::MachineInfo(QObject* parent)
    : QObject(parent)
{
    connect(systemClock(), &system::DateTimeManager::dateTimeChanged, this, &MachineInfo::refresh);
    connect(Language::instance(), &Language::changed, this, &MachineInfo::refreshed); // for texts
    refresh();
}

MachineInfo::~MachineInfo() = default;

QString MachineInfo::libraryVersion() const
{
    return zeltools::libraryVersion().toString();
}

QString MachineInfo::qtVersion() const
{
    return QString::fromLatin1(qVersion());
}

QString MachineInfo::kernelVersion() const
{
    return QSysInfo::kernelVersion();
}

QString MachineInfo::hostName() const
{
    return QSysInfo::machineHostName();
}

QString MachineInfo::model() const
{
    using namespace envvar::EnvVars;
    for (const envvar::EnvVarBool* const model :
         {&ModelArietta, &ModelCadenza, &ModelSonata, &ModelVivo}) {
        if ((*model)())
            return model->name().section(QLatin1Char('_'), 1);
    }
    return {};
}

QString MachineInfo::build() const
{
    return platform::isBoard ? QStringLiteral("board") : QStringLiteral("desktop");
}

QString MachineInfo::applicationName() const
{
    return QCoreApplication::applicationName();
}

QString MachineInfo::applicationVersion() const
{
    return QCoreApplication::applicationVersion();
}

void MachineInfo::refresh()
{
    const QByteArray memory = memoryFacts();
    m_memoryTotal_B = memoryFact(memory, "MemTotal");
    m_memoryAvailable_B = memoryFact(memory, "MemAvailable");
    const QString logs = Path::exists() ? Path::instance()->debugLogsDir : QString();
    const DiskSpace disk = diskSpace(logs.isEmpty() ? QStringLiteral("/") : logs);
    m_diskTotal_B = disk.total_B;
    m_diskAvailable_B = disk.available_B;
    m_uptime_s = uptime_s();
    Q_EMIT refreshed();
}

} // namespace zeltools::quick
