#pragma once

#include <zeltools/zeltools_export.h>

#include <QByteArray>
#include <QString>

#include <array>
#include <functional>

/// The length in bytes of the SHA-1 in a cyphertext.
constexpr int SHA1_SIZE = 20;

/// Converts bytes, texts and files to self-describing cyphertexts and back; docs/format-crypt.md
/// describes the format. A cyphertext may have metadata that can be read without a key. It is
/// compressed if that makes it shorter, and a checksum or a SHA-1 detects damage.
///
/// The cipher only protects against casual reading: its key has 64 bits, and eight bytes of a known
/// plaintext reveal it.
///
/// No operation throws, even when memory runs out. After a failure the result is empty or false,
/// mostly with a Qt warning and lastError(). lastFailure() describes every failure with the file
/// and the error of the system. Two threads must not use one object at the same time; different
/// objects are independent.
class ZELTOOLS_EXPORT SimpleCrypt
{
public:
    /// The compression of the payload by zlib, before it is enciphered.
    enum CompressionMode {
        CompressionWhenSmaller = 0, ///< Compress, and keep the result if it is shorter.
        CompressionForced = 1,
        CompressionOff = 2
    };

    /// The integrity field in front of the payload.
    enum ProtectionMode {
        ProtectionOff = 0,
        ProtectionChecksum = 1, ///< 16 bits
        ProtectionSha1 = 2
    };

    /// The reasons of failures, see lastError() and lastFailure().
    enum Error {
        CryptNoError = 0,
        CryptKeyMissing = 1,
        CryptBadVersion = 2,
        CryptIntegrityMismatch = 3,      ///< The integrity field is missing, short or wrong, or the
                                         ///< payload cannot be uncompressed.
        CryptCompressionUnsupported = 4, ///< CompressionForced in encryptFileSmart().
        CryptChecksumUnsupported = 5,    ///< ProtectionChecksum in encryptFileSmart().
        CryptFileAccess = 6 ///< A file could not be opened, read or written, or is too large, or
                            ///< memory has run out.
    };

    /// The bits of the flags byte.
    enum Flag {
        FlagCompressed = 0x01,
        FlagChecksum = 0x02,
        FlagSha1 = 0x04,
        FlagMetadata = 0x08,
        FlagPlain = 0x10 ///< Not enciphered.
    };

    /// The header without metadata: version and flags.
    static constexpr int shortestHeader_B = 2;
    /// The header up to the metadata; the streamed decryption refuses shorter files.
    static constexpr int shortestStreamed_B = 30;
    /// The largest input of the operations that hold it in memory. (QByteArray holds 2 GiB, and
    /// qCompress() computes 1 % more than it is given in an int.)
    static constexpr qint64 largestInMemory_B = qint64(1900) * 1024 * 1024;

    /// The reason of a failure.
    struct Failure
    {
        Error code = CryptNoError; ///< The kind of failure.
        QString path;              ///< The file, or empty if the failure concerns none.
        QString systemError;       ///< "No space left on device"; empty if no system call failed
    };

    /// A callback after each chunk with the number of bytes that have been read of `total_B`.
    /// Encryption with a SHA-1 reads a file twice and counts both passes. The callback must not use
    /// the SimpleCrypt; an std::exception that it throws ends the operation as a failure.
    using Progress = std::function<void(qint64 done_B, qint64 total_B)>;

    /// Constructs an object without a key; note that 0 is a key.
    SimpleCrypt() = default;
    explicit SimpleCrypt(quint64 key);
    SimpleCrypt(const SimpleCrypt&) = default;
    SimpleCrypt& operator=(const SimpleCrypt&) = default;
    /// Wipes the key from memory.
    ~SimpleCrypt();

    /// Sets the key of later operations. Each of its 64 bits counts, and 0 is a key.
    void setKey(quint64 key);
    /// Splits the key into its eight bytes, the lowest first; setKey() calls it.
    void splitKey();
    /// Sets the compression of encryptions; the default is CompressionWhenSmaller.
    void setCompression(CompressionMode mode) { m_settings.compression = mode; }
    /// Sets the integrity field of encryptions; the default is ProtectionSha1.
    void setProtection(ProtectionMode mode) { m_settings.protection = mode; }
    /// Sets whether the byte before the payload is random (the default), so that the same text
    /// gives a different cyphertext each time, or 0xFF.
    void setRandomCharEnabled(bool enabled) { m_settings.isLeadByteRandom = enabled; }
    /// Sets a text that is stored readably before the payload; empty means none. It is written in
    /// the local 8-bit encoding but read as Latin-1, so that only ASCII is preserved.
    void setMetadata(const QString& metadata) { m_settings.metadata = metadata; }
    /// Sets whether encryptions leave the payload unenciphered. The decryption of such a cyphertext
    /// also sets this, and only this function clears it: an object that has read one then writes
    /// unenciphered payloads and reads all others as unenciphered, too.
    void setPlainPayload(bool plain) { m_settings.isPlain = plain; }

    /// The result of the last operation that sets it; some failures do not change it.
    Error lastError() const { return m_outcome.lastError; }
    /// The reason why the last encryption, decryption or query of a header failed; the code is
    /// CryptNoError if it succeeded. Unlike lastError(), it has a code for every failure and never
    /// keeps the result of an earlier operation.
    const Failure& lastFailure() const { return m_outcome.failure; }
    /// The integrity field that the last decryption has checked; ProtectionOff if the decryption
    /// failed. The flags of a file are not protected themselves: a caller who knows that a file was
    /// written with a SHA-1 must check here whether the decryption has verified one.
    ProtectionMode checkedProtection() const { return m_outcome.checkedProtection; }

    /// Encrypts bytes or a text, which is encoded as UTF-8; the string form is base64. The result
    /// is empty without a key, and with CryptFileAccess for more than 1900 MiB or if memory runs
    /// out.
    QByteArray encryptToByteArray(const QByteArray& plaintext);
    QByteArray encryptToByteArray(const QString& plaintext);
    /// @{
    /// Does the same and gives base64.
    QString encryptToString(const QByteArray& plaintext);
    QString encryptToString(const QString& plaintext);
    /// @}

    /// Decrypts a cyphertext; a QString is decoded from base64. The result is empty after a failure
    /// and for the cyphertext of an empty array. lastError() distinguishes these cases, except that
    /// an input that is too short for a cyphertext or its header does not change it.
    QByteArray decryptToByteArray(const QByteArray& cyphertext);
    QByteArray decryptToByteArray(const QString& cyphertext);
    /// @{
    /// Does the same and reads the result as UTF-8.
    QString decryptToString(const QByteArray& cyphertext);
    QString decryptToString(const QString& cyphertext);
    /// @}

    /// Whether the data begins like a cyphertext. An assertion fails on empty data.
    bool checkVersion(const QByteArray& data) const;
    /// The length of the metadata in bytes that the header states; needs the first ten bytes of the
    /// header. The result is 0 if there are none or the header is damaged, and may be negative for
    /// a forged header. Version 3 had no metadata.
    qint64 getMetadataSize(const QByteArray& data);
    /// The 28 bytes in front of the metadata: length, its complement, SHA-1. An assertion fails on
    /// an empty text.
    QByteArray getMetadataHeader(const QString& metadataStr) const;
    /// The metadata of a cyphertext, from its header and its metadata. Empty if there are none or
    /// they are damaged.
    QString getMetadata(const QByteArray& data);

    /// Convert between a number and four bytes, the lowest first. Missing bytes count as 0.
    static QByteArray convertInt32ToQByteArray(int value);
    /// The number that the first four bytes hold.
    static int convertQByteArrayToInt32(const QByteArray& bytes);

    /// Encrypt or decrypt a whole file in memory, of which they need up to four times its size.
    ///
    /// They return false without changing lastError() if a file cannot be opened or both are the
    /// same. They return false and set lastError() if reading or writing fails, the input is larger
    /// than 1900 MiB, memory runs out or the payload cannot be uncompressed. An existing output is
    /// kept then, unless writing failed.
    ///
    /// They return true if the output has the whole result. The result is empty without a key, and
    /// if the input is not a cyphertext, is damaged or has another key: check lastError().
    bool encryptFile(const QString& inputPath, const QString& outputPath);
    /// The reverse of encryptFile().
    bool decryptFile(const QString& inputPath, const QString& outputPath);

    /// Writes the same bytes as encryptFile() without compression, in constant memory: a chunk of
    /// 1 MiB.
    ///
    /// LOSES THE LAST BYTES of a file that is larger than a chunk and whose size exceeds a multiple
    /// of 1,048,576 bytes by 1 to 21 bytes (with ProtectionSha1; by 1 byte without): the condition
    /// that ends the writing also counts the bytes in front of the payload, and other programs rely
    /// on the resulting layout. The file then fails its integrity check. encryptFileInChunks()
    /// loses nothing. An empty input, and one without a size such as a pipe, becomes a header
    /// alone, which cannot be decrypted.
    ///
    /// CompressionForced and ProtectionChecksum are refused with an empty output, and
    /// CompressionWhenSmaller does not compress. The key is not checked; without one it is 0.
    /// Success does not change lastError(). A read failure in the first pass does not change the
    /// output; a later failure may leave part of the new one.
    bool encryptFileSmart(const QString& inputPath, const QString& outputPath,
                          const Progress& progress = Progress());
    /// Works like encryptFileSmart(), but always writes the whole payload: the bytes that
    /// encryptFile() writes with CompressionOff. The input must be a file that can be read twice.
    bool encryptFileInChunks(const QString& inputPath, const QString& outputPath,
                             const Progress& progress = Progress());
    /// Decrypts in constant memory as well. It decrypts a file that is compressed or has a
    /// checksum in memory, as decryptFile() does. It refuses files shorter than 30 bytes, which
    /// decryptFile() can read. The output is written before the SHA-1 is verified and stays if that
    /// fails; a file that is refused because of its header leaves an empty output.
    bool decryptFileSmart(const QString& inputPath, const QString& outputPath,
                          const Progress& progress = Progress());

    /// The number of bytes in front of the payload without those of a checksum; -1 if the file
    /// cannot be opened, is shorter than 2 bytes or states metadata that are longer than the whole
    /// file. It does not check whether the file is a cyphertext or ends within the header.
    int getHeaderLength(const QString& path);
    /// The metadata of a file. Empty if there are none, they are damaged or the file cannot be
    /// opened. Only undamaged metadata are read into memory.
    QString getMetadataFromFile(const QString& path);
    /// The offset of the SHA-1 in a file with ASCII metadata. For a file without metadata the
    /// result is 31, which is not the offset of its SHA-1.
    int getDataHashOffset(const QString& path);

    /// The header of a file whose unenciphered payload the caller appends; set metadata and
    /// setPlainPayload(true) first. The caller writes the SHA-1 of the payload at
    /// getDataHashOffset() when it is known; the header has a placeholder there. An assertion fails
    /// without metadata and with ProtectionChecksum.
    QByteArray getHeaderForCompleteBackup() const;

private:
    friend class CryptDecoder;
    friend class CryptEncoder;
    friend class CryptHeaderReader;

    struct Settings
    {
        quint64 key = 0;
        std::array<char, 8> keyParts{};
        bool hasKey = false;
        CompressionMode compression = CompressionWhenSmaller;
        ProtectionMode protection = ProtectionSha1;
        bool isLeadByteRandom = true;
        QString metadata;
        bool isPlain = false;
    };

    struct Outcome
    {
        Error lastError = CryptNoError;
        Failure failure;
        ProtectionMode checkedProtection = ProtectionOff;

        bool refuse(Error code)
        {
            lastError = failure.code = code;
            return false;
        }
        void succeed(ProtectionMode checked)
        {
            lastError = CryptNoError;
            checkedProtection = checked;
        }
    };

    Settings m_settings;
    Outcome m_outcome;
};
