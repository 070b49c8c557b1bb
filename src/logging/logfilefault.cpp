#include "logging/logfilefault_p.h"

#include "logging/primarywriter_p.h"
#include "logging/rotatinglogfile.h"

LogFileFault LogFileFault::of(const RotatingLogFile& file, const PrimaryWriter& writer, bool isKept)
{
    if (!file.file.isOpen())
        return {FirstOpening, 0};
    if (const int error = writer.error(PrimaryWriter::Opening))
        return {Opening, error};
    if (const int error = writer.error(PrimaryWriter::Writing))
        return {Writing, error};
    if (const int error = writer.error(PrimaryWriter::Rotating))
        return {Rotating, error};
    return {isKept ? None : Configuration, 0};
}

QString LogFileFault::reason(const RotatingLogFile& file) const
{
    switch (step) {
    case None:
        break;
    case FirstOpening:
        return QLatin1String("Opening failed: ") + file.file.errorString();
    case Opening:
        return QLatin1String("Opening failed: ") + qt_error_string(error);
    case Writing:
        return QLatin1String("Writing failed: ") + qt_error_string(error);
    case Rotating:
        return QLatin1String("Rotation failed: ") + qt_error_string(error);
    case Configuration:
        return QStringLiteral("Writing failed: The file has no size limit");
    }
    return QString();
}
