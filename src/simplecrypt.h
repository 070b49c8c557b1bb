#pragma once

#include <zeltools/zeltools_export.h>

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>

class QFile;

/// Length in bytes of the SHA-1 in a cyphertext.
constexpr int SHA1_SIZE = 20;

/// Turns bytes, texts and files into self-describing cyphertexts and back; docs/format-crypt.md
/// has the format. A cyphertext may carry metadata that can be read without a key, is compressed
/// where that pays and protected against damage by a checksum or a SHA-1.
///
/// The cipher keeps curious eyes out and nothing more: its key has 64 bits, and eight bytes of a
/// known plaintext give it away.
///
/// No operation throws. Failures are an empty result or false, mostly with a Qt warning and
/// lastError(). One object must not be used from two threads at once; different objects are
/// independent.
class ZELTOOLS_EXPORT SimpleCrypt
{
public:
    enum CompressionMode {
        CompressionWhenSmaller = 0, ///< compress, keep the result when it is shorter
        CompressionForced = 1,
        CompressionOff = 2
    };

    enum ProtectionMode {
        ProtectionOff = 0,
        ProtectionChecksum = 1, ///< 16 bits
        ProtectionSha1 = 2
    };

    enum Error {
        CryptNoError = 0,
        CryptKeyMissing = 1,
        CryptBadVersion = 2,
        CryptIntegrityMismatch = 3,      ///< the integrity field is missing, short or wrong
        CryptCompressionUnsupported = 4, ///< CompressionForced in encryptFileSmart()
        CryptChecksumUnsupported = 5,    ///< ProtectionChecksum in encryptFileSmart()
        CryptFileAccess = 6 ///< a file could not be opened, read or written, or is too large
    };

    /// The bits of the flags byte.
    enum Flag {
        FlagCompressed = 0x01,
        FlagChecksum = 0x02,
        FlagSha1 = 0x04,
        FlagMetadata = 0x08,
        FlagPlain = 0x10 ///< not enciphered
    };

    /// Told after each chunk: how many bytes of `total_B` have been read. Encryption reads a file
    /// twice when it computes a SHA-1, and counts both. Must not touch the SimpleCrypt.
    using Progress = std::function<void(qint64 done_B, qint64 total_B)>;

    /// Has no key yet, which 0 would be.
    SimpleCrypt() = default;
    explicit SimpleCrypt(quint64 key);

    void setKey(quint64 key);
    /// Takes the key apart into its eight bytes, the lowest first; setKey() does it.
    void splitKey();
    /// For encryptions; the default is CompressionWhenSmaller.
    void setCompression(CompressionMode mode) { m_compressionMode = mode; }
    /// For encryptions; the default is ProtectionSha1.
    void setProtection(ProtectionMode mode) { m_protectionMode = mode; }
    /// Whether the byte in front of the payload is random, so that the same text gives another
    /// cyphertext each time (the default), or 0xFF.
    void setRandomCharEnabled(bool enabled) { m_randomCharEnabled = enabled; }
    /// A text that stands readable in front of the payload; empty for none. It is written in the
    /// local 8-bit encoding but read as Latin-1: only ASCII comes back as it was.
    void setMetadata(const QString& metadata) { m_metadata = metadata; }
    /// Whether encryptions leave the payload as it is. The decryption of such a cyphertext sets
    /// this too, and nothing but this function clears it: an object that has read one goes on to
    /// write them, and takes all others for such.
    void setPlainPayload(bool plain) { m_plainPayload = plain; }

    /// The outcome of the last operation that sets it; some failures leave it as it was.
    Error lastError() const { return m_lastError; }

    /// Empty without a key, and with CryptFileAccess for more than 1900 MiB. Texts are taken as
    /// UTF-8; the string form is base64.
    QByteArray encryptToByteArray(const QByteArray& plaintext);
    QByteArray encryptToByteArray(const QString& plaintext);
    QString encryptToString(const QByteArray& plaintext);
    QString encryptToString(const QString& plaintext);

    /// Empty on failure, and for the cyphertext of an empty array; lastError() tells them apart,
    /// except where the input is too short for a cyphertext or for its header: that leaves it as it
    /// was. Compressed data that is damaged and unprotected gives an empty array with
    /// CryptNoError. A QString is taken as base64.
    QByteArray decryptToByteArray(const QByteArray& cyphertext);
    QByteArray decryptToByteArray(const QString& cyphertext);
    QString decryptToString(const QByteArray& cyphertext);
    QString decryptToString(const QString& cyphertext);

    /// Whether it begins as a cyphertext does. An assertion fails on empty data.
    bool checkVersion(const QByteArray& data) const;
    /// The length of the metadata in bytes as the header states it; needs its first ten bytes. 0
    /// when there are none or the header is damaged; may be negative in a forged one. Version 3
    /// had no metadata.
    qint64 getMetadataSize(const QByteArray& data);
    /// The 28 bytes in front of metadata: length, its complement, SHA-1. An assertion fails on an
    /// empty text.
    QByteArray getMetadataHeader(const QString& metadataStr) const;
    /// The metadata of a cyphertext, of which the header and the metadata suffice. Empty when there
    /// are none or they are damaged.
    QString getMetadata(const QByteArray& data);

    /// Four bytes, the lowest first. Missing bytes count as 0.
    static QByteArray convertInt32ToQByteArray(int value);
    static int convertQByteArrayToInt32(const QByteArray& bytes);

    /// Whole files, in memory: together up to four times the size of the file. False when one of
    /// them cannot be opened, or both are the same, without a change of lastError(). True says only
    /// that they could be opened: look at lastError(), which is CryptFileAccess also when reading
    /// or writing failed or the input is larger than 1900 MiB. An output that was there is emptied
    /// first, and left behind after a failure.
    bool encryptFile(const QString& inputPath, const QString& outputPath);
    bool decryptFile(const QString& inputPath, const QString& outputPath);

    /// The same bytes without compression, in constant memory: a chunk of 1 MiB.
    ///
    /// LOSES THE LAST BYTES of a file that is larger than a chunk and whose size is above a
    /// multiple of 1,048,576 bytes by 1 to 21 bytes (with ProtectionSha1; by 1 byte without): the
    /// condition that ends the writing counts the bytes in front of the payload too, and other
    /// programs rely on the layout that comes of it. The file then fails its integrity check. Use
    /// encryptFile() with CompressionOff for these sizes. An empty input, and one without a size
    /// such as a pipe, becomes a header alone, which nothing decrypts.
    ///
    /// CompressionForced and ProtectionChecksum are refused, CompressionWhenSmaller does not
    /// compress. The key is not checked: without one it is 0. True leaves lastError() as it was;
    /// after a failure part of the output may be there.
    bool encryptFileSmart(const QString& inputPath, const QString& outputPath,
                          const Progress& progress = Progress());
    /// In constant memory as well, unless the file is compressed or has a checksum: then it is
    /// decryptFile(), and returns true as that does. Refuses files shorter than 30 bytes, which
    /// decryptFile() can read. The output is written before the SHA-1 is known to be wrong, and is
    /// left behind.
    bool decryptFileSmart(const QString& inputPath, const QString& outputPath,
                          const Progress& progress = Progress());

    /// The number of bytes in front of the payload, that of a checksum not counted; -1 when the
    /// file cannot be opened, is shorter than 2 bytes or states metadata that it does not hold.
    /// Whether the file is a cyphertext is not looked at.
    int getHeaderLength(const QString& path);
    /// Empty when there are none, they are damaged or the file cannot be opened.
    QString getMetadataFromFile(const QString& path);
    /// Where the SHA-1 of a file with ASCII metadata stands. For a file without metadata it is 31
    /// all the same.
    int getDataHashOffset(const QString& path);

    /// The header of a file whose payload somebody else writes behind it, unenciphered: set
    /// metadata and setPlainPayload(true) first. The SHA-1 of the payload goes to
    /// getDataHashOffset() when it is known; until then another one keeps its place. An assertion
    /// fails without metadata and with ProtectionChecksum.
    QByteArray getHeaderForCompleteBackup() const;

private:
    char leadByte() const;
    int settingFlags() const;
    QByteArray header(int flags) const;
    QByteArray metadataBlock() const;
    std::optional<qint64> headerSize(const QByteArray& start);
    QByteArray takePayload(QByteArray body, int flags);

    bool processFile(const QString& inputPath, const QString& outputPath,
                     QByteArray (SimpleCrypt::*operation)(const QByteArray&));
    Error encryptStream(QFile& input, QFile& output, const Progress& progress);
    Error decryptStream(QFile& input, QFile& output, int flags, const Progress& progress);

    quint64 m_key = 0;
    QByteArray m_keyParts; // empty or eight bytes
    CompressionMode m_compressionMode = CompressionWhenSmaller;
    ProtectionMode m_protectionMode = ProtectionSha1;
    Error m_lastError = CryptNoError;
    bool m_randomCharEnabled = true;
    QString m_metadata;
    bool m_plainPayload = false;
};
