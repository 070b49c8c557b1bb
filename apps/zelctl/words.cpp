#include "words.h"

#include <QTranslator>

#include <algorithm>
#include <clocale>
#include <limits>

namespace
{

QTranslator& translator()
{
    static QTranslator object;
    return object;
}

} // namespace

void Zelctl::loadLanguage()
{
    QByteArray locale;
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (locale.isEmpty())
            locale = qgetenv(name);
    }
    // "de", "de_AT.UTF-8" and "de@euro" have the same texts.
    const auto* const end =
        std::find_if_not(locale.begin(), locale.end(), [](char c) { return c >= 'a' && c <= 'z'; });
    const auto language = QString::fromLatin1(locale.constData(), int(end - locale.begin()));
    if (!language.isEmpty() && language != QLatin1String("en") &&
        translator().load(QStringLiteral(":/zeltools/translations/zelctl_%1.qm").arg(language)))
        QCoreApplication::installTranslator(&translator());
}

void Zelctl::speakEnglish()
{
    QCoreApplication::removeTranslator(&translator());
    std::setlocale(LC_MESSAGES, "C");
}

QString Zelctl::counted(qint64 number, const char* one, const char* several)
{
    const auto count = static_cast<int>(std::min<qint64>(number, std::numeric_limits<int>::max()));
    return count == 1 && translator().isEmpty() ? QString::fromLatin1(one)
                                                : tr(several, nullptr, count);
}
