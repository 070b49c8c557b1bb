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

    /// The text of the file, decoded with the locale's codec. If the file cannot be opened or read
    /// to its end, the result is null, without a log line.
    Q_INVOKABLE QString fileContent(const QString& path);
};

} // namespace zeltools
