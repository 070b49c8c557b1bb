// Compares versions with a plain implementation of their rules on two lists of numbers.

#include "fuzz.h"
#include <zeltools/versionapp.h>

#include <QStringList>

#include <algorithm>

namespace
{

int warnings = 0;

using Numbers = std::vector<int>;

bool isBlank(QChar character)
{
    return character.isSpace();
}

// The number of a part that is a sign and digits with white space around them; 0 for any other part
// and for a number beyond the range of an int.
int numberOf(QString part)
{
    while (!part.isEmpty() && isBlank(part[0]))
        part.remove(0, 1);
    while (!part.isEmpty() && isBlank(part[part.size() - 1]))
        part.chop(1);
    const bool isNegative = part.startsWith('-');
    if (isNegative || part.startsWith('+'))
        part.remove(0, 1);
    qint64 number = 0;
    for (const QChar digit : part) {
        if (digit < '0' || digit > '9')
            return 0;
        number = std::min(number * 10 + digit.unicode() - '0', qint64(1) << 40);
    }
    number = isNegative ? -number : number;
    return number == static_cast<int>(number) ? static_cast<int>(number) : 0;
}

Numbers numbersOf(const QString& text)
{
    Numbers numbers;
    QString part;
    for (const QChar character : text + '.') {
        if (character == '.')
            numbers.push_back(numberOf(part));
        part = character == '.' ? QString() : part + character;
    }
    return numbers;
}

bool isBelow(const Numbers& a, const Numbers& b)
{
    for (size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
        if (a[i] != b[i])
            return a[i] < b[i];
    }
    return false;
}

void check(const VersionNumber& version, const Numbers& expected)
{
    require(version.size() == expected.size());
    for (unsigned i = 0; i < version.size(); ++i)
        require(version.at(i) == expected[i]);
    // The text of a version is read as the same version.
    require(VersionNumber::toListId(version.toString()) == expected);
}

void checkComparisons(const VersionNumber& a, const VersionNumber& b, const Numbers& listA,
                      const Numbers& listB)
{
    warnings = 0;
    require((a < b) == isBelow(listA, listB));
    require((a > b) == isBelow(listB, listA));
    require((a <= b) == !isBelow(listB, listA));
    require((a >= b) == !isBelow(listA, listB));
    require((a == b) == (listA == listB));
    require((a != b) == (listA != listB));
    require(warnings == (listA.size() == listB.size() ? 0 : 6));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString&) { ++warnings; });

    const QString input = QString::fromUtf8(toBytes(data, size));
    const QString textA = input.section('/', 0, 0), textB = input.section('/', 1);
    const VersionNumber a(textA), b(textB);
    const Numbers listA = numbersOf(textA), listB = numbersOf(textB);
    check(a, listA);
    check(b, listB);
    checkComparisons(a, b, listA, listB);
    checkComparisons(a, {}, listA, {});

    VersionApp app(1, 2, 3);
    app = textA;
    const bool isValid = listA.size() == 3;
    require(app.isValidVersionApp() == isValid);
    require(app.majorVersionApp() == (isValid ? listA[0] : 0));
    require(app.fixVersionApp() == (isValid ? listA[2] : 0));
    return 0;
}
