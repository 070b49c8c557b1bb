#pragma once

#include <zeltools/machine.h>
#include <zeltools/zeltools_export.h>

#include <QMap>
#include <QObject>
#include <QRegularExpression>
#include <QStringList>

#include <array>
#include <optional>

namespace zeltools::system
{

/// Detects the time packages on the machine's image, and switches the system's own synchronization
/// with network time on and off. On the desktop it only logs the commands, because the developer's
/// clock does not belong to the machine.
///
/// The manager belongs to one thread. It logs its results and actions under
/// Log::SystemPackagesManager.
class ZELTOOLS_EXPORT PackagesManager : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool ntpAvailable READ ntpAvailable CONSTANT)
    Q_PROPERTY(bool ntpEnabled READ ntpEnabled NOTIFY ntpEnabledChanged)

public:
    /// The packages that the library knows.
    enum Package { Ntp, Tzdata, TimeSync };
    Q_ENUM(Package)

    /// The conditions in the file system under which a package counts as available.
    struct PackageInspectionData
    {
        QString packageName; ///< The name in log lines.
        QStringList files;   ///< Files that must exist.
        /// Files whose whole content must match. In multi-line patterns "^" matches at each line.
        QMap<QString, QRegularExpression> configurationFiles;
        /// A file that must exist, too; it is checked first.
        std::optional<QString> initScript;
        /// The name under which the init script is registered.
        std::optional<QString> serviceName;
    };

    /// The only manager, created by the first call and never destroyed.
    static PackagesManager& instance();

    /// The result of isAvailable() of the only manager.
    static bool packageAvailable(Package package);
    /// Whether the package is available. The first result is kept until the process ends, since the
    /// image does not change while the machine runs.
    Q_INVOKABLE bool isAvailable(zeltools::system::PackagesManager::Package package) const;
    /// Whether the conditions hold, checked at each call. The first condition that fails is an Info
    /// line; a configuration file that cannot be opened is a Warning.
    static bool packageAvailable(const PackageInspectionData& data);

    /// The package that keeps network time: `Ntp` if it is available, otherwise `TimeSync`,
    /// otherwise none.
    std::optional<Package> ntpPackage() const;
    /// Whether there is a package that keeps network time, see ntpPackage().
    bool ntpAvailable() const { return ntpPackage().has_value(); }

    /// Whether that package is switched on. For `TimeSync` the call blocks while `timedatectl`
    /// runs, at most 30 s. If that fails, it is an Error line and the package counts as off; on the
    /// desktop, `TimeSync` always counts as off.
    bool ntpEnabled() const { return ntpState().value_or(false); }
    /// The same as ntpEnabled(), but without a value if `timedatectl` could not be run or did not
    /// end.
    std::optional<bool> ntpState() const;
    /// Switches that package; without one, it only emits the signal. The call blocks while the
    /// commands run (see WindowsTools). A failed command is a Warning, and the next one still runs.
    void setNtpEnabled(bool on);

Q_SIGNALS:
    /// Emitted after each setNtpEnabled(), even if nothing has changed.
    void ntpEnabledChanged();

protected:
    /// Constructs a manager for another machine.
    explicit PackagesManager(const Machine& machine);
    ~PackagesManager() override;

private:
    bool mayRun(const QString& command) const;
    void run(const QString& command) const;

    const Machine m_machine;
    const std::array<PackageInspectionData, 3> m_packages;
    mutable std::array<std::optional<bool>, 3> m_availability; // the kept results
};

} // namespace zeltools::system
