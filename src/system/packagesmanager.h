#pragma once

#include <zeltools/zeltools_export.h>

#include <QMap>
#include <QObject>
#include <QRegularExpression>
#include <QStringList>

#include <array>
#include <chrono>
#include <optional>

namespace zeltools::system
{

/// Finds out which packages for keeping time the image of the machine has, and switches the
/// system's own synchronisation with network time on and off. On the desktop it logs the commands
/// that it would run and runs none: the developer's clock is not ours.
///
/// Belongs to one thread. What it finds and does is logged under Log::SystemPackagesManager.
class ZELTOOLS_EXPORT PackagesManager : public QObject
{
    Q_OBJECT

public:
    enum Package { Ntp, Tzdata, TimeSync };
    Q_ENUM(Package)

    /// How to see from the file system that a package is there and of use.
    struct PackageInspectionData
    {
        QString packageName;
        QStringList files;
        /// Files whose whole content has to match. In multi-line patterns "^" begins each line.
        QMap<QString, QRegularExpression> configurationFiles;
        /// A file that has to exist too; looked for first.
        std::optional<QString> initScript;
        /// The name under which the init script is registered.
        std::optional<QString> serviceName;
    };

    /// Created by the first call and never destroyed.
    static PackagesManager& instance();

    /// Looks once, and gives the same answer until the process ends: images do not change while the
    /// machine runs.
    static bool packageAvailable(Package package);
    /// Looks each time. The first thing that is missing or does not match is an Info line, a
    /// configuration file that cannot be opened a Warning.
    static bool packageAvailable(const PackageInspectionData& data);

    /// The package that keeps network time: `Ntp` where it is available, else `TimeSync`, else
    /// nothing.
    std::optional<Package> ntpPackage() const;
    bool ntpAvailable() const { return ntpPackage().has_value(); }

    /// Whether that package is switched on. Blocks while `timedatectl` is asked about `TimeSync`,
    /// 30 s at the longest; one that cannot answer is an Error line and counts as off, and so does
    /// `TimeSync` on the desktop.
    bool ntpEnabled() const { return ntpState().value_or(false); }
    /// The same; nothing when `timedatectl` could not be run or has not come to an end.
    std::optional<bool> ntpState() const;
    /// Switches that package; without one, only emits the signal. Blocks while the commands run
    /// (see WindowsTools), none of which keeps the next one from running: a failure is a Warning.
    void setNtpEnabled(bool on);

Q_SIGNALS:
    /// After each setNtpEnabled(), also when nothing has changed.
    void ntpEnabledChanged();

private:
    friend class TestTimeServices; // each image that it tries has its own /etc: nothing is cached

    PackagesManager();
    ~PackagesManager() override;

    static std::optional<bool> timeSyncState(std::chrono::milliseconds timeLimit);
    bool mayRun(const QString& command) const;
    void run(const QString& command) const;

    static std::array<std::optional<bool>, 3> s_availability;
    bool m_isBoard;
};

} // namespace zeltools::system
