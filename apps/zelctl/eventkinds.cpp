#include "eventkinds.h"

#include <zeltools/logging/logrenderer.h>

#include <QMap>
#include <QMetaEnum>

namespace
{

/// Maps the names of the kinds to their texts in the files.
QMap<QString, QString> kinds()
{
    const auto events = QMetaEnum::fromType<LogEventModule::EventModule>();
    QMap<QString, QString> kinds;
    for (int i = 0; i < events.keyCount(); ++i) {
        const auto event = static_cast<LogEventModule::EventModule>(events.value(i));
        if (event != LogEventModule::AllEvents)
            kinds.insert(QString::fromLatin1(events.key(i)), LogRenderer::eventToString(event));
    }
    return kinds;
}

} // namespace

QStringList eventKindKeys()
{
    return kinds().keys();
}

QString eventKindInFile(const QString& name)
{
    const QMap<QString, QString> all = kinds();
    for (auto kind = all.begin(); kind != all.end(); ++kind) {
        if (kind.key().compare(name, Qt::CaseInsensitive) == 0 ||
            kind->compare(name, Qt::CaseInsensitive) == 0)
            return *kind;
    }
    return QString();
}
