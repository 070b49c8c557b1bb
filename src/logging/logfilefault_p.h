#pragma once

#include <QString>

class PrimaryWriter;
class RotatingLogFile;

/// What is wrong with a log file now. Two faults with the same words compare equal, except that the
/// words of an opening are those of the last attempt.
struct LogFileFault
{
    enum Step { None, FirstOpening, Opening, Writing, Rotating, Configuration };

    /// The fault that the last call has left, whose line is lost unless `isKept`. Call it under the
    /// mutex of the file.
    static LogFileFault of(const RotatingLogFile& file, const PrimaryWriter& writer, bool isKept);

    /// The text of LogFileHealth::reason.
    QString reason(const RotatingLogFile& file) const;

    Step step = None;
    int error = 0; // as in errno

    bool operator!=(const LogFileFault& other) const
    {
        return step != other.step || error != other.error;
    }
};
