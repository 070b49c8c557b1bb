#include "system/zonewatch_p.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "machine.h"

#include <QFile>
#include <QFileInfo>
#include <QTimeZone>

#include <array>
#include <cerrno>

#include <sys/inotify.h>
#include <unistd.h>

namespace zeltools::system
{

ZoneWatch::ZoneWatch(const Machine& machine)
    : m_folder(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
    const QByteArray folder = QFile::encodeName(QFileInfo(machine.localTimeFile).path());
    constexpr uint32_t changes = IN_CREATE | IN_DELETE | IN_MOVED_TO | IN_CLOSE_WRITE;
    if (m_folder < 0 || ::inotify_add_watch(m_folder, folder.constData(), changes) < 0) {
        LogFormatter(LogLevel::Warning).log(Log::Machine).noquote()
            << "Changes of the time zone are not noticed:" << qt_error_string(errno);
        return;
    }
    forget();
    m_settling.setSingleShot(true);
    m_settling.setInterval(std::chrono::milliseconds(100));
    connect(&m_settling, &QTimer::timeout, this, &ZoneWatch::compare);
    // A notifier needs an event loop, but the kernel already collects what happens before.
    QTimer::singleShot(0, this, &ZoneWatch::watch);
}

ZoneWatch::~ZoneWatch() = default;

void ZoneWatch::forget()
{
    m_zone = QTimeZone::systemTimeZoneId();
}

void ZoneWatch::watch()
{
    m_notifier = std::make_unique<QSocketNotifier>(m_folder, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] {
        std::array<char, 4096> events; // Any of them may be a part of a switch.
        while (::read(m_folder, events.data(), events.size()) > 0) {
        }
        if (!m_settling.isActive())
            m_settling.start();
    });
}

void ZoneWatch::compare()
{
    const QByteArray before = m_zone;
    forget();
    if (m_zone != before)
        Q_EMIT zoneChanged();
}

} // namespace zeltools::system
