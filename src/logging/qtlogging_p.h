#pragma once

#include "logging/loglevel.h"

#include <QMap>
#include <QStringList>

#include <optional>

/// The level of a message of Qt. Nothing for some warnings that are irrelevant to the machine, and
/// for an unknown type.
std::optional<LogLevel::Level> qtMessageLevel(QtMsgType type, const QString& message);

/// The filter rules of Qt's logging categories.
class QtCategoryRules
{
public:
    /// Adds a rule for each category, logs the rules of this call and of all earlier ones, and
    /// applies them.
    void add(const QStringList& categories, bool enable);

private:
    QMap<QString, bool> m_rules;
};
