#pragma once

#include <QCoreApplication>

/// The texts that people read: Zelctl::tr() gives the translation into the language of the
/// environment, or the English text itself if there is none. QT_TRANSLATE_NOOP("zelctl", text)
/// marks a constant that is translated where it is printed. JSON, tables, log lines and names that
/// are typed on the command line are the same in every language.
class Zelctl
{
    Q_DECLARE_TR_FUNCTIONS(zelctl)

public:
    /// Loads the translation for the first of LC_ALL, LC_MESSAGES and LANG that is set; nothing for
    /// English, for the locale C, and for a language without a translation. The application object
    /// must exist.
    static void loadLanguage();
    /// Makes all further texts English, those of the system, too.
    static void speakEnglish();
    /// The text for a number, which is %n in it. English has `one` for the number 1; a translation
    /// has all its forms for `several`, which QT_TRANSLATE_N_NOOP marks.
    static QString counted(qint64 number, const char* one, const char* several);
};
