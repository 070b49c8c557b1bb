#include "bundlejob.h"

#include "bundlelosses.h"
#include "cleanreplacement.h"
#include "progressbar.h"
#include <zeltools/supportbundle/supportbundle.h>
#include <zeltools/supportbundle/supportbundlereader.h>

#include <QDir>

#include <optional>
#include <utility>

using zeltools::FileReplacement;
using zeltools::SupportBundle;
using zeltools::SupportBundleManifest;
using zeltools::SupportBundleReader;

namespace
{

QString countText(int count, const char* noun)
{
    return QStringLiteral("%1 %2%3").arg(count).arg(QString::fromLatin1(noun),
                                                    count == 1 ? QString() : QStringLiteral("s"));
}

/// Names what could not be read, on stderr, since the bundle is complete without it.
void reportMissing(const SupportBundleManifest& manifest)
{
    for (const auto& omission : manifest.missing)
        fail(Done, QStringLiteral("not in the bundle: %1: %2")
                       .arg(SupportBundleManifest::escaped(omission.name), omission.reason));
    for (const auto& member : manifest.members) {
        if (member.padded_B > 0)
            fail(Done, QStringLiteral("%1 ends with %2 bytes of zeros: %3")
                           .arg(SupportBundleManifest::escaped(member.name))
                           .arg(member.padded_B)
                           .arg(member.fault));
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
        return fail(WrongUsage, misuse);
    if (!bundle.addMachineFolder(request.folder))
        return fail(Failed, QDir(request.folder).exists()
                                ? request.folder + QStringLiteral(" holds no log files")
                                : QStringLiteral("no folder ") + request.folder);
    bundle.setEnvironmentFile(request.environmentFile);
    FileReplacement file(request.output);
    if (file.wouldLose(request.keyFile) || file.wouldLose(request.environmentFile))
        return fail(Failed, QStringLiteral("writing %1 would lose the key or the environment file")
                                .arg(request.output));
    Bar readingBar("reading");
    bundle.addContent(QStringLiteral("losses.json"),
                      lossesInFiles(request.folder, readingBar.progress()));
    readingBar.clear();
    Bar bar("packing");
    QObject::connect(&bundle, &SupportBundle::progress, bar.progress());
    const bool isDone = replaceCleanly(
        file, [&](int descriptor) { return bundle.write(descriptor, request.output); });
    bar.clear();
    if (!isDone)
        return fail(Failed, file.errorString());
    reportMissing(bundle.manifest());
    return printLine(countText(bundle.manifest().members.size(), "file") + QStringLiteral(" in ") +
                     request.output);
}

ExitStatus verifyBundle(const QString& path, const SimpleCrypt* crypt)
{
    Bar bar("checking");
    SupportBundleReader reader(path, bar.progress());
    if (crypt != nullptr)
        reader.setCrypt(*crypt);
    const bool isComplete = reader.verify();
    bar.clear();
    if (!isComplete)
        return fail(Failed, reader.errorString());
    return printLine(QStringLiteral("complete: %1 of %2")
                         .arg(countText(reader.manifest().members.size(), "file"),
                              reader.manifest().created.toString(Qt::ISODate)));
}

ExitStatus listBundle(const QString& path, const SimpleCrypt* crypt, bool isJson)
{
    Bar bar("reading");
    SupportBundleReader reader(path, bar.progress());
    if (crypt != nullptr)
        reader.setCrypt(*crypt);
    const bool isComplete = reader.list();
    bar.clear();
    if (!isComplete)
        return fail(Failed, reader.errorString());
    const SupportBundleManifest& manifest = reader.manifest();
    if (isJson)
        return writeOutput(manifest.toJson());
    QString text;
    for (const auto& member : manifest.members)
        text += line(member);
    const ExitStatus status = print(text);
    reportMissing(manifest);
    return status;
}
