#include "imagevalidator.h"

#include <QFile>

ImageValidator::ImageValidator(QObject* parent)
    : QObject(parent)
{
}

ImageValidator::~ImageValidator() = default;

QUrl ImageValidator::validatedUrl(const QString& path)
{
    const bool isResource = path.startsWith(QLatin1String("qrc:")) &&
                            path.indexOf(QLatin1Char('.')) > 0 &&
                            QFile::exists(QString(path).remove(QLatin1String("qrc")));
    return isResource ? QUrl(path) : QUrl();
}
