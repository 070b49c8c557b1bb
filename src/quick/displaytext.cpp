#include "quick/displaytext_p.h"

namespace zeltools::quick
{

namespace
{

bool isLineEnd(ushort code)
{
    return code == '\n' || code == '\r' || code == 0x85 || code == 0x2028 || code == 0x2029;
}

bool isDirectionChange(ushort code)
{
    return (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

QChar shown(QChar character)
{
    const ushort code = character.unicode();
    if (isLineEnd(code) || code == '\t')
        return QLatin1Char(' ');
    const bool isControl = code < ' ' || (code >= 0x7F && code < 0xA0);
    return isControl || isDirectionChange(code) || character.isSurrogate()
               ? QChar(QChar::ReplacementCharacter)
               : character;
}

QString cut(const QString& text, int maximum)
{
    if (text.size() <= maximum)
        return text;
    const bool isPairSplit = maximum > 0 && text.at(maximum - 1).isHighSurrogate();
    return text.left(isPairSplit ? maximum - 1 : maximum);
}

QString cleaned(QString text, QLatin1String kept)
{
    for (int i = 0; i < text.size(); ++i) {
        const bool isPair =
            text.at(i).isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        if (isPair)
            ++i;
        else if (!kept.contains(text.at(i)))
            text[i] = shown(text.at(i));
    }
    return text;
}

} // namespace

DisplayText::DisplayText(const QString& given, int maximum)
    : text(cleaned(cut(given, maximum), QLatin1String()))
    , isCut(given.size() > maximum)
{
}

QString DisplayText::lines(const QString& given, int maximum)
{
    return cleaned(cut(given, maximum).replace(QChar(), QChar(0x2400)), QLatin1String("\n\t"));
}

QString DisplayText::name(const QString& given, int maximum)
{
    const QChar ellipsis(0x2026);
    return given.size() > maximum ? DisplayText(given, maximum - 1).text + ellipsis
                                  : DisplayText(given, maximum).text;
}

} // namespace zeltools::quick
