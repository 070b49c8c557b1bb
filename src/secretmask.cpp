#include "secretmask.h"

#include <QRegularExpression>

namespace zeltools
{

namespace
{

const QLatin1String s_mask("***");

bool isSecret(const QString& key)
{
    // The short words count at the end of a word: "PIN_CODE", "WIFIKEY" and "DBPASS", but not
    // "SPINNER" or "KEYBOARD". Masking too much does less harm than showing a secret.
    static const QRegularExpression pattern(
        QStringLiteral("passw|passphrase|passcode|pincode|secret|token|cred(s|ential)|private|"
                       "cookie|bearer|authori[sz]ation|login|session|"
                       "(auth|key|otp|pass|pin|psk|puk|pw|pwd|salt|wpa)s?(?![a-z])"),
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression humps(QStringLiteral("(?<=[a-z])(?=[A-Z])"));
    return pattern.match(QString(key).replace(humps, QStringLiteral("_"))).hasMatch();
}

QString maskLine(QString line)
{
    static const QRegularExpression userInformation(QStringLiteral("(?<=://)\\S+(?=@)"));
    static const QRegularExpression bearer(QStringLiteral("\\bbearer\\s"),
                                           QRegularExpression::CaseInsensitiveOption);
    const auto equals = line.indexOf(QLatin1Char('='));
    if (equals < 0)
        return line.replace(userInformation, s_mask);
    const bool hasReturn = line.endsWith(QLatin1Char('\r'));
    // Keys inside the value end with "=" or ":".
    const auto last = line.lastIndexOf(QRegularExpression(QStringLiteral("[=:]")));
    if (isSecret(line.left(last)) || line.indexOf(bearer, equals) >= 0)
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

QString withoutSecret(const QString& name, const QString& value)
{
    return maskLine(name + QLatin1Char('=') + value).mid(name.size() + 1);
}

} // namespace zeltools
