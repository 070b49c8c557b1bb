#include "logprinter.h"

#include "command.h"
#include "lossledger.h"
#include "words.h"

#include <QFileInfo>
#include <QJsonDocument>

#include <cerrno>

#include <unistd.h>

namespace
{

constexpr size_t s_bufferSize = 0x10000;

QString decoded(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

/// The sequence that switches a terminal to the colour of the line; empty for most lines.
const char* colour(const LogEntry& entry)
{
    if (LossLedger::lostLines(entry.text) > 0)
        return "\033[1;97;45m"; // bold white on magenta
    switch (entry.level) {
    case LogLevel::Debug:
        return "\033[2m"; // dim
    case LogLevel::Event:
        return "\033[36m"; // cyan
    case LogLevel::Warning:
        return "\033[33m"; // yellow
    case LogLevel::Error:
        return "\033[31m"; // red
    case LogLevel::Critical:
        return "\033[1;97;41m"; // bold white on red
    default:
        return "";
    }
}

} // namespace

LogPrinter::LogPrinter(Style style)
    : m_style(style)
    , m_isTerminal(isatty(STDOUT_FILENO) != 0)
{
}

void LogPrinter::print(const LogEntry& entry)
{
    if (m_style == Plain) {
        m_buffer += entry.text;
    } else if (m_style == Json) {
        printJson(entry);
    } else {
        const char* const start = m_style == Coloured ? colour(entry) : "";
        m_buffer += start;
        m_buffer += withoutControls(decoded(entry.text), QStringLiteral("\t")).toStdString();
        if (*start != '\0')
            m_buffer += "\033[0m";
    }
    m_buffer += '\n';
    if (m_buffer.size() >= s_bufferSize)
        flush();
}

void LogPrinter::printJson(const LogEntry& entry)
{
    QJsonObject object = jsonObject({{"level", levelName(entry.level)},
                                     {"file", QFileInfo(*entry.path).fileName()},
                                     {"text", decoded(message(entry))}});
    if (entry.time != 0)
        object.insert(QStringLiteral("time"), isoTime(entry.time));
    const std::string_view kind = eventKind(entry);
    if (!kind.empty())
        object.insert(QStringLiteral("kind"), decoded(kind));
    const qint64 lost = LossLedger::lostLines(entry.text);
    if (lost > 0)
        object.insert(QStringLiteral("lost"), lost);
    const QByteArray json = QJsonDocument(object).toJson(QJsonDocument::Compact);
    m_buffer +=
        m_isTerminal ? withoutControls(QString::fromUtf8(json)).toStdString() : json.toStdString();
}

void LogPrinter::flush()
{
    for (size_t written = 0; written < m_buffer.size() && !m_isClosed;) {
        const ssize_t count =
            write(STDOUT_FILENO, m_buffer.data() + written, m_buffer.size() - written);
        if (count >= 0) {
            written += size_t(count);
        } else if (errno != EINTR) {
            m_isClosed = true;
            if (errno != EPIPE) // a reader that has gone has seen what it wanted
                m_error = Zelctl::tr("cannot write the output: %1").arg(systemError());
        }
    }
    m_buffer.clear();
}
