#pragma once

#include "logging/logmodules.h"
#include "logging/lognode.h"
#include "path.h"

#include <QDir>
#include <QFile>
#include <QMutex>
#include <QTemporaryDir>
#include <QVector>

#include <cstdio>
#include <utility>

#include <unistd.h>

/// What the tests of logging share.
namespace support
{

/// Keeps every line that is relayed while it lives, from whatever thread.
class LineRecorder : public QObject
{
public:
    struct Line
    {
        LogLevel::Level level;
        LogModules modules;
        QString message;
    };

    LineRecorder()
    {
        connect(
            LogNode::instance(), &LogNode::logged, this,
            [this](LogLevel::Level level, const LogModules& modules, const QString& message) {
                const QMutexLocker locker(&m_mutex);
                m_lines.append({level, modules, message});
            },
            Qt::DirectConnection);
    }
    ~LineRecorder() override { disconnect(LogNode::instance(), nullptr, this, nullptr); }

    QVector<Line> take()
    {
        const QMutexLocker locker(&m_mutex);
        return std::exchange(m_lines, {});
    }
    QStringList takeMessages()
    {
        QStringList messages;
        for (const Line& line : take())
            messages.append(line.message);
        return messages;
    }

private:
    QMutex m_mutex;
    QVector<Line> m_lines;
};

/// Catches what goes to standard error while it lives.
class StandardErrorCapture
{
public:
    StandardErrorCapture()
        : m_kept(dup(STDERR_FILENO))
    {
        if (!m_file || dup2(fileno(m_file), STDERR_FILENO) < 0)
            qFatal("standard error cannot be caught");
    }
    ~StandardErrorCapture()
    {
        dup2(m_kept, STDERR_FILENO);
        close(m_kept);
        fclose(m_file);
    }
    Q_DISABLE_COPY(StandardErrorCapture)

    QByteArray text() const
    {
        QByteArray content(static_cast<int>(lseek(fileno(m_file), 0, SEEK_END)), '\0');
        const ssize_t size = pread(fileno(m_file), content.data(), size_t(content.size()), 0);
        return content.left(static_cast<int>(size));
    }

private:
    FILE* m_file = tmpfile();
    int m_kept;
};

/// An environment variable with another value, or none, while it lives.
class EnvironmentGuard
{
public:
    EnvironmentGuard(const char* name, const QByteArray& value)
        : m_name(name)
        , m_kept(qgetenv(name))
        , m_wasSet(qEnvironmentVariableIsSet(name))
    {
        qputenv(name, value);
    }
    ~EnvironmentGuard() { m_wasSet ? qputenv(m_name, m_kept) : qunsetenv(m_name); }
    Q_DISABLE_COPY(EnvironmentGuard)

private:
    const char* m_name;
    QByteArray m_kept;
    bool m_wasSet;
};

/// Whether the call ends with this exception.
template <typename Exception, typename Call>
bool throws(const Call& call)
{
    try {
        call();
    } catch (const Exception&) {
        return true;
    }
    return false;
}

inline QByteArray readFile(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<cannot be read>");
}

inline void writeFile(const QString& name, const QByteArray& content)
{
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("%s cannot be written", qPrintable(name));
}

/// The path layout in a folder of its own, for as long as the test runs.
class TemporaryLayout
{
public:
    TemporaryLayout()
    {
        const QString application = m_folder.filePath("opt/bin");
        QDir().mkpath(application);
        Path::instance()->init(application, "default", "default");
    }

private:
    QTemporaryDir m_folder;
};

} // namespace support
