#pragma once

#include <zeltools/zeltools_export.h>

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QVector>

#include <optional>

namespace zeltools
{

/// The table of contents of a support bundle, its member "manifest.json"; docs/format-bundle.md
/// describes the format. A manifest from outside may say anything: parse() only accepts names that
/// stay below the folder into which a bundle is unpacked, and numbers that a file can have.
///
/// File names are bytes, as the file system has them. Functions may be called from any thread.
struct ZELTOOLS_EXPORT SupportBundleManifest
{
    /// A file in the bundle.
    struct Member
    {
        QByteArray name;     ///< The path in the bundle, with "/" between folders.
        qint64 size_B = 0;   ///< The size of the content in the bundle.
        QByteArray sha256;   ///< The 32 bytes of the digest of the content in the bundle.
        QDateTime modified;  ///< The time of the last change; invalid if it is not known.
        qint64 padded_B = 0; ///< The zeros at the end, for bytes that the file did not yield.
        QString fault;       ///< Why it did not yield them. Empty if `padded_B` is 0.

        bool operator==(const Member& other) const;
    };
    /// Something that belongs in the bundle, but could not be read.
    struct Omission
    {
        QByteArray name; ///< The name that the member would have had.
        QString reason;  ///< The reason in English.

        bool operator==(const Omission& other) const;
    };

    /// No bundle has more members, the manifest not counted.
    static constexpr int mostMembers = 10000;
    /// No manifest is larger.
    static constexpr int largest_B = 16 * 1024 * 1024;

    /// The name of the last member but one, which is the manifest.
    static constexpr char ownName[] = "manifest.json";
    static constexpr char digestName[] = "manifest.sha256"; ///< The last member.

    QDateTime created;         ///< When the bundle was made.
    QString library;           ///< The version of the library that made the bundle.
    QVector<Member> members;   ///< In the order of the bundle.
    QVector<Omission> missing; ///< The members that could not be read.

    /// The text of the member `ownName`, which docs/format-bundle.md describes.
    QByteArray toJson() const;
    /// Returns nothing for a text that is not a manifest, with the reason in `error`.
    static std::optional<SupportBundleManifest> parse(const QByteArray& json, QString& error);

    /// Whether the member is one of the two that describe the others.
    static bool isOwnName(const QByteArray& name) { return name == ownName || name == digestName; }
    /// The content of the last member, in the form of sha256sum.
    static QByteArray digestLine(const QByteArray& sha256)
    {
        return sha256.toHex() + "  " + ownName + '\n';
    }
    /// Whether the name is a relative path without empty components, "." and "..", so that the
    /// member could only be unpacked below the chosen folder.
    static bool isSafeName(const QByteArray& name);
    /// The name as text. A backslash, a control character and a byte that is not part of a UTF-8
    /// character become "\xNN": the bytes "caff\xE8" give the text `caff\xe8`.
    static QString escaped(const QByteArray& name);
    /// The bytes of an escaped name, or nothing if a backslash does not begin "\xNN".
    static std::optional<QByteArray> unescaped(const QString& text);
};

} // namespace zeltools
