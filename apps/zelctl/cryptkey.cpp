#include "cryptkey.h"

#include "readfile.h"
#include "words.h"
#include <zeltools/simplecrypt.h>

#include <QFile>
#include <QLoggingCategory>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdlib>
#include <cstring>

#include <string.h>
#include <sys/prctl.h>

namespace
{

/// Takes the key from a text and wipes the text. Returns false if the text is not a key.
bool takeKey(char* text, size_t size, SimpleCrypt& crypt)
{
    const auto isSpace = [](char c) { return std::isspace(static_cast<uchar>(c)) != 0; };
    const auto isDigit = [](char c) { return std::isxdigit(static_cast<uchar>(c)) != 0; };
    constexpr int digits = 16;
    char* begin = std::find_if_not(text, text + size, isSpace);
    char* end = text + size;
    while (end > begin && isSpace(end[-1]))
        --end;
    if (end - begin == digits + 2 && begin[0] == '0' && (begin[1] | 0x20) == 'x')
        begin += 2;
    const bool isKey = end - begin == digits && std::all_of(begin, end, isDigit);
    quint64 key = 0;
    if (isKey) {
        std::from_chars(begin, end, key, 16);
        crypt.setKey(key);
    }
    explicit_bzero(&key, sizeof key);
    explicit_bzero(text, size);
    return isKey;
}

QString readKeyFile(const QString& path, SimpleCrypt& crypt)
{
    QString obstacle = whyUnreadable(path);
    if (!obstacle.isEmpty())
        return obstacle;
    QFile file(path);
    char text[4096]; // read without a buffer that would keep the key
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return Zelctl::tr("cannot read %1: %2").arg(path, file.errorString());
    const qint64 size = file.read(text, sizeof text);
    if (size < 0)
        return Zelctl::tr("cannot read %1: %2").arg(path, file.errorString());
    const bool isWhole = size < qint64(sizeof text);
    return takeKey(text, static_cast<size_t>(size), crypt) && isWhole
               ? QString()
               : Zelctl::tr("%1 holds no key of 16 hexadecimal digits").arg(path);
}

QString readKeyVariable(SimpleCrypt& crypt)
{
    char* const text = std::getenv("ZEL_KEY");
    if (text == nullptr || *text == '\0')
        return Zelctl::tr("a key is missing: --key-file or the environment variable ZEL_KEY");
    return takeKey(text, std::strlen(text), crypt)
               ? QString()
               : Zelctl::tr(
                     "the environment variable ZEL_KEY holds no key of 16 hexadecimal digits");
}

} // namespace

void startSecretly()
{
    prctl(PR_SET_DUMPABLE, 0);
    QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false"));
}

QString readKey(const CommandParser& parser, SimpleCrypt& crypt)
{
    return parser.isSet("key-file") ? readKeyFile(parser.value("key-file"), crypt)
                                    : readKeyVariable(crypt);
}
