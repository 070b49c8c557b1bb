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
    const QString text = QTextStream(&file).readAll();
    return file.error() == QFileDevice::NoError ? text : QString();
}

} // namespace zeltools
