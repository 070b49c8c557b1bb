#pragma once

#include <QLocale>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTranslator>

namespace zeltools::quick
{

/// The language of the screen, once for the process: the translator of the library's own texts.
/// English needs none. The translations are resources of the library,
/// ":/zeltools/translations/zeltools_de.qm" for German.
///
/// Use it in the main thread, after the application object was created.
class Language : public QObject
{
    Q_OBJECT

public:
    /// The only object, which the first call creates in the language of the system. It is never
    /// destroyed.
    static Language* instance();
    ~Language() override;

    /// "en" and the languages that have a translation, such as "de".
    static QStringList available();

    /// The language that was set, or an empty text for that of the system.
    QString code() const { return m_code; }
    /// Sets a language, or with an empty text that of the system. One without a translation counts
    /// as "en".
    void setCode(const QString& code);
    bool isRightToLeft() const;
    /// For numbers: that of the language that was set, otherwise that of the system.
    QLocale locale() const;

Q_SIGNALS:
    /// The translator is installed, and texts can be translated again.
    void changed();

private:
    Language();

    void load();

    QString m_code;
    QString m_shown = QStringLiteral("en"); // never empty
    QTranslator m_translator;
};

} // namespace zeltools::quick
