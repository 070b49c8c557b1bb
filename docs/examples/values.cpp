// The code of docs/values.md: replaces a file, encrypts a text, compares two versions and reads
// bytes from hexadecimal text.

//! [files]
#include <zeltools/filereplacement.h>
#include <zeltools/windowstools.h>

#include <QTextStream>

bool saveSettings(const QByteArray& settings)
{
    zeltools::FileReplacement file(QStringLiteral("settings.ini"));
    if (!file.replace(settings)) {
        QTextStream(stdout) << file.errorString() << Qt::endl;
        return false;
    }
    return WindowsTools::runCommand(QStringLiteral("cp settings.ini settings.backup"));
}
//! [files]
//! [crypt]
#include <zeltools/simplecrypt.h>

#include <QTextStream>

void exchangeToken(quint64 key)
{
    SimpleCrypt crypt(key);
    crypt.setMetadata(QStringLiteral("machine 4711")); // readable without the key
    const QString cyphertext = crypt.encryptToString(QStringLiteral("token 0815"));

    const QString token = crypt.decryptToString(cyphertext);
    if (crypt.checkedProtection() == SimpleCrypt::ProtectionSha1)
        QTextStream(stdout) << "Decrypted: " << token << Qt::endl;
    else
        QTextStream(stdout) << "The text is damaged, or the key is another one" << Qt::endl;
}
//! [crypt]
//! [versions]
#include <zeltools/versionapp.h>
//! [versions]
//! [bytes]
#include <zeltools/binarydataformatter.h>
#include <zeltools/wrongbytedataexception.h>

#include <QTextStream>

void show(const QString& text)
{
    try {
        const BinaryDataFormatter frame(text);
        QTextStream(stdout) << frame.format(QStringLiteral("0x"), QStringLiteral("-")) << Qt::endl;
    } catch (const WrongByteDataException& exception) {
        QTextStream(stdout) << exception.what() << Qt::endl;
    }
}
//! [bytes]

int main()
{
    exchangeToken(0x0123456789abcdef);
    //! [versions]
    const VersionApp installed(1, 4, 0);
    const VersionNumber offered(QStringLiteral("1.10.2"));
    if (installed < offered) // 4 is less than 10
        QTextStream(stdout) << "Version " << offered.toString() << " is newer" << Qt::endl;
    //! [versions]
    //! [calls]
    show(QStringLiteral("0xde:AD-beef")); // 0xDE-AD-BE-EF
    show(QStringLiteral("DE AD"));        // ... details: "Wrong format: "DE AD" -> "DE AD""
    //! [calls]
    return saveSettings("volume=3\n") ? 0 : 1;
}
