#include "quick/language_p.h"

#include <QCoreApplication>
#include <QDir>

namespace zeltools::quick
{

namespace
{

const QLatin1String s_english("en");

/// The first language of the user that the screen has.
QString systemLanguage()
{
    const QStringList available = Language::available();
    const QStringList wanted = QLocale::system().uiLanguages();
    for (const QString& name : wanted) {
        QString code = name.section(QLatin1Char('-'), 0, 0);
        if (available.contains(code))
            return code;
    }
    return s_english;
}

} // namespace

Language* Language::instance()
{
    static auto* const language = new Language;
    return language;
}

Language::Language()
{
    load();
}

Language::~Language() = default;

QStringList Language::available()
{
    QStringList codes{s_english};
    const QStringList files = QDir(QStringLiteral(":/zeltools/translations"))
                                  .entryList({QStringLiteral("zeltools_*.qm")}, QDir::Files);
    for (const QString& file : files)
        codes.append(file.section(QLatin1Char('_'), 1).section(QLatin1Char('.'), 0, 0));
    codes.removeDuplicates();
    return codes;
}

void Language::setCode(const QString& code)
{
    if (code == m_code)
        return;
    m_code = code;
    load();
    Q_EMIT changed();
}

void Language::load()
{
    QCoreApplication::removeTranslator(&m_translator);
    m_shown = m_code.isEmpty() ? systemLanguage() : m_code;
    if (available().contains(m_shown) &&
        m_translator.load(QStringLiteral(":/zeltools/translations/zeltools_") + m_shown)) {
        QCoreApplication::installTranslator(&m_translator);
        return;
    }
    m_shown = s_english;
    if (!m_code.isEmpty())
        m_code = s_english;
}

bool Language::isRightToLeft() const
{
    return QLocale(m_shown).textDirection() == Qt::RightToLeft;
}

QLocale Language::locale() const
{
    QLocale locale = m_code.isEmpty() ? QLocale() : QLocale(m_code);
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return locale;
}

} // namespace zeltools::quick
