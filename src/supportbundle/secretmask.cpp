#include "supportbundle/secretmask_p.h"

#include <QRegularExpression>
#include <QString>

namespace zeltools
{

namespace
{

const QLatin1String s_mask("***");

bool isSecret(const QString& key)
{
    // The short words only count as a whole, or at the end of a word: "PIN_CODE" and "WIFIKEY", but
    // not "SPINNER", "KEYBOARD" or "BYPASS_VALVE".
    static const QRegularExpression pattern(
        QStringLiteral("passw|passphrase|passcode|secret|token|credential|private|cookie|bearer|"
                       "(key|keys|pwd|psk)(?![a-z])|"
                       "(?<![a-z])(auth|pass|pin|puk|pw|salt)(?![a-z])"),
        QRegularExpression::CaseInsensitiveOption);
    return pattern.match(key).hasMatch();
}

QString maskLine(QString line)
{
    static const QRegularExpression userInformation(
        QStringLiteral("(?<=://)[^/@\\s]*:[^/\\s]*(?=@)"));
    const auto equals = line.indexOf(QLatin1Char('='));
    if (equals < 0)
        return line;
    const bool hasReturn = line.endsWith(QLatin1Char('\r'));
    // Keys inside the value end with "=" or ":".
    const auto last = line.lastIndexOf(QRegularExpression(QStringLiteral("[=:]")));
    if (isSecret(line.left(last)))
        return line.left(equals + 1) + s_mask + (hasReturn ? QStringLiteral("\r") : QString());
    return line.replace(userInformation, s_mask);
}

} // namespace

QByteArray withoutSecrets(const QByteArray& environment)
{
    // Latin-1 keeps every byte, whatever the encoding of the file is.
    QStringList lines = QString::fromLatin1(environment).split(QLatin1Char('\n'));
    for (QString& line : lines)
        line = maskLine(line);
    return lines.join(QLatin1Char('\n')).toLatin1();
}

} // namespace zeltools
