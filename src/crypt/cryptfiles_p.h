#pragma once

#include "simplecrypt.h"

#include <QByteArray>
#include <QFile>
#include <QString>

/// The input and the output of an operation of SimpleCrypt, read and written in chunks. After
/// open(), every failure of the system is a CryptException that names the file and the error.
class CryptFiles
{
public:
    CryptFiles(const QString& inputPath, const QString& outputPath);

    /// Opens both; the code is CryptNoError when that worked. The output keeps what it holds until
    /// emptyOutput() or the first write(), so that an input that cannot be read costs nothing.
    SimpleCrypt::Failure open();
    void close();

    qint64 inputSize() const { return m_input.size(); }
    qint64 inputPosition() const { return m_input.pos(); }
    void seekInput(qint64 position);
    /// Up to that many bytes; fewer at the end of the file, and where reading fails.
    QByteArray read(int size) { return m_input.read(size); }
    /// Appends up to a chunk; nothing at the end of the file.
    void readChunk(QByteArray& chunk);
    /// All that is left, of which the size of the file is only a hint: a file of /proc has none.
    QByteArray readWhole();
    /// Why less could be read than was asked for, without a system error where the file ended.
    SimpleCrypt::Failure inputFailure() const;

    void emptyOutput();
    void write(const QByteArray& bytes);
    void syncOutput();

    /// An empty chunk with room for the bytes in front of the payload.
    static QByteArray chunkBuffer();

private:
    [[noreturn]] void throwOutputFailure() const;

    QFile m_input;
    QString m_outputPath; // QFile forgets it when it is given a descriptor
    QFile m_output;
    bool m_isEmptied = false;
};
