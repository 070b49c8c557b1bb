#include "declarativestatemachine/recordedargument_p.h"

#include "quotedwords.h"

#include <QLocale>

namespace zeltools::declarativestatemachine
{

namespace
{

constexpr int maximumTextSize = 256;

// The value as one of the types that are kept; an invalid one if there is none for it.
QVariant keptValue(const QVariant& value)
{
    const int type = value.userType();
    switch (type) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
        return value;
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
        return value.toInt();
    case QMetaType::Long:
        return value.toLongLong();
    case QMetaType::ULong:
        return value.toULongLong();
    case QMetaType::Float:
        return value.toDouble();
    case QMetaType::QString:
        return value.toString().size() <= maximumTextSize ? value : QVariant();
    case QMetaType::QByteArray:
        return value.toByteArray().size() <= maximumTextSize ? value : QVariant();
    default:
        const bool isEnumerator = QMetaType(type).flags().testFlag(QMetaType::IsEnumeration);
        return isEnumerator ? QVariant(value.toInt()) : QVariant();
    }
}

template <typename Number>
QVariant ifRead(Number number, bool isRead)
{
    return isRead ? QVariant(number) : QVariant();
}

QVariant numberValue(const QByteArray& type, const QByteArray& word)
{
    bool isRead = false;
    if (type == "int") {
        const int number = word.toInt(&isRead);
        return ifRead(number, isRead);
    }
    if (type == "uint") {
        const uint number = word.toUInt(&isRead);
        return ifRead(number, isRead);
    }
    if (type == "qlonglong") {
        const qlonglong number = word.toLongLong(&isRead);
        return ifRead(number, isRead);
    }
    if (type == "qulonglong") {
        const qulonglong number = word.toULongLong(&isRead);
        return ifRead(number, isRead);
    }
    if (type == "double") {
        const double number = word.toDouble(&isRead);
        return ifRead(number, isRead);
    }
    return {};
}

} // namespace

MachineRecording::Argument recordedArgument(const QVariant& value)
{
    const QVariant kept = keptValue(value);
    return {kept.isValid() ? kept.typeName() : value.typeName(), kept};
}

bool isKeptAsItIs(const QVariant& value)
{
    return value.isValid() && keptValue(value).userType() == value.userType();
}

QByteArray argumentText(const MachineRecording::Argument& argument)
{
    const QVariant& value = argument.value;
    QByteArray word;
    switch (value.userType()) {
    case QMetaType::QString:
        word = quotedWord(value.toString().toUtf8());
        break;
    case QMetaType::QByteArray:
        word = quotedWord(value.toByteArray());
        break;
    case QMetaType::Double:
        word = QByteArray::number(value.toDouble(), 'g', QLocale::FloatingPointShortest);
        break;
    default:
        word = value.toString().toLatin1();
    }
    return value.isValid() ? value.typeName() + (' ' + word) : "other " + quotedWord(argument.type);
}

QVariant argumentValue(const QByteArray& type, const QByteArray& word, bool isQuoted)
{
    if (isQuoted && type == "QString")
        return fromUtf8(word);
    if (isQuoted && type == "QByteArray")
        return word;
    if (type == "bool" && (word == "true" || word == "false"))
        return word == "true";
    return isQuoted ? QVariant() : numberValue(type, word);
}

QString fromUtf8(const QByteArray& bytes)
{
    return QString::fromUtf8('x' + bytes).mid(1);
}

} // namespace zeltools::declarativestatemachine
