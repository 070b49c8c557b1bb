#pragma once

#include <zeltools/logging/debugswitch.h>
#include <zeltools/logging/logeventmodule.h>
#include <zeltools/logging/loglevel.h>
#include <zeltools/logging/logmodules.h>

#include <QDebug>
#include <QString>

#include <array>
#include <cstring>
#include <optional>
#include <type_traits>

/// Builds one log line by streaming, and passes it to LogNode when its last copy is destroyed:
///
///     LogFormatter(LogLevel::Info).log(Log::Payment) << "Inserted" << 50 << "cents";
///
/// Every type that QDebug accepts can be streamed and gives the same text: a blank follows each
/// item, and a QString is enclosed in double quotes. The blank after the last item is removed.
/// Copies share one line and belong to one thread.
///
/// A Debug line that nobody would see collects no text after log(modules) has set its modules, so
/// set the modules first. Such a line then costs a nanosecond or two.
class ZELTOOLS_EXPORT LogFormatter
{
public:
    /// Begins a line of the level.
    explicit LogFormatter(const LogLevel::Level& level)
        : m_state{level}
    {
    }
    LogFormatter(const LogFormatter& other);
    LogFormatter& operator=(const LogFormatter& other);
    /// The destructor of the last copy passes the line to LogNode. An Event line begins with a
    /// blank, its kind and "| ", and is also announced by LogManager::newLogEvent().
    ~LogFormatter()
    {
        if (m_line != nullptr || m_state.isCollected)
            release();
    }

    /// Replaces the modules of the line, which are `Log::None` by default.
    LogFormatter& log(const LogModules& modules) { return setModules(modules); }
    LogFormatter& log(const LogModule& module) { return setModules(module); }
    /// Sets the kind of an Event line.
    LogFormatter& logEvent(const LogEventModule::EventModule& event);

    /// Streams the text (UTF-8, null counts as empty), after ":" if the line already has text:
    /// `log("first").log("second")` gives `first : second`.
    LogFormatter& log(const char* text)
    {
        if (isCollected())
            appendPiece(text);
        return *this;
    }
    LogFormatter& log(const QString& text);

    /// @{
    /// These work like the functions of QDebug.
    LogFormatter& noquote();
    LogFormatter& quote();
    LogFormatter& nospace();
    LogFormatter& space();
    /// @}

    /// Streams the value with the text that QDebug gives it, if anybody hears the line.
    template <typename T>
    LogFormatter& operator<<(const T& value)
    {
        if (isCollected())
            append(value);
        return *this;
    }

private:
    struct State
    {
        LogLevel::Level level;
        bool isCollected = true;
        bool isSpaced = true;
        bool isQuoted = true;
    };

    struct Line
    {
        struct Spare;

        /// A new line, or the one that this thread has kept.
        static Line* take(const State& state);
        static void release(Line* line);

        int references;
        State state;
        LogEventModule::EventModule event;
        LogModules modules;
        // The text is in the array until the stream is created, which appends to the message.
        int size;
        std::array<ushort, 512> text;
        QString message;
        // The stream is created for the first item that append() does not handle itself, or that
        // the array has no room for. From then on it formats every item, since an item may change
        // its state (base, precision, spaces).
        std::optional<QDebug> debug;

        /// Whether the array takes that many characters, quotes and a blank.
        bool hasRoom(size_t count) const
        {
            return !debug && count + 3 <= text.size() - size_t(size);
        }
        void append(char character) { text[size_t(size++)] = static_cast<uchar>(character); }
        /// Appends the characters, and returns one that has all bits of them.
        template <typename Character>
        ushort append(const Character* characters, size_t count);
        void endItem();
        /// Ends the message, without the blank after the last item.
        void end();
        /// Moves the text of the array to the message.
        void useMessage();
    };

    bool isCollected() const { return (m_line != nullptr ? m_line->state : m_state).isCollected; }

    template <typename Modules>
    LogFormatter& setModules(const Modules& modules)
    {
        if (m_line == nullptr && m_state.level == LogLevel::Debug &&
            zeltools::DebugSwitch::isOff(modules))
            m_state.isCollected = false;
        else
            replaceModules(modules);
        return *this;
    }

    State& state() { return m_line != nullptr ? m_line->state : m_state; }
    bool hasStream() const { return m_line != nullptr && m_line->debug; }
    Line& line() const;
    void release();
    void finish();
    void replaceModules(const LogModules& modules);
    void appendPiece(const char* text);
    QDebug& debug();

    // Inline, so that the compiler counts the characters of a literal.
    void appendText(const char* utf8) { appendText(utf8, utf8 != nullptr ? std::strlen(utf8) : 0); }
    void appendText(const char* utf8, size_t size);
    void appendQuoted(const QString& text);
    void appendBool(bool value);
    void appendSigned(qlonglong value);
    void appendUnsigned(qulonglong value);
    void appendReal(double value);
    template <typename T, typename... Format>
    void appendNumber(T value, Format... format);

    template <typename T>
    void append(const T& value)
    {
        if constexpr (std::is_same_v<T, bool>)
            appendBool(value);
        else if constexpr (isPlainInteger<T>() && std::is_signed_v<T>)
            appendSigned(value);
        else if constexpr (isPlainInteger<T>())
            appendUnsigned(value);
        else if constexpr (std::is_same_v<T, float> || std::is_same_v<T, double>)
            appendReal(static_cast<double>(value));
        else if constexpr (std::is_same_v<std::decay_t<T>, const char*> ||
                           std::is_same_v<std::decay_t<T>, char*>)
            appendText(value);
        else if constexpr (std::is_same_v<T, QString>)
            appendQuoted(value);
        else
            debug() << value;
    }

    template <typename T>
    static constexpr bool isPlainInteger()
    {
        return std::is_integral_v<T> && !std::is_same_v<T, char> && !std::is_same_v<T, wchar_t> &&
               !std::is_same_v<T, char16_t> && !std::is_same_v<T, char32_t>;
    }

    // The line is taken when it is needed. Until then, and for good if it stays off, its state is
    // in the formatter.
    mutable Line* m_line = nullptr;
    State m_state;
};
