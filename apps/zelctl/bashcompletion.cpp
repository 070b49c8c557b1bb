#include "scriptbody.h"
#include "shellcompletion.h"

namespace
{

/// bash splits a word at "=". It gets the candidates as they have to be typed, or for the names of
/// files as they are.
constexpr auto s_bashStart = R"(# Completion of zelctl in bash, written by "zelctl completion bash".

_zelctl_words()
{
    local candidate quoted
    for candidate in "$@"; do
        [[ $candidate == "$current"* ]] || continue
        printf -v quoted %q "$candidate"
        COMPREPLY+=("$quoted")
    done
}

_zelctl_described()
{
    _zelctl_words "${@%%:*}"
}

_zelctl_paths()
{
    local -a found
    mapfile -t found < <(compgen "$1" -- "$current")
    COMPREPLY+=("${found[@]}")
    compopt -o filenames
}

_zelctl_files()
{
    _zelctl_paths -f
}

_zelctl_folders()
{
    _zelctl_paths -d
}

_zelctl()
{
    local current=${COMP_WORDS[COMP_CWORD]}
    local -a before=("${COMP_WORDS[@]:1:COMP_CWORD-1}")
    COMPREPLY=()
    [[ $current != '=' ]] || { current=; before+=('='); }
)";

} // namespace

QString bashCompletion()
{
    return QString::fromLatin1(s_bashStart) + scriptBody(0) +
           QStringLiteral("\ncomplete -F _zelctl zelctl\n");
}
