#pragma once

#include "logging/loglevel.h"

#include <QString>
#include <QStringMatcher>

namespace zeltools::quick
{

/// A line that LogModel keeps.
struct KeptLine
{
    qint64 time_ms;
    quint64 modules;
    LogLevel::Level level;
    qint32 thread;
    bool isCut; ///< Whether the line was longer than the text.
    QString text;
};

/// Tells which lines LogModel shows. See the properties of LogModel.
class LogFilter
{
public:
    LogLevel::Level level() const { return m_level; }
    void setLevel(LogLevel::Level level) { m_level = level; }
    const QString& module() const { return m_module; }
    void setModule(const QString& name);
    const QString& text() const { return m_text; }
    void setText(const QString& text);

    bool accepts(const KeptLine& line) const;

private:
    LogLevel::Level m_level = LogLevel::Debug;
    QString m_module;
    quint64 m_moduleBits = 0; // of the modules with the name
    QString m_text;
    QStringMatcher m_matcher;
};

} // namespace zeltools::quick
