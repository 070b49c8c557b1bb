#include "system/packagesmanager.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "system/timedatectl_p.h"
#include "windowstools.h"

#include <QFile>

namespace zeltools::system
{

namespace
{

// systemd itself stops waiting for a service that does not answer after 25 s.
constexpr std::chrono::seconds s_statusTimeLimit{30};

std::array<PackagesManager::PackageInspectionData, 3> inspectionTable(const Machine& machine)
{
    const QRegularExpression poolServer(QStringLiteral(R"(^\s*server\s+\d[.]pool[.]ntp[.]org)"),
                                        QRegularExpression::MultilineOption);
    return {
        {{QStringLiteral("ntp"),
          {},
          {{machine.ntpConfigurationFile, poolServer}},
          machine.ntpInitScript,
          QStringLiteral("ntpd")},
         {QStringLiteral("tzdata"), {machine.localTimeFile}, {}, {}, {}},
         {QStringLiteral("systemd-timesyncd"), {machine.timeSyncConfigurationFile}, {}, {}, {}}}};
}

LogFormatter logLine(LogLevel::Level level)
{
    return LogFormatter(level).log(Log::SystemPackagesManager);
}

bool exists(const QString& path)
{
    if (QFile::exists(path))
        return true;
    logLine(LogLevel::Info) << "static bool zeltools::system::PackagesManager::packageAvailable("
                               "const PackageInspectionData&)"
                            << "File" << path << "does not exist";
    return false;
}

bool matches(const QString& path, const QRegularExpression& pattern)
{
    if (!exists(path))
        return false;
    QFile file(path);
    const bool isOpen = file.open(QIODevice::ReadOnly | QIODevice::Text);
    const QByteArray content = isOpen ? file.readAll() : QByteArray();
    if (file.error() != QFileDevice::NoError) {
        logLine(LogLevel::Warning).noquote()
            << QString(QLatin1String("Could not open configuration file: ") + path);
        return false;
    }
    if (pattern.match(QString::fromUtf8(content)).hasMatch())
        return true;
    logLine(LogLevel::Info) << "Configuration file" << path << "did not match requirements";
    return false;
}

} // namespace

PackagesManager& PackagesManager::instance()
{
    static auto* const manager = new PackagesManager(Machine{});
    return *manager;
}

PackagesManager::PackagesManager(const Machine& machine)
    : m_machine(machine)
    , m_packages(inspectionTable(machine))
{
    qRegisterMetaType<Package>();
}

PackagesManager::~PackagesManager() = default;

bool PackagesManager::packageAvailable(Package package)
{
    return instance().isAvailable(package);
}

bool PackagesManager::isAvailable(Package package) const
{
    std::optional<bool>& available = m_availability[package];
    if (!available) {
        const PackageInspectionData& data = m_packages[package];
        available = packageAvailable(data);
        logLine(LogLevel::Info) << data.packageName << "availability checked:" << *available;
    }
    return *available;
}

bool PackagesManager::packageAvailable(const PackageInspectionData& data)
{
    if (data.initScript && !exists(*data.initScript))
        return false;
    for (const QString& path : data.files) {
        if (!exists(path))
            return false;
    }
    const auto& configurations = data.configurationFiles;
    for (auto file = configurations.cbegin(); file != configurations.cend(); ++file) {
        if (!matches(file.key(), file.value()))
            return false;
    }
    return true;
}

std::optional<PackagesManager::Package> PackagesManager::ntpPackage() const
{
    for (const Package package : {Ntp, TimeSync}) {
        if (isAvailable(package))
            return package;
    }
    return std::nullopt;
}

std::optional<bool> PackagesManager::ntpState() const
{
    const std::optional<Package> package = ntpPackage();
    if (package == Ntp)
        return QFile::exists(m_machine.ntpStartLink);
    if (package != TimeSync || !mayRun(QStringLiteral("timedatectl status")))
        return false;
    return timeSyncState(s_statusTimeLimit);
}

void PackagesManager::setNtpEnabled(bool on)
{
    const std::optional<Package> package = ntpPackage();
    if (package == Ntp) {
        const PackageInspectionData& data = m_packages[Ntp];
        run(QStringLiteral("update-rc.d -f %1 %2")
                .arg(*data.serviceName, QLatin1String(on ? "defaults" : "remove")));
        run(QStringLiteral("%1 %2").arg(*data.initScript, QLatin1String(on ? "start" : "stop")));
    } else if (package == TimeSync) {
        run(QStringLiteral("timedatectl set-ntp %1").arg(QLatin1String(on ? "true" : "false")));
    }
    Q_EMIT ntpEnabledChanged();
}

bool PackagesManager::mayRun(const QString& command) const
{
    if (!m_machine.isBoard)
        logLine(LogLevel::Info) << "Would run" << command << "(doing nothing on desktop)";
    return m_machine.isBoard;
}

void PackagesManager::run(const QString& command) const
{
    if (!mayRun(command))
        return;
    int exitCode = 0;
    if (!WindowsTools::runCommand(command, QString(), &exitCode))
        logLine(LogLevel::Warning) << command << "ended with exit code" << exitCode;
}

} // namespace zeltools::system
