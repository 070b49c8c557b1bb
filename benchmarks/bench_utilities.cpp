// The cost of converting bytes to hexadecimal text and back, 1 MiB each way, and of comparing
// versions.

#include "ratiotable.h"
#include <zeltools/binarydataformatter.h>
#include <zeltools/versionnumber.h>

#include <QVersionNumber>

#include <cstring>
#include <random>
#include <vector>

namespace
{

constexpr int s_size = 1 << 20;

const QByteArray& bytes()
{
    static const QByteArray all = [] {
        std::mt19937 random(1);
        QByteArray made(s_size, Qt::Uninitialized);
        for (char& byte : made)
            byte = static_cast<char>(random());
        return made;
    }();
    return all;
}

void format(benchmark::State& state, const QString& separator)
{
    const BinaryDataFormatter formatter(bytes());
    repeat(state, [&] { benchmark::DoNotOptimize(formatter.format(QString(), separator)); });
}

void parse(benchmark::State& state, QString text)
{
    repeat(state, [&] { benchmark::DoNotOptimize(BinaryDataFormatter(text)); });
    if (BinaryDataFormatter(text).data() != bytes())
        state.SkipWithError("the text is read as something else");
}

QString text(const char* separator)
{
    return BinaryDataFormatter(bytes()).format(QString(), separator);
}

// As many bytes as the text has in memory, to a place of their own.
void copyText(benchmark::State& state)
{
    const std::vector<char> source(s_size * 4, 'x');
    repeat(state, [&] {
        QByteArray copy(s_size * 4, Qt::Uninitialized);
        std::memcpy(copy.data(), source.data(), source.size());
        benchmark::DoNotOptimize(copy);
    });
}

void addHexadecimal()
{
    add("1 MiB to text/ZelTools", [](auto& s) { format(s, {}); });
    add("1 MiB to text/ZelTools, \"-\" between the bytes", [](auto& s) { format(s, "-"); });
    add("1 MiB to text/ZelTools, \" : \" between the bytes", [](auto& s) { format(s, " : "); });
    add("1 MiB to text/QByteArray::toHex",
        [](auto& s) { repeat(s, [] { benchmark::DoNotOptimize(bytes().toHex()); }); });
    add("1 MiB to text/QByteArray::toHex to a QString", [](auto& s) {
        repeat(s, [] { benchmark::DoNotOptimize(QString::fromLatin1(bytes().toHex())); });
    });
    add("1 MiB to text/memcpy of the text", copyText);

    add("1 MiB from text/ZelTools", [](auto& s) { parse(s, text("")); });
    add("1 MiB from text/ZelTools, lower case", [](auto& s) { parse(s, text("").toLower()); });
    add("1 MiB from text/ZelTools, \"-\" between the bytes", [](auto& s) { parse(s, text("-")); });
    add("1 MiB from text/ZelTools, 0x before each",
        [](auto& s) { parse(s, "0x" + text("-0x").toLower()); });
    add("1 MiB from text/ZelTools, \"-\" after each digit", [](auto& s) {
        QString parted;
        for (const QChar digit : text(""))
            (parted += digit) += '-';
        parse(s, parted);
    });
    add("1 MiB from text/QByteArray::fromHex", [](auto& s) {
        const QByteArray hex = bytes().toHex();
        repeat(s, [&] { benchmark::DoNotOptimize(QByteArray::fromHex(hex)); });
    });
    add("1 MiB from text/QByteArray::fromHex of a QString", [](auto& s) {
        const QString hex = text("");
        repeat(s, [&] { benchmark::DoNotOptimize(QByteArray::fromHex(hex.toLatin1())); });
    });
    add("1 MiB from text/memcpy of the text", copyText);
}

} // namespace

int main(int argc, char** argv)
{
    addHexadecimal();
    add("Comparing 1.12.3 and 1.12.4/ZelTools", [](auto& s) {
        const VersionNumber a{1, 12, 3}, b{1, 12, 4};
        repeat(s, [&] { benchmark::DoNotOptimize(a < b); });
    });
    add("Comparing 1.12.3 and 1.12.4/QVersionNumber", [](auto& s) {
        const QVersionNumber a(1, 12, 3), b(1, 12, 4);
        repeat(s, [&] { benchmark::DoNotOptimize(a < b); });
    });
    return RatioTable::run(argc, argv);
}
