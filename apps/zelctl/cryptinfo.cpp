#include "cryptinfo.h"

#include "readfile.h"
#include "words.h"
#include <zeltools/simplecrypt.h>

#include <QFile>
#include <QJsonArray>

namespace
{

QStringList flagNames(int flags)
{
    const QPair<int, const char*> names[]{{SimpleCrypt::FlagCompressed, "compressed"},
                                          {SimpleCrypt::FlagChecksum, "checksum"},
                                          {SimpleCrypt::FlagSha1, "sha1"},
                                          {SimpleCrypt::FlagMetadata, "metadata"},
                                          {SimpleCrypt::FlagPlain, "plain"}};
    QStringList set;
    for (const auto& [flag, name] : names) {
        if ((flags & flag) != 0)
            set += QString::fromLatin1(name);
    }
    return set;
}

/// The record that `zelctl crypt info` shows.
struct Info
{
    int version;
    int flags;
    qint64 metadataSize; ///< as the header states it; 0 when there are none
    QString metadata;
    int leadEnd; ///< offset of the digest, or of the payload where there is none
    int digestSize;
};

/// Metadata of a damaged file may be of any length. They are shown up to this size.
constexpr qint64 s_longestShownMetadata = largestTextFile;

/// Reads the header alone. Returns the problem with the file, or an empty text.
QString readInfo(const QString& path, Info& info)
{
    QFile file(path);
    const QString obstacle = whyUnreadable(path);
    if (!obstacle.isEmpty() || !file.open(QIODevice::ReadOnly))
        return obstacle.isEmpty() ? QStringLiteral("%1: %2").arg(path, file.errorString())
                                  : obstacle;
    const QByteArray start = file.read(SimpleCrypt::shortestStreamed_B);
    SimpleCrypt crypt;
    if (start.size() < SimpleCrypt::shortestHeader_B || !crypt.checkVersion(start))
        return Zelctl::tr("%1 is not a cyphertext").arg(path);
    info.version = static_cast<quint8>(start.at(0));
    info.flags = static_cast<quint8>(start.at(1));
    const bool hasHash = (info.flags & SimpleCrypt::FlagSha1) != 0;
    // The library's length leaves a checksum out, and counts a SHA-1 beside one.
    info.leadEnd = crypt.getHeaderLength(path) - (hasHash ? SHA1_SIZE : 0);
    info.digestSize = (info.flags & SimpleCrypt::FlagChecksum) != 0 ? 2 : hasHash ? SHA1_SIZE : 0;
    SimpleCrypt::Failure failure = crypt.lastFailure();
    // Version 3 has none, whatever its flags say.
    const bool hasMetadata = (info.flags & SimpleCrypt::FlagMetadata) != 0 && info.version != 3;
    info.metadataSize = hasMetadata ? crypt.getMetadataSize(start) : 0;
    if (failure.code == SimpleCrypt::CryptNoError && hasMetadata &&
        info.metadataSize <= s_longestShownMetadata) {
        info.metadata = crypt.getMetadataFromFile(path);
        failure = crypt.lastFailure();
    }
    if (!failure.systemError.isEmpty())
        return QStringLiteral("%1: %2").arg(path, failure.systemError);
    return failure.code != SimpleCrypt::CryptNoError || info.leadEnd + info.digestSize > file.size()
               ? Zelctl::tr("the header of %1 is damaged").arg(path)
               : QString();
}

ExitStatus printInfo(const Info& info)
{
    QJsonObject object = jsonObject({{"version", info.version},
                                     {"flags", QJsonArray::fromStringList(flagNames(info.flags))},
                                     {"headerLength", info.leadEnd + info.digestSize}});
    if (!info.metadata.isEmpty())
        object[QStringLiteral("metadata")] = info.metadata;
    else if (info.metadataSize > 0)
        object[QStringLiteral("metadataSize")] = info.metadataSize;
    if (info.digestSize > 0)
        object[QStringLiteral("digestOffset")] = info.leadEnd;
    return printJson(object);
}

} // namespace

ExitStatus showInfo(const QString& path, bool isJson)
{
    Info info = {};
    const QString problem = readInfo(path, info);
    if (!problem.isEmpty())
        return fail(Failed, problem);
    if (isJson)
        return printInfo(info);
    const QString none = QStringLiteral("none");
    QString metadata = none;
    if (!info.metadata.isEmpty())
        metadata = withoutControls(info.metadata);
    else if (info.metadataSize > 0)
        metadata = Zelctl::tr("%1 bytes, too many to be shown").arg(info.metadataSize);
    return print(QStringLiteral("version        %1\nflags          %2\nmetadata       %3\n"
                                "header length  %4\ndigest offset  %5\n")
                     .arg(QString::number(info.version),
                          flagNames(info.flags).join(QLatin1Char(' ')), metadata,
                          QString::number(info.leadEnd + info.digestSize),
                          info.digestSize > 0 ? QString::number(info.leadEnd) : none));
}
