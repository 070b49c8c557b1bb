#pragma once

#include <zeltools/zeltools_export.h>

#include <QByteArray>
#include <QString>

#include <array>
#include <functional>
#include <optional>

class CryptFiles;

/// Length in bytes of the SHA-1 in a cyphertext.
constexpr int SHA1_SIZE = 20;

/// Turns bytes, texts and files into self-describing cyphertexts and back; docs/format-crypt.md
/// has the format. A cyphertext may carry metadata that can be read without a key, is compressed
/// where that pays and protected against damage by a checksum or a SHA-1.
///
/// The cipher keeps curious eyes out and nothing more: its key has 64 bits, and eight bytes of a
/// known plaintext give it away.
///
/// No operation throws, also when memory runs out. Failures are an empty result or false, mostly
/// with a Qt warning and lastError(); lastFailure() tells of each of them, with the file and the
/// system's error. An object wipes its key from memory when it goes. One object must not be used
/// from two threads at once; different objects are independent.
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
        CryptIntegrityMismatch = 3,      ///< the integrity field is missing, short or wrong, or the
                                         ///< payload cannot be uncompressed
        CryptCompressionUnsupported = 4, ///< CompressionForced in encryptFileSmart()
        CryptChecksumUnsupported = 5,    ///< ProtectionChecksum in encryptFileSmart()
        CryptFileAccess = 6 ///< a file could not be opened, read or written, or is too large, or
                            ///< memory has run out
    };

    /// The bits of the flags byte.
    enum Flag {
        FlagCompressed = 0x01,
        FlagChecksum = 0x02,
        FlagSha1 = 0x04,
        FlagMetadata = 0x08,
        FlagPlain = 0x10 ///< not enciphered
    };

    /// The header without metadata: version and flags.
    static constexpr int shortestHeader_B = 2;
    /// The header up to the metadata; the streamed decryption refuses shorter files.
    static constexpr int shortestStreamed_B = 30;
    /// The largest input of the operations that hold it in memory. (QByteArray holds 2 GiB, and
    /// qCompress() computes 1 % more than it is given in an int.)
    static constexpr qint64 largestInMemory_B = qint64(1900) * 1024 * 1024;

    /// What made an operation fail.
    struct Failure
    {
        Error code = CryptNoError;
        QString path;        ///< the file concerned; empty where none is
        QString systemError; ///< "No space left on device"; empty when no system call failed
    };

    /// Told after each chunk: how many bytes of `total_B` have been read. Encryption reads a file
    /// twice when it computes a SHA-1, and counts both. Must not touch the SimpleCrypt; an
    /// std::exception that it throws ends the operation as a failure.
    using Progress = std::function<void(qint64 done_B, qint64 total_B)>;

    /// Has no key yet, which 0 would be.
    SimpleCrypt() = default;
    explicit SimpleCrypt(quint64 key);
    SimpleCrypt(const SimpleCrypt&) = default;
    SimpleCrypt& operator=(const SimpleCrypt&) = default;
    ~SimpleCrypt();

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
    /// Why the last encryption, decryption or query of a header failed; the code is CryptNoError
    /// when it did not. It never keeps what an earlier operation left, and has a code also for the
    /// failures that lastError() leaves out.
    const Failure& lastFailure() const { return m_failure; }
    /// What the last decryption has checked its payload by. ProtectionOff is also what it says when
    /// the decryption failed. The flags of a file are not protected themselves: whoever knows that
    /// a file was written with a SHA-1 must ask here whether one was looked at.
    ProtectionMode checkedProtection() const { return m_checkedProtection; }

    /// Empty without a key, and with CryptFileAccess for more than 1900 MiB or where there is too
    /// little memory. Texts are taken as UTF-8; the string form is base64.
    QByteArray encryptToByteArray(const QByteArray& plaintext);
    QByteArray encryptToByteArray(const QString& plaintext);
    QString encryptToString(const QByteArray& plaintext);
    QString encryptToString(const QString& plaintext);

    /// Empty on failure, and for the cyphertext of an empty array; lastError() tells them apart,
    /// except where the input is too short for a cyphertext or for its header: that leaves it as it
    /// was. A QString is taken as base64.
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

    /// Whole files, in memory: together up to four times the size of the file.
    ///
    /// False when one of them cannot be opened, or both are the same, without a change of
    /// lastError(); and with lastError() when reading or writing fails, the input is larger than
    /// 1900 MiB, memory runs out or the payload cannot be uncompressed. An output that was there is
    /// kept then, unless it is the writing that failed.
    ///
    /// True when the output holds all that came back. That is nothing where there is no key, and
    /// where the input is no cyphertext, is damaged or has another key: look at lastError().
    bool encryptFile(const QString& inputPath, const QString& outputPath);
    bool decryptFile(const QString& inputPath, const QString& outputPath);

    /// The same bytes without compression, in constant memory: a chunk of 1 MiB.
    ///
    /// LOSES THE LAST BYTES of a file that is larger than a chunk and whose size is above a
    /// multiple of 1,048,576 bytes by 1 to 21 bytes (with ProtectionSha1; by 1 byte without): the
    /// condition that ends the writing counts the bytes in front of the payload too, and other
    /// programs rely on the layout that comes of it. The file then fails its integrity check.
    /// encryptFileInChunks() loses nothing. An empty input, and one without a size such as a pipe,
    /// becomes a header alone, which nothing decrypts.
    ///
    /// CompressionForced and ProtectionChecksum are refused with an empty output,
    /// CompressionWhenSmaller does not compress. The key is not checked: without one it is 0. True
    /// leaves lastError() as it was. After a failure to read the first pass the output is what it
    /// was, after a later one part of the new one may be there.
    bool encryptFileSmart(const QString& inputPath, const QString& outputPath,
                          const Progress& progress = Progress());
    /// encryptFileSmart() with all of the payload, whatever its size: the bytes that encryptFile()
    /// writes with CompressionOff. The input must be a file that can be read twice.
    bool encryptFileInChunks(const QString& inputPath, const QString& outputPath,
                             const Progress& progress = Progress());
    /// In constant memory as well, unless the file is compressed or has a checksum: then it is
    /// decryptFile(), and returns true as that does. Refuses files shorter than 30 bytes, which
    /// decryptFile() can read. The output is written before the SHA-1 is known to be wrong, and is
    /// left behind; a file that is refused for its header leaves an empty one.
    bool decryptFileSmart(const QString& inputPath, const QString& outputPath,
                          const Progress& progress = Progress());

    /// The number of bytes in front of the payload, that of a checksum not counted; -1 when the
    /// file cannot be opened, is shorter than 2 bytes or states metadata that are longer than the
    /// whole file. Whether the file is a cyphertext, or is cut within the header, is not looked at.
    int getHeaderLength(const QString& path);
    /// Empty when there are none, they are damaged or the file cannot be opened. Only metadata that
    /// are not damaged are read into memory.
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
    enum class Tail { Lost, Kept };

    template <typename Result, typename Operation>
    Result guarded(Result failed, const Operation& operation);

    QByteArray refuse(Error code);
    char leadByte() const;
    int settingFlags() const;
    QByteArray header(int flags) const;
    QByteArray metadataBlock() const;
    static QByteArray metadataHeader(const QString& metadata);
    qint64 statedMetadataSize(const QByteArray& data);
    std::optional<qint64> headerSize(const QByteArray& start);
    int headerLength(const QString& path);
    QString metadataFromFile(const QString& path);

    QByteArray encrypt(const QByteArray& plaintext);
    QByteArray decrypt(const QByteArray& cyphertext);
    QByteArray takePayload(QByteArray body, int flags);

    bool processFile(const QString& inputPath, const QString& outputPath,
                     QByteArray (SimpleCrypt::*operation)(const QByteArray&));
    bool encryptInChunks(const QString& inputPath, const QString& outputPath, Tail tail,
                         const Progress& progress);
    void encryptStream(CryptFiles& files, Tail tail, const Progress& progress);
    bool isStart(const QByteArray& start, CryptFiles& files);
    bool skipHeader(const QByteArray& start, CryptFiles& files);
    bool decryptStream(CryptFiles& files, int flags, const Progress& progress);

    quint64 m_key = 0;
    std::array<char, 8> m_keyParts{};
    bool m_hasKey = false;
    CompressionMode m_compressionMode = CompressionWhenSmaller;
    ProtectionMode m_protectionMode = ProtectionSha1;
    Error m_lastError = CryptNoError;
    Failure m_failure;
    ProtectionMode m_checkedProtection = ProtectionOff;
    bool m_randomCharEnabled = true;
    QString m_metadata;
    bool m_plainPayload = false;
};
