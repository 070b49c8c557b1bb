#include "quick/library.h"

#include "dmesg/dmesg.h"
#include "libraryversion.h"
#include "logging/logmanager.h"
#include "monitoredthreads/monitor.h"
#include "path.h"
#include "quick/durationtext_p.h"
#include "quick/language_p.h"
#include "system/packagesmanager.h"
#include "system/servicemanager.h"

#include <QQmlEngine>

#include <chrono>

namespace zeltools::quick
{

namespace
{

// An object without a parent that a property returns would otherwise be destroyed by QML's garbage
// collector.
template <typename Object>
Object* kept(Object* object)
{
    QQmlEngine::setObjectOwnership(object, QQmlEngine::CppOwnership);
    return object;
}

} // namespace

Library::Library(QObject* parent)
    : QObject(parent)
{
    connect(Language::instance(), &Language::changed, this, [this] {
        Q_EMIT languageChanged();
        if (QQmlEngine* const engine = qmlEngine(this))
            engine->retranslate();
    });
}

Library::~Library() = default;

LogManager* Library::logManager() const
{
    // Without a path layout, instance() would end the program.
    return Path::exists() ? kept(LogManager::instance()) : nullptr;
}

Access* Library::access() const
{
    return kept(Access::instance());
}

system::PackagesManager* Library::packages() const
{
    return kept(&system::PackagesManager::instance());
}

system::ServiceManager* Library::services() const
{
    return kept(&system::ServiceManager::instance());
}

monitored_threads::Monitor* Library::monitor() const
{
    return kept(monitored_threads::Monitor::instance());
}

dmesg::Dmesg* Library::kernelLog() const
{
    return kept(dmesg::Dmesg::instance());
}

QString Library::version() const
{
    return libraryVersion().toString();
}

QString Library::language() const
{
    return Language::instance()->code();
}

void Library::setLanguage(const QString& language)
{
    Language::instance()->setCode(language);
}

QStringList Library::languages() const
{
    return Language::available();
}

QString Library::duration(double milliseconds) const
{
    constexpr double second_ms = 1000;
    return durationText(std::chrono::seconds(qint64(milliseconds / second_ms)));
}

bool Library::isRightToLeft() const
{
    return Language::instance()->isRightToLeft();
}

} // namespace zeltools::quick
