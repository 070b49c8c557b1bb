#include "filedescriptor.h"
#include "quick/access.h"
#include "quick/bundletask.h"
#include "quick/clock.h"
#include "quick/filesaccess.h"
#include "quick/machineinfo.h"
#include "quick/servicesmodel.h"
#include "quick/timezonesmodel.h"
#include "quick/volumesmodel.h"
#include "system/servicemanager.h"

#include "support.h"
#include "support/machines.h"
#include "support/rows.h"

#include <QStorageInfo>
#include <QtTest>

#include <functional>
#include <memory>

#include <sched.h>
#include <sys/inotify.h>
#include <sys/mount.h>
#include <sys/stat.h>

using namespace zeltools::quick;
using namespace zeltools::system;
using support::currentRow;
using support::LineRecorder;
using support::readFile;
using support::writeFile;

namespace
{

const QDateTime s_time(QDate(2031, 2, 3), QTime(4, 5, 6));

/// The clock of an application, which keeps the time itself.
class HostClock : public DateTimeManager
{
public:
    HostClock()
        : DateTimeManager(nullptr, nullptr)
    {
    }
    QDateTime currentDateTime() const override { return m_time; }
    void setDateTime(const QDateTime& time, bool) override
    {
        if (isBroken)
            return;
        m_time = time;
        Q_EMIT dateTimeChanged();
    }
    bool isBroken = false;

private:
    QDateTime m_time{QDate(2030, 1, 1), QTime(1, 0)};
};

class Light : public Service
{
public:
    Light()
        : Service(Ntp)
    {
    }
    bool available() const override { return true; }
    void enable(bool on) override
    {
        m_isOn = on && !isBroken;
        Q_EMIT enableChanged();
    }
    bool enabled() const override { return m_isOn; }
    void refresh() override {}
    bool isBroken = false;

private:
    bool m_isOn = false;
};

QVariant value(const CountedModel& model, int row, const char* role)
{
    return model.index(row).data(model.roleNames().key(role));
}

int rowOf(const CountedModel& model, const char* role, const QVariant& wanted)
{
    for (int row = 0; row < model.count(); ++row) {
        if (value(model, row, role) == wanted)
            return row;
    }
    return -1;
}

QStringList events(LineRecorder& lines)
{
    QStringList texts;
    for (const auto& line : lines.take()) {
        if (line.level == LogLevel::Event)
            texts.append(line.message.section("| ", -1));
    }
    return texts;
}

/// Without the right to make a mount namespace, the user becomes root of one of his own.
bool enterNamespace()
{
    const QByteArray user = "0 " + QByteArray::number(::geteuid()) + " 1";
    const QByteArray group = "0 " + QByteArray::number(::getegid()) + " 1";
    if (::unshare(CLONE_NEWNS) == 0)
        return true;
    if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
        return false;
    writeFile("/proc/self/setgroups", "deny");
    writeFile("/proc/self/uid_map", user);
    writeFile("/proc/self/gid_map", group);
    return true;
}

bool mountDisk(const QString& path, const char* options)
{
    return QDir().mkpath(path) &&
           ::mount("stick", QFile::encodeName(path).constData(), "tmpfs", 0, options) == 0;
}

using Change = std::tuple<const char*, Access::Level, std::function<QString()>, QString>;
using Bundle =
    std::tuple<const char*, std::function<void(BundleTask&)>, BundleTask::Status, const char*>;
using File = std::tuple<const char*, const char*, const char*>;

} // namespace

class TestSystem : public QObject
{
    Q_OBJECT

    const support::TemporaryLayout m_layout;
    const QTemporaryDir m_dir;
    const QTemporaryDir m_etc;
    const bool m_hasNamespace = enterNamespace(); // before there are threads
    bool m_mayMount = false;
    HostClock m_clock;
    Light* const m_light = new Light;

    QString path(const QString& name) const { return m_dir.filePath(name); }

private Q_SLOTS:
    void initTestCase()
    {
        const QByteArray etc = QFile::encodeName(m_etc.path());
        m_mayMount = m_hasNamespace &&
                     ::mount("", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                     ::mount("none", "/media", "tmpfs", 0, nullptr) == 0 &&
                     ::mount(etc.constData(), "/etc", nullptr, MS_BIND, nullptr) == 0;
        if (!m_mayMount)
            QSKIP("needs a mount namespace of its own", SkipSingle);
        qunsetenv("TZ");
        QVERIFY(QFile::link("/usr/share/zoneinfo/Europe/Rome", "/etc/localtime"));
        QVERIFY(QDir(m_dir.path()).mkpath("root/sub") && QDir(m_dir.path()).mkpath("rootless"));
        ServiceManager::instance().add(std::unique_ptr<Service>(m_light));
        Access::instance()->setUser("Anna");
    }

    void aChangeNeedsAccessAndSaysWho_data()
    {
        const auto setTime = [this] {
            Clock clock;
            clock.setDateTimeManager(&m_clock);
            const QString reason = clock.set(s_time);
            return reason.isEmpty() ? clock.set(s_time) : reason; // no event line of its own
        };
        const auto remove = [this] {
            FilesAccess files;
            files.setRoots({path("root")});
            const QString reason = files.remove("/media/../media/link/old");
            return QFile::exists(path("root/old")) == reason.isEmpty() ? "wrong" : reason;
        };
        writeFile(path("root/old"), "x");
        QVERIFY(QFile::link(path("root"), "/media/link"));
        support::addRows<Change>(
            {{"time", Access::Operator, setTime,
              "Clock set from 2030-01-01 01:00:00 to 2031-02-03 04:05:06"},
             {"zone", Access::Operator, [] { return Clock().setTimeZone("Asia/Kolkata"); },
              "Time zone switched from Europe/Rome to Asia/Kolkata"},
             {"network time", Access::Operator, [] { return ServicesModel().setEnabled(0, true); },
              "Service Ntp switched on"},
             {"deletion", Access::Technician, remove,
              "File " + QFileInfo(path("root")).canonicalFilePath() + "/old deleted"}});
    }
    void aChangeNeedsAccessAndSaysWho()
    {
        const auto& [name, level, change, event] = currentRow<Change>();
        LineRecorder lines;
        Access::instance()->setLevel(Access::Level(level - 1));
        QCOMPARE(change(), Access::instance()->refusal(level));
        QCOMPARE(events(lines), QStringList());
        Access::instance()->setLevel(level);
        QCOMPARE(change(), QString());
        QCOMPARE(events(lines), QStringList(QString("Service: %1 (by Anna)").arg(event)));
    }

    void whatDoesNotTakeEffectIsNoChange()
    {
        LineRecorder lines;
        auto host = std::make_unique<HostClock>();
        Clock clock;
        clock.setDateTimeManager(host.get());
        host->isBroken = true;
        QVERIFY(!clock.set(s_time).isEmpty());
        QVERIFY(!clock.set(QDateTime()).isEmpty());
        QVERIFY(!clock.setTimeZone("Mars/Olympus").isEmpty());
        QCOMPARE(clock.setTimeZone(clock.timeZone()), QString());
        ServicesModel services;
        m_light->isBroken = true;
        m_light->enable(false);
        QVERIFY(!services.setEnabled(0, true).isEmpty() && !services.setEnabled(1, true).isEmpty());
        for (const auto& line : lines.take())
            QVERIFY2(line.level != LogLevel::Event, qPrintable(line.message));

        const QSignalSpy changes(&clock, &Clock::dateTimeChanged);
        host.reset();
        QCOMPARE(changes.size(), 1);
        QVERIFY(clock.dateTime().secsTo(QDateTime::currentDateTime()) < 60);
    }

    void theClockFollowsASetTime()
    {
        Clock clock;
        clock.setDateTimeManager(&m_clock);
        const QSignalSpy changes(&clock, &Clock::dateTimeChanged);
        m_clock.setDateTime(QDateTime(s_time.date(), s_time.time(), Qt::OffsetFromUTC, -12600),
                            false);
        QCOMPARE(changes.size(), 1);
        QCOMPARE(clock.dateTime().time(), s_time.time());
        QCOMPARE(clock.offsetText(), QString("UTC-03:30"));
    }

    void zonesAreFoundByAreaAndName()
    {
        TimeZonesModel zones;
        QVERIFY(rowOf(zones, "name", "Europe") >= 0);
        QCOMPARE(value(zones, rowOf(zones, "name", "Asia"), "isCurrent"), QVariant(true));
        zones.setFilter("york");
        QCOMPARE(zones.count(), 1);
        QCOMPARE(value(zones, 0, "name"), QVariant("America/New York"));
        QCOMPARE(value(zones, 0, "zone"), QVariant("America/New_York"));
        zones.setFilter({});
        zones.setArea("Asia");
        const int tokyo = rowOf(zones, "name", "Tokyo");
        QCOMPARE(value(zones, tokyo, "offsetMinutes"), QVariant(540));
        QCOMPARE(value(zones, tokyo, "isCurrent"), QVariant(false));
        // Another program switches the zone.
        const QSignalSpy changes(&zones, &QAbstractItemModel::dataChanged);
        QVERIFY(QFile::link("/usr/share/zoneinfo/Asia/Tokyo", "/etc/new") &&
                ::rename("/etc/new", "/etc/localtime") == 0);
        QTRY_COMPARE(changes.size(), 1);
        QCOMPARE(value(zones, tokyo, "isCurrent"), QVariant(true));
    }

    void servicesAreFollowed()
    {
        ServicesModel services;
        const QSignalSpy changes(&services, &QAbstractItemModel::dataChanged);
        m_light->isBroken = false;
        m_light->enable(true);
        m_light->enable(true);
        QCOMPARE(changes.size(), 1);
        QCOMPARE(value(services, 0, "name"), QVariant("Ntp"));
        QCOMPARE(value(services, 0, "isEnabled"), QVariant(true));
    }

    void volumesAppearAndVanish()
    {
        VolumesModel volumes;
        const QSignalSpy counts(&volumes, &CountedModel::countChanged);
        const int others = volumes.count();
        QVERIFY(mountDisk("/media/b", "size=64k") && mountDisk("/media/a \\\n", "size=128k"));
        QTRY_COMPARE(volumes.count(), others + 2);
        const int b = rowOf(volumes, "path", "/media/b");
        QCOMPARE(rowOf(volumes, "name", "a \\ "), b - 1);
        QTRY_COMPARE(value(volumes, b, "total"), QVariant(qint64(65536)));
        QCOMPARE(value(volumes, b, "isWritable"), QVariant(true));
        QVERIFY(::mount("", "/media/b", "", MS_REMOUNT | MS_RDONLY, nullptr) == 0);
        QTRY_COMPARE(value(volumes, b, "isWritable"), QVariant(false));
        const auto countsBefore = counts.size();
        QVERIFY(::umount("/media/a \\\n") == 0);
        QTRY_COMPARE(volumes.count(), others + 1);
        QCOMPARE(counts.size(), countsBefore + 1);
        QCOMPARE(value(volumes, b - 1, "path"), QVariant("/media/b"));
    }

    void aBundleEndsOnce_data()
    {
        QFile log(Path::instance()->debugLogsDir + "zel_logs.log");
        QVERIFY(log.open(QIODevice::WriteOnly));
        for (int i = 0; i < 1000000; ++i) { // cannot be compressed to a fraction
            const quint32 number = QRandomGenerator::global()->generate();
            log.write(reinterpret_cast<const char*>(&number), sizeof number);
        }
        const auto nothing = [](BundleTask&) {};
        const auto unplug = [](BundleTask&) { ::umount2("/media/stick", MNT_DETACH); };
        const auto fill = [](BundleTask&) {
            ::mount("", "/media/stick", "", MS_REMOUNT, "size=1m");
        };
        support::addRows<Bundle>(
            {{"done", nothing, BundleTask::Done, ""},
             {"canceled", &BundleTask::cancel, BundleTask::Canceled, ""},
             {"the stick is unplugged", unplug, BundleTask::Failed, "cannot"},
             {"the stick is full", fill, BundleTask::Failed, "No space left on device"}});
    }
    void aBundleEndsOnce()
    {
        const auto& [name, disturb, status, error] = currentRow<Bundle>();
        LineRecorder lines;
        BundleTask task;
        connect(&task, &BundleTask::statusChanged, this, [&, act = disturb] {
            if (task.isRunning())
                act(task);
        });
        QVERIFY(mountDisk("/media/stick", "size=16m") && QDir().mkpath("/media/stick/in"));
        if (!task.isAvailable()) {
            task.start();
            QCOMPARE(task.status(), BundleTask::Failed);
            return;
        }
        task.setFolder("/media/stick/in");
        QSignalSpy statuses(&task, &BundleTask::statusChanged);
        task.start();
        QVERIFY(task.isRunning());
        QTRY_COMPARE_WITH_TIMEOUT(task.status(), status, 30000);
        QCOMPARE(statuses.size(), 2);
        QVERIFY2(task.error().contains(error) && task.error().isEmpty() == QString(error).isEmpty(),
                 qPrintable(task.error()));
        const bool isThere = QFile::exists("/media/stick/in/" + task.fileName());
        QCOMPARE(isThere, status == BundleTask::Done);
        QCOMPARE(task.progress() == 1, status == BundleTask::Done);
        QVERIFY(events(lines).join("").contains(task.fileName() + " begun (by "));
        QVERIFY(task.fileName().startsWith("zeltools-"));
        ::umount2("/media/stick", MNT_DETACH);

        task.setFileName("../outside.tar.zst");
        for (const QString& folder : {QString("/media/nowhere"), path("root/sub")}) {
            task.setFolder(folder);
            task.start();
            QCOMPARE(task.status(), BundleTask::Failed);
        }
    }

    void aBundleThatIsLeftIsCancelled()
    {
        LineRecorder lines;
        const auto count = [] { return QCoreApplication::instance()->children().size(); };
        const auto countBefore = count();
        auto task = std::make_unique<BundleTask>();
        if (!task->isAvailable())
            return;
        task->setFolder(path(""));
        task->start();
        const QString file = path("") + task->fileName();
        task.reset();
        QCOMPARE(count(), countBefore + 1); // Nobody has waited for its end.
        QTRY_COMPARE(count(), countBefore);
        QVERIFY(!QFile::exists(file));
        QVERIFY(events(lines).join("").contains(" begun (by "));
    }

    void onlyFilesBelowTheRootsAreRead_data()
    {
        writeFile(path("root/sub/a"),
                  "a\tb\n\x1b[1m\xff<b>\xc3\xa4" + QByteArray(1, '\0') + "more");
        writeFile(path("rootless/b"), "secret");
        QVERIFY(QFile::link(path("rootless"), path("root/out")));
        QVERIFY(QFile::link(path("rootless/b"), path("root/link")));
        QVERIFY(QFile::link("sub/a", path("root/inside")));
        QVERIFY(::mkfifo(QFile::encodeName(path("root/fifo")).constData(), 0600) == 0);
        constexpr auto s_text = "a\tb\n\ufffd[1m\ufffd<b>\u00e4\u2400m";
        support::addRows<File>({{"a file", "root/sub/a", s_text},
                                {"a link inside", "root/inside", s_text},
                                {"dots inside", "root/sub/../sub/a", s_text},
                                {"dots that lead out", "root/../rootless/b", nullptr},
                                {"a link that leads out", "root/link", nullptr},
                                {"a folder that leads out", "root/out/b", nullptr},
                                {"a folder of a similar name", "rootless/b", nullptr},
                                {"a pipe", "root/fifo", nullptr},
                                {"a folder", "root/sub", nullptr},
                                {"nothing", "root/none", nullptr}});
    }
    void onlyFilesBelowTheRootsAreRead()
    {
        const auto& [name, file, text] = currentRow<File>();
        // What is not read is not opened.
        const zeltools::FileDescriptor watch(::inotify_init1(IN_NONBLOCK));
        ::inotify_add_watch(watch, QFile::encodeName(path(file)).constData(), IN_OPEN);
        FilesAccess files;
        QCOMPARE(files.readText(path(file), 100), QString());
        files.setRoots({path("none"), path("root")});
        QCOMPARE(files.readText(path(file), 16), QString::fromUtf8(text));
        QCOMPARE(files.error().isEmpty(), text != nullptr);
        char event[sizeof(inotify_event) + NAME_MAX + 1];
        QCOMPARE(::read(watch, event, sizeof event) > 0, text != nullptr);
        Access::instance()->setLevel(Access::Technician);
        if (!text && QString(file).endsWith("b"))
            QVERIFY(!files.remove(path(file)).isEmpty() && QFile::exists(path("rootless/b")));
    }

    void aLinkIsDeletedAndNotItsTarget()
    {
        FilesAccess files;
        files.setRoots({path("root")});
        QCOMPARE(files.remove(path("root/link")), QString());
        QVERIFY(QFile::exists(path("rootless/b")) && !QFileInfo(path("root/link")).isSymLink());
        QVERIFY(!files.remove(path("root/sub")).isEmpty());
    }

    void theOverviewHasFacts()
    {
        MachineInfo info;
        const QStorageInfo disk(Path::instance()->debugLogsDir);
        QCOMPARE(info.diskTotal(), disk.bytesTotal());
        QVERIFY(info.memoryAvailable() > 1 << 20 && info.memoryAvailable() < info.memoryTotal());
        const qint64 uptime_s = readFile("/proc/uptime").split('.').first().toLongLong();
        QVERIFY(qAbs(info.uptimeSeconds() - uptime_s) < 5);
        QVERIFY(!info.model().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestSystem)
#include "tst_quick_system.moc"
