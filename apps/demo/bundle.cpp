#include "bundle.h"

#include <zeltools/supportbundle/supportbundle.h>
#include <zeltools/supportbundle/supportbundlereader.h>

#include <QDir>
#include <QFileInfo>

#include <algorithm>

using zeltools::SupportBundle;
using zeltools::SupportBundleManifest;
using zeltools::SupportBundleReader;

bool showBundle(const QString& folder, QTextStream& out)
{
    const QString path = QDir(folder).filePath(QStringLiteral("support.tar.zst"));
    SupportBundle bundle;
    bundle.addThisMachine();
    SupportBundleReader reader(path);
    if (!bundle.create(path) || !reader.verify()) {
        out << "\nFAILED: " << bundle.errorString() << reader.errorString() << '\n';
        return false;
    }
    const auto& members = reader.manifest().members;
    out << "\nThe support bundle, " << QFileInfo(path).size() / 1024 << " KiB, is complete:\n";
    for (const auto& member : members)
        out << QStringLiteral("%1  %2\n")
                   .arg(member.size_B, 10)
                   .arg(SupportBundleManifest::escaped(member.name));
    return std::any_of(members.begin(), members.end(),
                       [](const auto& member) { return member.name == "logs/debug/zel_logs.log"; });
}
