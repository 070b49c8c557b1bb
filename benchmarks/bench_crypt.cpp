// Measures encryption: the cipher alone, a file of 512 MiB on tmpfs and a short text.

#include "crypt/cipherstream_p.h"
#include "ratiotable.h"
#include <zeltools/simplecrypt.h>

#include <QFile>
#include <QTemporaryDir>

#include <array>
#include <cstdlib>
#include <cstring>
#include <random>
#include <vector>

namespace
{

constexpr std::array<char, 8> s_key{'\xef', '\xcd', '\xab', '\x89', '\x67', '\x45', '\x23', '\x01'};
constexpr int s_bufferSize = 64 << 20; // beyond every cache
constexpr qint64 s_fileSize = 512 << 20;

QByteArray randomBytes(int size)
{
    std::mt19937_64 random(1);
    QByteArray bytes(size, '\0');
    for (int i = 0; i + 8 <= size; i += 8) {
        const auto word = random();
        std::memcpy(bytes.data() + i, &word, sizeof word);
    }
    return bytes;
}

char* buffer()
{
    static QByteArray bytes = randomBytes(s_bufferSize);
    return bytes.data();
}

void copy()
{
    static std::vector<char> copied(s_bufferSize);
    std::memcpy(copied.data(), buffer(), s_bufferSize);
    benchmark::DoNotOptimize(copied.data());
    benchmark::ClobberMemory();
}

template <bool isEncryption>
void byteByByte()
{
    char* bytes = buffer();
    char last = 0;
    for (int i = 0; i < s_bufferSize; ++i) {
        const char enciphered = bytes[i];
        bytes[i] = static_cast<char>(bytes[i] ^ s_key[static_cast<size_t>(i % 8)] ^ last);
        last = isEncryption ? bytes[i] : enciphered;
    }
    benchmark::ClobberMemory();
}

void addCipher()
{
    add("Enciphering 64 MiB/ZelTools",
        [](auto& s) { repeat(s, [] { CipherStream(s_key).encipher(buffer(), s_bufferSize); }); });
    add("Enciphering 64 MiB/byte by byte", [](auto& s) { repeat(s, byteByByte<true>); });
    add("Enciphering 64 MiB/memcpy", [](auto& s) { repeat(s, copy); });
    add("Deciphering 64 MiB/ZelTools",
        [](auto& s) { repeat(s, [] { CipherStream(s_key).decipher(buffer(), s_bufferSize); }); });
    add("Deciphering 64 MiB/byte by byte", [](auto& s) { repeat(s, byteByByte<false>); });
    add("Deciphering 64 MiB/memcpy", [](auto& s) { repeat(s, copy); });
}

/// A file, its cyphertext and a place for copies, on tmpfs.
struct Files
{
    QTemporaryDir folder{"/dev/shm/bench_crypt.XXXXXX"};
    QString plain = folder.filePath("plain");
    QString encrypted = folder.filePath("encrypted");
    QString copied = folder.filePath("copied");
    SimpleCrypt crypt{0x0123456789abcdef};
    bool isGood = false;

    Files()
    {
        QFile file(plain);
        if (!file.open(QIODevice::WriteOnly))
            return;
        for (qint64 size = 0; size < s_fileSize; size += s_bufferSize) {
            if (file.write(buffer(), s_bufferSize) != s_bufferSize)
                return;
        }
        file.close();
        isGood = crypt.encryptFileSmart(plain, encrypted);
    }
};

template <typename Work>
void onFiles(benchmark::State& state, Work&& work)
{
    static Files files;
    bool isDone = files.isGood;
    for (auto _ : state)
        isDone = isDone && work(files);
    QFile::remove(files.copied);
    if (!isDone)
        state.SkipWithError("it failed; /dev/shm needs 1.5 GiB");
}

bool runOn(const Files& files, const char* command)
{
    setenv("FILE", files.plain.toLocal8Bit(), 1);
    setenv("COPY", files.copied.toLocal8Bit(), 1);
    return std::system(command) == 0;
}

void addFiles()
{
    const char* const digestAndCopy =
        "openssl dgst -sha1 \"$FILE\" >/dev/null && cp \"$FILE\" \"$COPY\"";
    const auto digest = [=](auto& s) {
        onFiles(s, [=](const Files& files) { return runOn(files, digestAndCopy); });
    };
    add("encryptFileSmart, 512 MiB on tmpfs/ZelTools", [](auto& s) {
        onFiles(s, [](Files& f) { return f.crypt.encryptFileSmart(f.plain, f.copied); });
    });
    add("encryptFileSmart, 512 MiB on tmpfs/openssl dgst -sha1 and cp", digest);
    add("encryptFileSmart, 512 MiB on tmpfs/cp", [](auto& s) {
        onFiles(s, [](const Files& f) { return runOn(f, "cp \"$FILE\" \"$COPY\""); });
    });
    add("decryptFileSmart, 512 MiB on tmpfs/ZelTools", [](auto& s) {
        onFiles(s, [](Files& f) { return f.crypt.decryptFileSmart(f.encrypted, f.copied); });
    });
    add("decryptFileSmart, 512 MiB on tmpfs/openssl dgst -sha1 and cp", digest);
}

void addShortText()
{
    static const QByteArray text =
        QByteArray("Espresso 25 ml, 92.5 degrees; ").repeated(4).left(100);
    static SimpleCrypt crypt(0x0123456789abcdef);
    add("encryptToByteArray of 100 bytes/ZelTools", [](auto& s) {
        repeat(s, [] { benchmark::DoNotOptimize(crypt.encryptToByteArray(text)); });
    });
    add("encryptToByteArray of 100 bytes/qCompress alone",
        [](auto& s) { repeat(s, [] { benchmark::DoNotOptimize(qCompress(text, 9)); }); });
}

} // namespace

int main(int argc, char** argv)
{
    addCipher();
    addFiles();
    addShortText();
    return RatioTable::run(argc, argv);
}
