#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QString>

namespace zeltools
{

/// Reads whole text files for the user interface.
class ZELTOOLS_EXPORT FileReader : public QObject
{
    Q_OBJECT

public:
    explicit FileReader(QObject* parent = nullptr);
    ~FileReader() override;

    /// The text of the file, decoded with the locale's codec. Null, without a log line, when the
    /// file cannot be opened or not be read to its end.
    Q_INVOKABLE QString fileContent(const QString& path);
};

} // namespace zeltools
