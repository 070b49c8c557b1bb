#include "bundlejob.h"

#include "bundlelosses.h"
#include "cleanreplacement.h"
#include "folder.h"
#include "progressbar.h"
#include "readfile.h"
#include "words.h"
#include <zeltools/supportbundle/supportbundle.h>
#include <zeltools/supportbundle/supportbundlereader.h>

#include <optional>
#include <utility>

using zeltools::FileReplacement;
using zeltools::SupportBundle;
using zeltools::SupportBundleManifest;
using zeltools::SupportBundleReader;

namespace
{

/// Names what could not be read, on stderr, since the bundle is complete without it.
void reportMissing(const SupportBundleManifest& manifest)
{
    for (const auto& omission : manifest.missing)
        fail(Done, Zelctl::tr("not in the bundle: %1: %2")
                       .arg(SupportBundleManifest::escaped(omission.name), omission.reason));
    for (const auto& member : manifest.members) {
        if (member.padded_B > 0)
            fail(Done, Zelctl::tr("%1 ends with %2 bytes of zeros: %3")
                           .arg(SupportBundleManifest::escaped(member.name),
                                QString::number(member.padded_B), member.fault));
    }
}

QString line(const SupportBundleManifest::Member& member)
{
    return QStringLiteral("%1  %2  %3\n")
        .arg(member.size_B, 12)
        .arg(member.modified.toLocalTime().toString(QStringLiteral("dd/MM/yyyy hh:mm:ss")), 19)
        .arg(SupportBundleManifest::escaped(member.name));
}

/// A progress bar that is cleared before a message follows.
class Bar
{
public:
    explicit Bar(const char* label)
        : m_bar(std::in_place, label)
    {
    }
    SupportBundleReader::Progress progress()
    {
        return [this](qint64 done_B, qint64 total_B) {
            m_bar->show(done_B, total_B);
            return true;
        };
    }
    void clear() { m_bar.reset(); }

private:
    std::optional<ProgressBar> m_bar;
};

} // namespace

ExitStatus makeBundle(const BundleRequest& request, const SimpleCrypt* crypt)
{
    SupportBundle bundle;
    if (crypt != nullptr)
        bundle.setCrypt(*crypt);
    bundle.setLevel(request.level);
    const QString misuse = bundle.problemWith(request.output);
    if (!misuse.isEmpty())
        return refuse(misuse);
    const QString problem = problemWithFolder(request.folder);
    if (!problem.isEmpty())
        return fail(Failed, problem);
    if (!bundle.addMachineFolder(request.folder))
        return fail(Failed, Zelctl::tr("%1 holds no log files").arg(request.folder));
    bundle.setEnvironmentFile(request.environmentFile);
    FileReplacement file(request.output);
    if (file.wouldLose(request.keyFile) || file.wouldLose(request.environmentFile))
        return fail(Failed, Zelctl::tr("writing %1 would lose the key or the environment file")
                                .arg(request.output));
    Bar readingBar(QT_TRANSLATE_NOOP("zelctl", "reading"));
    QString unread;
    bundle.addContent(QStringLiteral("losses.json"),
                      lossesInFiles(request.folder, unread, readingBar.progress()));
    readingBar.clear();
    if (!unread.isEmpty())
        fail(Done, Zelctl::tr("losses.json is incomplete: %1").arg(unread));
    Bar bar(QT_TRANSLATE_NOOP("zelctl", "packing"));
    QObject::connect(&bundle, &SupportBundle::progress, bar.progress());
    const bool isDone = replaceCleanly(
        file, [&](int descriptor) { return bundle.write(descriptor, request.output); });
    bar.clear();
    if (!isDone)
        return fail(Failed, file.errorString());
    reportMissing(bundle.manifest());
    return printLine(Zelctl::counted(bundle.manifest().members.size(),
                                     QT_TRANSLATE_NOOP("zelctl", "1 file in %1"),
                                     QT_TRANSLATE_N_NOOP("zelctl", "%n files in %1"))
                         .arg(request.output));
}

ExitStatus verifyBundle(const QString& path, const SimpleCrypt* crypt, bool isJson)
{
    const QString obstacle = whyUnreadable(path);
    if (!obstacle.isEmpty())
        return fail(Failed, obstacle);
    Bar bar(QT_TRANSLATE_NOOP("zelctl", "checking"));
    SupportBundleReader reader(path, bar.progress());
    if (crypt != nullptr)
        reader.setCrypt(*crypt);
    const bool isComplete = reader.verify();
    bar.clear();
    if (!isComplete)
        return fail(Failed, reader.errorString());
    const auto count = static_cast<int>(reader.manifest().members.size());
    const QString created = reader.manifest().created.toString(Qt::ISODate);
    if (isJson)
        return printJson(jsonObject({{"files", count}, {"created", created}}));
    return printLine(Zelctl::counted(count, QT_TRANSLATE_NOOP("zelctl", "complete: 1 file of %1"),
                                     QT_TRANSLATE_N_NOOP("zelctl", "complete: %n files of %1"))
                         .arg(created));
}

ExitStatus listBundle(const QString& path, const SimpleCrypt* crypt, bool isJson)
{
    Bar bar(QT_TRANSLATE_NOOP("zelctl", "reading"));
    SupportBundleReader reader(path, bar.progress());
    if (crypt != nullptr)
        reader.setCrypt(*crypt);
    const bool isComplete = reader.list();
    bar.clear();
    if (!isComplete)
        return fail(Failed, reader.errorString());
    const SupportBundleManifest& manifest = reader.manifest();
    if (isJson)
        return print(QString::fromUtf8(manifest.toJson()));
    QString text;
    for (const auto& member : manifest.members)
        text += line(member);
    const ExitStatus status = print(text);
    reportMissing(manifest);
    return status;
}
