#pragma once

#include <QString>

/// The end of the function _zelctl of a completion script, whose grammar is the same in bash and in
/// zsh. It looks at `current`, the word at the cursor, and `before`, the words between zelctl and
/// that word, where "=" in an option is a word of its own. It offers words by the functions
/// _zelctl_words, _zelctl_described (with "word:description"), _zelctl_files and _zelctl_folders.
/// `firstIndex` is the index of the first element of an array: 0 in bash, 1 in zsh.
QString scriptBody(int firstIndex);
