#include "completioncommand.h"

#include "commandparser.h"
#include "shellcompletion.h"
#include "words.h"

void describeCompletion(CommandParser& parser)
{
    parser.setDescription(QT_TRANSLATE_NOOP(
        "zelctl", "Prints a script by which a shell completes command lines of zelctl: commands, "
                  "actions, options, the names of switches, kinds of events, modules, levels, "
                  "files and folders. The package installs these scripts; elsewhere they can be "
                  "read by the files that a shell reads at its start."));
    parser.addUsages({
        {"bash",
         QT_TRANSLATE_NOOP("zelctl",
                           "The script for bash 4.4 or later; it does not need bash-completion.")},
        {"zsh",
         QT_TRANSLATE_NOOP(
             "zelctl",
             "The script for zsh, after compinit, or for a folder in fpath by the name _zelctl.")},
        {"fish", QT_TRANSLATE_NOOP("zelctl", "The script for fish 3.2 or later.")},
    });
    parser.setExitStatuses(QT_TRANSLATE_NOOP("zelctl", "The script was printed."),
                           QT_TRANSLATE_NOOP("zelctl", "The script could not be written."));
    parser.addExamples({
        {"source <(zelctl completion bash)",
         QT_TRANSLATE_NOOP("zelctl", "Completes in this bash, and from ~/.bashrc in all.")},
        {"zelctl completion fish > ~/.config/fish/completions/zelctl.fish",
         QT_TRANSLATE_NOOP("zelctl", "Completes in each fish.")},
    });
}

ExitStatus runCompletion(const CommandParser& parser)
{
    const QString shell = parser.arguments().join(QLatin1Char(' '));
    if (shell == QLatin1String("bash"))
        return print(bashCompletion());
    if (shell == QLatin1String("zsh"))
        return print(zshCompletion());
    return print(fishCompletion());
}
