#include "scriptbody.h"
#include "shellcompletion.h"

namespace
{

/// zsh quotes the candidates itself.
constexpr auto s_zshStart = R"(#compdef zelctl
# Completion of zelctl in zsh, written by "zelctl completion zsh".

_zelctl_words()
{
    compadd -- "$@"
}

_zelctl_described()
{
    local -a candidates=("$@")
    _describe -t words word candidates
}

_zelctl_files()
{
    _files
}

_zelctl_folders()
{
    _files -/
}

_zelctl()
{
    local current=$words[CURRENT]
    local -a before=("${(@)words[2,CURRENT-1]}")
    if [[ $current == --*=* ]]; then
        before+=("${current%%=*}" '=')
        compset -P '*='
        current=${current#*=}
    fi
)";

} // namespace

QString zshCompletion()
{
    // The file of a completion function may be read or called by a shell.
    return QString::fromLatin1(s_zshStart) + scriptBody(1) +
           QStringLiteral("\nif [[ $funcstack[1] == _zelctl ]]; then\n    _zelctl \"$@\"\nelse\n"
                          "    compdef _zelctl zelctl\nfi\n");
}
