#pragma once

#include <zeltools/logging/logmodules.h>

#include <QObject>

namespace zeltools
{

/// Keeps the last error text of a component for the user interface and logs each new one under the
/// component's modules. An object belongs to one thread.
class ZELTOOLS_EXPORT LastErrorTracker : public QObject
{
    Q_OBJECT

public:
    /// Errors are logged under the modules.
    explicit LastErrorTracker(const LogModules& modules, QObject* parent = nullptr);
    ~LastErrorTracker() override;

    /// An empty text clears the error without a log line.
    void setError(const QString& text);

    /// The text of the last setError().
    Q_INVOKABLE QString error() const { return m_lastError; }
    /// Whether the last error has a text.
    Q_INVOKABLE bool hasError() const { return !m_lastError.isEmpty(); }

private:
    QString m_lastError;
    LogModules m_modules;
};

} // namespace zeltools
