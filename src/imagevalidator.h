#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QString>
#include <QUrl>

/// Keeps broken images out of the user interface.
class ZELTOOLS_EXPORT ImageValidator : public QObject
{
    Q_OBJECT

public:
    explicit ImageValidator(QObject* parent = nullptr);
    ~ImageValidator() override;

    /// The URL of an image among the resources ("qrc:/img/a.png"), or an empty one, which shows no
    /// image: for a path without a ".", for anything but "qrc:", and when there is no such
    /// resource. A path with another "qrc" in it is never found, since all of them are taken away
    /// to get the name of the resource.
    Q_INVOKABLE QUrl validatedUrl(const QString& path);
};
