#include "keyvaluefile.h"

#include "filereplacement.h"
#include "keyvaluefile_p.h"
#include "logging/log.h"
#include "logging/logformatter.h"
#include "system.h"

#include <QByteArrayList>
#include <QFile>

#include <sys/stat.h>

namespace zeltools::keyvaluefile
{

namespace
{

using Map = QMap<QString, QString>;

constexpr auto s_loadSignature =
    "optional<QMap<QString, QString> > zeltools::keyvaluefile::load(const QString&, bool)";
constexpr auto s_saveSignature =
    "bool zeltools::keyvaluefile::save(const QString&, const QMap<QString, QString>&)";

void warn(const char* signature, const char* message, const QString& path)
{
    LogFormatter(LogLevel::Warning).log(Log::Global) << signature << message << path;
}

/// The text up to the first NUL.
QString textOf(const QByteArray& utf8)
{
    const auto size = qstrnlen(utf8.constData(), static_cast<uint>(utf8.size()));
    return QString::fromUtf8(utf8.constData(), static_cast<int>(size));
}

void insertLine(Map& map, const QByteArray& line)
{
    const QByteArray trimmed = line.trimmed();
    if (trimmed.startsWith('#'))
        return;
    const int equals = trimmed.indexOf('=');
    if (equals < 0)
        map.insert(textOf(trimmed), QStringLiteral("1"));
    else
        map.insert(textOf(trimmed.left(equals)), textOf(trimmed.mid(equals + 1)));
}

/// Parses a file that arrives in pieces. It keeps a line until its end has arrived, and of a line
/// that is too long only one byte more than allowed, so a damaged file of any size takes little
/// memory.
class PieceParser
{
public:
    explicit PieceParser(const QString& path)
        : m_path(path)
    {
    }

    void add(const QByteArray& piece)
    {
        const QByteArrayList parts = piece.split('\n');
        for (int i = 0; i < parts.size(); ++i) {
            if (i > 0)
                endLine();
            append(parts[i]);
        }
    }
    Map finish()
    {
        if (!m_line.isEmpty())
            endLine();
        return m_map;
    }

private:
    bool isTooLong() const { return m_line.size() > s_longestLine; }
    void append(const QByteArray& part)
    {
        const bool wasTooLong = isTooLong();
        m_line += part.left(s_longestLine + 1 - m_line.size());
        if (isTooLong() && !wasTooLong)
            LogFormatter(LogLevel::Warning).log(Log::Global)
                << s_loadSignature << "Ignoring line" << m_number << "longer than 16 MiB of file"
                << m_path;
    }
    void endLine()
    {
        if (!isTooLong())
            insertLine(m_map, m_line);
        m_line.clear();
        ++m_number;
    }

    static constexpr int s_longestLine = 16 * 1024 * 1024;

    const QString m_path;
    Map m_map;
    QByteArray m_line;
    qint64 m_number = 1;
};

/// Returns no map after a read error.
std::optional<Map> read(QFile& file)
{
    constexpr qint64 pieceSize = 65536;
    PieceParser parser(file.fileName());
    for (;;) {
        const QByteArray piece = file.read(pieceSize);
        if (file.error() != QFile::NoError)
            return std::nullopt;
        if (piece.isEmpty())
            return parser.finish();
        parser.add(piece);
    }
}

QByteArray contentOf(const Map& map)
{
    QByteArray content;
    for (auto entry = map.begin(); entry != map.end(); ++entry)
        content += toLine(entry.key(), entry.value());
    return content;
}

/// Opening a pipe would wait for a process at its other end.
bool canOpen(const QString& path)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) != 0 || S_ISREG(status.st_mode) ||
           S_ISCHR(status.st_mode);
}

} // namespace

QMap<QString, QString> parse(const QByteArray& content)
{
    Map map;
    for (int start = 0; start < content.size();) { // one line at a time, for little memory
        const int feed = content.indexOf('\n', start);
        const int end = feed < 0 ? content.size() : feed;
        insertLine(map, content.mid(start, end - start));
        start = end + 1;
    }
    return map;
}

QByteArray toLine(const QString& key, const QString& value)
{
    return QString(key + QLatin1Char('=') + value + QLatin1Char('\n')).toUtf8();
}

std::optional<QMap<QString, QString>> load(const QString& path, bool logOpenFailure)
{
    QFile file(path);
    std::optional<Map> map;
    if (canOpen(path) && file.open(QIODevice::ReadOnly))
        map = read(file);
    if (!map && logOpenFailure)
        warn(s_loadSignature, "Failed opening file", path);
    return map;
}

bool save(const QString& path, const QMap<QString, QString>& map)
{
    QFile file(path);
    // Without a buffer, write() returns the number of bytes that the disk had room for.
    if (!canOpen(path) ||
        !file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered)) {
        warn(s_saveSignature, "Failed opening file", path);
        return false;
    }
    const QByteArray content = contentOf(map);
    if (file.write(content) != content.size()) {
        warn(s_saveSignature, "Failed writing to file", path);
        return false;
    }
    file.close();
    System::syncFile(file);
    return true;
}

bool saveSafely(const QString& path, const QMap<QString, QString>& map)
{
    FileReplacement file(path, FileReplacement::Edit); // an edit may be under way
    const bool isOpen = file.errorString().isEmpty();
    if (isOpen && file.replace(contentOf(map)))
        return true;
    if (file.needsWritingInPlace())
        return save(path, map);
    warn(s_saveSignature, isOpen ? "Failed writing to file" : "Failed opening file", path);
    return false;
}

// A key that contains "%2" receives the value there, which hosts may rely on.
void print(const QMap<QString, QString>& map)
{
    for (auto entry = map.begin(); entry != map.end(); ++entry) {
        const QString withKey = QStringLiteral("%1=%2").arg(entry.key());
        LogFormatter(LogLevel::Info).log(Log::Global).noquote() << withKey.arg(entry.value());
    }
}

} // namespace zeltools::keyvaluefile
