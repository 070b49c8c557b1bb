#include "keyvaluefile.h"

#include "keyvaluefile_p.h"
#include "logging/log.h"
#include "logging/logformatter.h"
#include "system.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <string_view>
#include <vector>

namespace zeltools::keyvaluefile
{

namespace
{

std::string_view trimmed(std::string_view line)
{
    constexpr std::string_view whiteSpace = " \t\n\v\f\r";
    line.remove_prefix(std::min(line.find_first_not_of(whiteSpace), line.size()));
    return line.substr(0, line.find_last_not_of(whiteSpace) + 1);
}

std::string_view upToNul(std::string_view text)
{
    return text.substr(0, text.find('\0'));
}

struct Pair
{
    std::string_view key;
    std::string_view value;

    bool operator<(const Pair& other) const { return key < other.key; }
};

QString text(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<int>(utf8.size()));
}

void parseInto(QMap<QString, QString>& map, std::string_view rest)
{
    std::vector<Pair> pairs;
    char all = 0; // of the bytes of all keys
    while (!rest.empty()) {
        const size_t size = std::min(rest.find('\n'), rest.size() - 1) + 1;
        const std::string_view line = trimmed(rest.substr(0, size));
        rest.remove_prefix(size);
        if (!line.empty() && line.front() == '#')
            continue;
        const size_t equals = line.find('=');
        const Pair pair{upToNul(line.substr(0, equals)),
                        equals == line.npos ? "1" : upToNul(line.substr(equals + 1))};
        if (!pairs.empty() && pairs.back().key == pair.key)
            pairs.back() = pair; // a run of blank lines, say
        else
            pairs.push_back(pair);
        for (const char c : pair.key)
            all = static_cast<char>(all | c);
    }
    // Pairs of one key keep their order: the later one wins. In order, the place of each is known
    // without a search through a tree that has left the cache. Beyond ASCII the order of the bytes
    // is not that of the texts, nor are equal texts equal bytes.
    if ((all & 0x80) == 0 && !std::is_sorted(pairs.begin(), pairs.end()))
        std::stable_sort(pairs.begin(), pairs.end());
    for (const Pair& pair : pairs)
        map.insert(map.cend(), text(pair.key), text(pair.value));
}

void warn(const char* signature, const char* message, const QString& path)
{
    LogFormatter(LogLevel::Warning).log(Log::Global) << signature << message << path;
}

} // namespace

QMap<QString, QString> parse(const QByteArray& content)
{
    QMap<QString, QString> map;
    parseInto(map, std::string_view(content.constData(), size_t(content.size())));
    return map;
}

QByteArray toLine(const QString& key, const QString& value)
{
    return QString(key + QLatin1Char('=') + value + QLatin1Char('\n')).toUtf8();
}

std::optional<QMap<QString, QString>> load(const QString& path, bool logOpenFailure)
{
    QFile file(path);
    // Opening a pipe would wait for somebody who writes into it.
    if ((file.exists() && !QFileInfo(file).isFile()) || !file.open(QIODevice::ReadOnly)) {
        if (logOpenFailure) {
            warn("optional<QMap<QString, QString> > zeltools::keyvaluefile::load("
                 "const QString&, bool)",
                 "Failed opening file", path);
        }
        return std::nullopt;
    }
    // Piece by piece, each up to its last line feed: a damaged file of any size takes little
    // memory.
    constexpr qint64 pieceSize = qint64(1024) * 1024;
    constexpr int longestLine = 16 * 1024 * 1024; // a longer one is taken for several
    QMap<QString, QString> map;
    QByteArray rest;
    for (;;) {
        const QByteArray piece = file.read(pieceSize);
        rest += piece;
        const bool isWhole = piece.isEmpty() || rest.size() > longestLine;
        const int size = isWhole ? rest.size() : rest.lastIndexOf('\n') + 1;
        parseInto(map, std::string_view(rest.constData(), size_t(size)));
        rest.remove(0, size);
        if (piece.isEmpty())
            return map;
    }
}

bool save(const QString& path, const QMap<QString, QString>& map)
{
    const char* const signature = "bool zeltools::keyvaluefile::save("
                                  "const QString&, const QMap<QString, QString>&)";
    QFile file(path);
    // Without a buffer the result of a write is what the disk had room for.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered)) {
        warn(signature, "Failed opening file", path);
        return false;
    }
    for (auto entry = map.begin(); entry != map.end(); ++entry) {
        const QByteArray line = toLine(entry.key(), entry.value());
        if (file.write(line) != line.size()) {
            warn(signature, "Failed writing to file", path);
            return false;
        }
    }
    file.close();
    System::syncFile(file);
    return true;
}

void print(const QMap<QString, QString>& map)
{
    for (auto entry = map.begin(); entry != map.end(); ++entry) {
        LogFormatter(LogLevel::Info).log(Log::Global).noquote()
            << QStringLiteral("%1=%2").arg(entry.key()).arg(entry.value());
    }
}

} // namespace zeltools::keyvaluefile
