#pragma once

#include "command.h"

#include <QCommandLineParser>

#include <initializer_list>
#include <optional>
#include <vector>

/// The description of one command, and the command line that it gets. The help, the man page and
/// the completions of shells are made from the description, which the command adds in one function.
/// All its texts are marked English, ASCII, and live as long as the program. A paragraph ends with
/// "\n\n", and has no other line feeds.
class CommandParser
{
public:
    /// A name and its explanation.
    struct Row
    {
        const char* name;
        const char* text;
    };
    /// What a value is, so that a shell can complete it.
    enum Kind {
        Text,
        File,
        Folder,
        OneOf, ///< one of the words, which the help lists
        Name   ///< one of the words, which are too many for the help
    };
    /// A value that the usages and options of the command name in capitals. Its description has no
    /// full stop; a value without one is not in the list of values.
    struct Value
    {
        const char* name;
        const char* text;
        Kind kind = Text;
        QStringList words = {};
    };
    /// An option takes a value if that has a name. The name is one of the values above, or "a|b|c"
    /// for one of these words.
    struct Option
    {
        const char* name;
        const char* text;
        const char* valueName = "";
        const char* defaultValue = "";
        /// Whether values() reads it. Any other option with a value may be given once only.
        bool isRepeatable = false;
    };
    struct Description
    {
        const char* text = "";
        /// The words after the name of the command, such as "FILE get NAME" or "[COMMAND]".
        std::vector<Row> usages;
        std::vector<Value> values;
        std::vector<Option> options;
        const char* done = "";   ///< what exit status 0 means
        const char* failed = ""; ///< what exit status 1 means
        std::vector<Row> environment;
        std::vector<Row> files;
        std::vector<Row> examples; ///< a command line and what it does
    };

    /// The words of a usage without its brackets.
    static QStringList wordsOf(const QString& usage);
    /// Whether a word of a usage is typed as it is: one in small letters. Others name values.
    static bool isTyped(const QString& word) { return word.isLower() && !word.isUpper(); }

    /// Lets the command describe itself.
    explicit CommandParser(const Command& command);

    void setDescription(const char* text) { m_description.text = text; }
    void addUsages(std::initializer_list<Row> usages) { m_description.usages = usages; }
    void addValues(std::initializer_list<Value> values) { m_description.values = values; }
    void addOptions(std::initializer_list<Option> options);
    void setExitStatuses(const char* done, const char* failed);
    void addEnvironment(std::initializer_list<Row> names) { m_description.environment = names; }
    void addFiles(std::initializer_list<Row> paths) { m_description.files = paths; }
    void addExamples(std::initializer_list<Row> examples) { m_description.examples = examples; }

    const Command& command() const { return m_command; }
    const Description& description() const { return m_description; }
    /// The value of that name, or one with the words of "a|b|c".
    Value valueOf(const QString& name) const;

    /// Takes "zelctl <name>" and the words after it. Returns a status if the command ends here
    /// because it has shown its help or was called wrongly.
    std::optional<ExitStatus> parse(const QStringList& words);

    QStringList arguments() const { return m_parser.positionalArguments(); }
    bool isSet(const char* option) const { return m_parser.isSet(QString::fromLatin1(option)); }
    QString value(const char* option) const { return m_parser.value(QString::fromLatin1(option)); }
    /// The values of an option that may be given several times.
    QStringList values(const char* option) const
    {
        return m_parser.values(QString::fromLatin1(option));
    }
    /// The same for names, of which one value may have several with commas between them.
    QStringList names(const char* option) const;

private:
    QString problem() const;

    const Command& m_command;
    Description m_description;
    QCommandLineParser m_parser;
};
