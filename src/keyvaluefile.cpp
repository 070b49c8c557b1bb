#include "keyvaluefile.h"

#include "filereplacement.h"
#include "keyvaluefile_p.h"
#include "logging/log.h"
#include "logging/logformatter.h"
#include "system.h"

#include <QFile>

#include <algorithm>
#include <string_view>
#include <vector>

#include <sys/stat.h>

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

/// Returns the number of lines.
qint64 parseInto(QMap<QString, QString>& map, std::string_view rest)
{
    std::vector<Pair> pairs;
    qint64 lines = 0;
    char all = 0; // of the bytes of all keys
    for (; !rest.empty(); ++lines) {
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
    return lines;
}

constexpr auto s_loadSignature =
    "optional<QMap<QString, QString> > zeltools::keyvaluefile::load(const QString&, bool)";
constexpr auto s_saveSignature =
    "bool zeltools::keyvaluefile::save(const QString&, const QMap<QString, QString>&)";

void warn(const char* signature, const char* message, const QString& path)
{
    LogFormatter(LogLevel::Warning).log(Log::Global) << signature << message << path;
}

/// Makes pairs of a file that comes piece by piece. Whole lines are parsed at once, and a line that
/// is too long is dropped as it comes: a damaged file of any size takes little memory.
class PieceParser
{
public:
    explicit PieceParser(const QString& path)
        : m_path(path)
    {
    }

    /// How large the next piece may be. A line that fills it without an end is too long.
    qint64 room() const { return std::min(s_pieceSize, s_longestLine + 1 - m_rest.size()); }
    void add(const QByteArray& piece);
    QMap<QString, QString> finish();

private:
    void parse(int size);
    void dropLongLine();

    static constexpr qint64 s_pieceSize = qint64(1024) * 1024;
    static constexpr qint64 s_longestLine = qint64(16) * 1024 * 1024;

    const QString m_path;
    QMap<QString, QString> m_map;
    QByteArray m_rest; ///< a line without its end
    qint64 m_line = 1; ///< the number of that line
    bool m_isDropping = false;
};

void PieceParser::add(const QByteArray& piece)
{
    m_rest += piece;
    if (m_isDropping)
        dropLongLine();
    parse(m_rest.lastIndexOf('\n') + 1);
    if (m_rest.size() <= s_longestLine)
        return;
    LogFormatter(LogLevel::Warning).log(Log::Global)
        << s_loadSignature << "Ignoring line" << m_line << "longer than 16 MiB of file" << m_path;
    m_isDropping = true;
    dropLongLine();
}

QMap<QString, QString> PieceParser::finish()
{
    parse(m_rest.size());
    return m_map;
}

void PieceParser::parse(int size)
{
    m_line += parseInto(m_map, std::string_view(m_rest.constData(), size_t(size)));
    m_rest.remove(0, size);
}

void PieceParser::dropLongLine()
{
    const int lineFeed = m_rest.indexOf('\n');
    m_isDropping = lineFeed < 0;
    m_rest.remove(0, m_isDropping ? m_rest.size() : lineFeed + 1);
    if (!m_isDropping)
        ++m_line;
}

/// Nothing after a read error.
std::optional<QMap<QString, QString>> read(QFile& file)
{
    PieceParser parser(file.fileName());
    for (;;) {
        const QByteArray piece = file.read(parser.room());
        if (file.error() != QFile::NoError)
            return std::nullopt;
        if (piece.isEmpty())
            return parser.finish();
        parser.add(piece);
    }
}

/// Opening a pipe would wait for somebody at its other end.
bool canOpen(const QString& path)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) != 0 || S_ISREG(status.st_mode) ||
           S_ISCHR(status.st_mode);
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
    std::optional<QMap<QString, QString>> map;
    if (canOpen(path) && file.open(QIODevice::ReadOnly))
        map = read(file);
    if (!map && logOpenFailure)
        warn(s_loadSignature, "Failed opening file", path);
    return map;
}

bool save(const QString& path, const QMap<QString, QString>& map)
{
    QFile file(path);
    // Without a buffer the result of a write is what the disk had room for.
    if (!canOpen(path) ||
        !file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered)) {
        warn(s_saveSignature, "Failed opening file", path);
        return false;
    }
    for (auto entry = map.begin(); entry != map.end(); ++entry) {
        const QByteArray line = toLine(entry.key(), entry.value());
        if (file.write(line) != line.size()) {
            warn(s_saveSignature, "Failed writing to file", path);
            return false;
        }
    }
    file.close();
    System::syncFile(file);
    return true;
}

bool saveSafely(const QString& path, const QMap<QString, QString>& map)
{
    QByteArray content;
    for (auto entry = map.begin(); entry != map.end(); ++entry)
        content += toLine(entry.key(), entry.value());
    FileReplacement file(path, FileReplacement::Edit); // an edit may be under way
    const bool isOpen = file.errorString().isEmpty();
    if (isOpen && file.replace(content))
        return true;
    if (file.needsWritingInPlace())
        return save(path, map);
    warn(s_saveSignature, isOpen ? "Failed writing to file" : "Failed opening file", path);
    return false;
}

void print(const QMap<QString, QString>& map)
{
    for (auto entry = map.begin(); entry != map.end(); ++entry) {
        LogFormatter(LogLevel::Info).log(Log::Global).noquote()
            << QStringLiteral("%1=%2").arg(entry.key()).arg(entry.value());
    }
}

} // namespace zeltools::keyvaluefile
