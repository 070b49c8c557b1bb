#include "symbolfiles.h"

#include "elfbuildid.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

using zeltools::CrashReport;

namespace
{

constexpr int s_mostFiles = 100000;

const QLatin1String s_suffix(".debug");

QString nameOf(const QString& path)
{
    return path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
}

QString withoutSuffix(const QString& name)
{
    return name.endsWith(s_suffix) ? name.left(name.size() - s_suffix.size()) : name;
}

/// The place that gdb and other tools have given to symbols.
QString customaryPath(const QString& folder, const QByteArray& buildId)
{
    const QString id = QString::fromLatin1(buildId.toHex());
    return folder + QStringLiteral("/.build-id/") + id.left(2) + QLatin1Char('/') + id.mid(2) +
           s_suffix;
}

} // namespace

SymbolFiles::SymbolFiles(const QString& folder, const QVector<CrashReport::Module>& modules)
    : m_folder(folder)
{
    QSet<QString> names;
    for (const CrashReport::Module& module : modules)
        names.insert(nameOf(module.path));
    if (!folder.isEmpty())
        addFiles(names);
}

void SymbolFiles::addFiles(const QSet<QString>& moduleNames)
{
    QDirIterator files(m_folder, QDir::Files, QDirIterator::Subdirectories);
    for (int count = 0; count < s_mostFiles && files.hasNext(); ++count) {
        const QString file = files.next();
        const QString name = nameOf(file);
        const QString moduleName = withoutSuffix(name);
        const bool isOfModule = moduleNames.contains(moduleName);
        if (!isOfModule && name == moduleName)
            continue;
        if (isOfModule)
            m_names.insert(moduleName);
        const QByteArray id = readBuildId(file);
        // The program that lies beside the file with its symbols may have none.
        if (!id.isEmpty() && (name != moduleName || !m_paths.contains(id)))
            m_paths.insert(id, file);
    }
}

QString SymbolFiles::path(const QByteArray& buildId, const QString& modulePath) const
{
    const bool isOfThisMachine = m_folder.isEmpty();
    QString customary =
        customaryPath(isOfThisMachine ? QStringLiteral("/usr/lib/debug") : m_folder, buildId);
    if (readBuildId(customary) == buildId)
        return customary;
    if (!isOfThisMachine)
        return m_paths.value(buildId);
    return readBuildId(modulePath) == buildId ? modulePath : QString();
}

SymbolFiles::Answer SymbolFiles::find(const CrashReport::Module& module) const
{
    if (module.buildId.isEmpty())
        return {QString(), QStringLiteral("no build id")};
    if (!QDir::isAbsolutePath(module.path)) // "[vdso]", which is not a file
        return {QString(), QStringLiteral("no symbols")};
    const QString found = path(module.buildId, module.path);
    if (!found.isEmpty())
        return {found, QString()};
    const bool hasOther = m_folder.isEmpty() ? QFileInfo(module.path).isFile()
                                             : m_names.contains(withoutSuffix(nameOf(module.path)));
    return {QString(), hasOther ? QStringLiteral("other build") : QStringLiteral("no symbols")};
}
