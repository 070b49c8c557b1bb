// The code of docs/values.md: compares two versions and reads bytes from hexadecimal text.

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
}
