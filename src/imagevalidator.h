#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QString>
#include <QUrl>

/// Prevents broken images in the user interface.
class ZELTOOLS_EXPORT ImageValidator : public QObject
{
    Q_OBJECT

public:
    explicit ImageValidator(QObject* parent = nullptr);
    ~ImageValidator() override;

    /// The URL of an image in the resources ("qrc:/img/a.png"). The URL is empty, so that no image
    /// is shown, for a path without a ".", a path that does not begin with "qrc:", and a missing
    /// resource. A path with a second "qrc" is never found, since every "qrc" is removed to get the
    /// name of the resource.
    Q_INVOKABLE QUrl validatedUrl(const QString& path);
};
