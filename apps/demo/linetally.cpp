#include "linetally.h"

#include <zeltools/logging/rotatinglogfile.h>

#include <QTextStream>

namespace
{

struct Kind
{
    const char* name;
    int file; // the index of the file of its lines, or -1 for none
};

constexpr std::array<Kind, LineTally::kindsCount> s_kinds{{{"debug-off", -1},
                                                           {"debug", 0},
                                                           {"info", 0},
                                                           {"warning", 0},
                                                           {"error", 0},
                                                           {"critical", 0},
                                                           {"qt", 0},
                                                           {"failure", 0},
                                                           {"event", 1},
                                                           {"grinder", 2},
                                                           {"capsule", 3},
                                                           {"m4", 4}}};

constexpr std::array<const char*, 5> s_files{"zel_logs.log", "zel_events.log", "zel_grinder.log",
                                             "zel_capsule.log", "m4_ab.log"};

constexpr int s_columnWidth = 17;

} // namespace

QString LineTally::mark(LineKind kind)
{
    const auto index = static_cast<size_t>(kind);
    return QStringLiteral("[%1 %2]")
        .arg(QLatin1String(s_kinds[index].name))
        .arg(++m_written[index]);
}

void LineTally::readFiles(const QString& debugDir, const QString& eventsDir)
{
    for (size_t file = 0; file < s_files.size(); ++file) {
        const bool isDebug = file == 0 || file == 4;
        const QString name = (isDebug ? debugDir : eventsDir) + QLatin1String(s_files[file]);
        const QStringList lines = RotatingLogFile::getLogLines(name + QLatin1String(".1")) +
                                  RotatingLogFile::getLogLines(name);
        for (size_t kind = 0; kind < s_kinds.size(); ++kind) {
            for (int number = 1; number <= m_written[kind]; ++number) {
                const QString mark =
                    QStringLiteral("[%1 %2]").arg(QLatin1String(s_kinds[kind].name)).arg(number);
                for (const QString& line : lines)
                    m_found[kind][file] += line.endsWith(mark) ? 1 : 0;
            }
        }
    }
}

bool LineTally::isComplete() const
{
    for (size_t kind = 0; kind < s_kinds.size(); ++kind) {
        for (int file = 0; file < filesCount; ++file) {
            const int expected = file == s_kinds[kind].file ? m_written[kind].load() : 0;
            if (m_found[kind][size_t(file)] != expected)
                return false;
        }
    }
    return true;
}

QString LineTally::table() const
{
    QString text;
    QTextStream stream(&text);
    stream << qSetFieldWidth(s_columnWidth) << Qt::left << "lines"
           << "written";
    for (const char* file : s_files)
        stream << file;
    for (size_t kind = 0; kind < s_kinds.size(); ++kind) {
        stream << qSetFieldWidth(0) << '\n' << qSetFieldWidth(s_columnWidth);
        stream << s_kinds[kind].name << m_written[kind].load();
        for (const int found : m_found[kind])
            stream << found;
    }
    stream << qSetFieldWidth(0) << '\n';
    stream.flush();
    return text;
}
