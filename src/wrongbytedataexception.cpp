#include "wrongbytedataexception.h"

namespace
{

std::string textOf(const QString& details)
{
    QString text = QStringLiteral("WrongByteDataException");
    if (!details.isEmpty())
        text += QStringLiteral(" details: \"%1\"").arg(details);
    return text.toLocal8Bit().toStdString();
}

} // namespace

WrongByteDataException::WrongByteDataException(const QString& details)
    : std::invalid_argument(textOf(details))
{
}
