#pragma once

#include "simplecrypt.h"

#include <QByteArray>
#include <QFile>
#include <QString>

/// The input and output files of an operation of SimpleCrypt, which are read and written in chunks.
/// After open(), every failure of the system is a CryptException with the file and the error.
class CryptFiles
{
public:
    /// The number of bytes that are read at a time.
    static constexpr int chunkSize_B = 0x100000;

    CryptFiles(const QString& inputPath, const QString& outputPath);

    /// Opens both files; the code is CryptNoError on success. The output keeps its content until
    /// emptyOutput() or the first write(), so that it survives an input that cannot be read.
    SimpleCrypt::Failure open();

    qint64 inputSize() const { return m_input.size(); }
    qint64 inputPosition() const { return m_input.pos(); }
    void seekInput(qint64 position);
    /// Returns at most `size` bytes, and fewer at the end of the file or if reading fails.
    QByteArray read(int size) { return m_input.read(size); }
    /// Appends at most a chunk, and nothing at the end of the file.
    void readChunk(QByteArray& chunk);
    /// Returns the rest of the input. The size of the file is only a hint: a file of /proc has
    /// none.
    QByteArray readWhole();
    /// The reason why less could be read than was asked for. At the end of the file, it has no
    /// system error.
    SimpleCrypt::Failure inputFailure() const;

    void emptyOutput();
    void write(const QByteArray& bytes);
    void syncOutput();
    /// Writes what an operation makes of the rest of the input, and syncs the output.
    template <typename Operation>
    void writeResult(const Operation& operation)
    {
        write(operation(readWhole()));
        syncOutput();
    }

    /// An empty array with room for a chunk and the bytes in front of the payload.
    static QByteArray chunkBuffer();

private:
    [[noreturn]] void throwOutputFailure() const;

    QFile m_input;
    QString m_outputPath; // m_output is opened with a descriptor and does not know it
    QFile m_output;
    bool m_isEmptied = false;
};
