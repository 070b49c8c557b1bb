#pragma once

#include <zeltools/quick/access.h>

#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QString>
#include <QStringList>
#include <qqml.h>

class LogManager;

namespace dmesg
{
class Dmesg;
}

namespace monitored_threads
{
class Monitor;
}

namespace zeltools::system
{
class PackagesManager;
class ServiceManager;
} // namespace zeltools::system

namespace zeltools::quick
{

/// The library's process-wide objects, for QML: `Library.logManager.logFilesHealthy`. They are
/// those that C++ gets by `instance()`, and QML never destroys them.
///
/// `logManager` is null in a program without a path layout (see LogManager).
class ZELTOOLS_EXPORT Library : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(Library)
    QML_SINGLETON
    /// The process-wide LogManager, or null.
    Q_PROPERTY(LogManager* logManager READ logManager CONSTANT)
    /// The access level of the person in front of the screen.
    Q_PROPERTY(zeltools::quick::Access* access READ access CONSTANT)
    /// The packages of the system.
    Q_PROPERTY(zeltools::system::PackagesManager* packages READ packages CONSTANT)
    /// The services of the application, such as network time.
    Q_PROPERTY(zeltools::system::ServiceManager* services READ services CONSTANT)
    /// The monitor of the threads.
    Q_PROPERTY(monitored_threads::Monitor* monitor READ monitor CONSTANT)
    /// The capture of the kernel log.
    Q_PROPERTY(dmesg::Dmesg* kernelLog READ kernelLog CONSTANT)
    Q_PROPERTY(QString version READ version CONSTANT)
    /// The language of all screens of this process: one of `languages`, or empty for that of the
    /// system. An unknown one counts as "en".
    Q_PROPERTY(QString language READ language WRITE setLanguage NOTIFY languageChanged)
    /// The codes of the languages that the screen has texts for, such as "en".
    Q_PROPERTY(QStringList languages READ languages CONSTANT)
    /// Whether the present language is written from right to left.
    Q_PROPERTY(bool rightToLeft READ isRightToLeft NOTIFY languageChanged)

public:
    explicit Library(QObject* parent = nullptr);
    ~Library() override;

    LogManager* logManager() const;
    Access* access() const;
    system::PackagesManager* packages() const;
    system::ServiceManager* services() const;
    monitored_threads::Monitor* monitor() const;
    dmesg::Dmesg* kernelLog() const;
    /// The version of the library that this process has loaded, for example "0.1.0".
    QString version() const;

    QString language() const;
    void setLanguage(const QString& language);
    QStringList languages() const;
    bool isRightToLeft() const;

    /// The two largest units of a time in whole seconds, for example "3 min 20 s", in the language
    /// and the digits of the screen.
    Q_INVOKABLE QString duration(double milliseconds) const;

Q_SIGNALS:
    /// Is emitted before the engine translates its bindings again.
    void languageChanged();
};

} // namespace zeltools::quick
