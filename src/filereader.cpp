#include "filereader.h"

#include <QFile>
#include <QTextStream>

namespace zeltools
{

FileReader::FileReader(QObject* parent)
    : QObject(parent)
{
}

FileReader::~FileReader() = default;

QString FileReader::fileContent(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QTextStream(&file).readAll();
}

} // namespace zeltools
