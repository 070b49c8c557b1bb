#include "crypt/cryptfiles_p.h"

#include "crypt/cryptexception_p.h"
#include "samefile.h"
#include "system.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>

namespace
{

SimpleCrypt::Failure failureOf(const QFile& file)
{
    return {SimpleCrypt::CryptFileAccess, file.fileName(), file.errorString()};
}

bool isRegular(const QFile& open, struct stat& status)
{
    return fstat(open.handle(), &status) == 0 && S_ISREG(status.st_mode);
}

bool isSameFile(const QFile& open, const QString& path)
{
    struct stat one = {};
    struct stat other = {};
    return isRegular(open, one) && stat(QFile::encodeName(path).constData(), &other) == 0 &&
           zeltools::isSameFile(one, other);
}

} // namespace

CryptFiles::CryptFiles(const QString& inputPath, const QString& outputPath)
    : m_input(inputPath)
    , m_outputPath(outputPath)
{
}

// The files are unbuffered, because the chunks are larger than any buffer.
SimpleCrypt::Failure CryptFiles::open()
{
    if (!m_input.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return failureOf(m_input);
    if (isSameFile(m_input, m_outputPath))
        return {SimpleCrypt::CryptFileAccess, m_outputPath, {}};
    // QFile would empty the file, because it is opened for writing only.
    const int output =
        ::open(QFile::encodeName(m_outputPath).constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
    if (output < 0)
        return {SimpleCrypt::CryptFileAccess, m_outputPath, qt_error_string(errno)};
    m_output.open(output, QIODevice::WriteOnly | QIODevice::Unbuffered, QFile::AutoCloseHandle);
    return {};
}

void CryptFiles::seekInput(qint64 position)
{
    if (!m_input.seek(position))
        throw CryptException(inputFailure());
}

void CryptFiles::readChunk(QByteArray& chunk)
{
    const int start = chunk.size();
    chunk.resize(start + chunkSize_B);
    const qint64 count = m_input.read(chunk.data() + start, chunkSize_B);
    if (count < 0)
        throw CryptException(inputFailure());
    chunk.resize(start + static_cast<int>(count));
}

QByteArray CryptFiles::readWhole()
{
    QByteArray bytes;
    bytes.reserve(static_cast<int>(qMin(m_input.size(), SimpleCrypt::largestInMemory_B)) +
                  chunkSize_B);
    int before = -1;
    while (bytes.size() > before && bytes.size() <= SimpleCrypt::largestInMemory_B) {
        before = bytes.size();
        readChunk(bytes);
    }
    if (bytes.size() > SimpleCrypt::largestInMemory_B)
        throw CryptException::tooLarge(m_input.fileName());
    return bytes;
}

SimpleCrypt::Failure CryptFiles::inputFailure() const
{
    if (m_input.error() != QFileDevice::NoError)
        return failureOf(m_input);
    return {SimpleCrypt::CryptFileAccess, m_input.fileName(), {}};
}

void CryptFiles::throwOutputFailure() const
{
    throw CryptException({SimpleCrypt::CryptFileAccess, m_outputPath, m_output.errorString()});
}

void CryptFiles::emptyOutput()
{
    struct stat status = {};
    if (!m_isEmptied && isRegular(m_output, status) && !m_output.resize(0))
        throwOutputFailure();
    m_isEmptied = true;
}

// After a partial write, the next one fails with the reason.
void CryptFiles::write(const QByteArray& bytes)
{
    emptyOutput();
    for (qint64 done = 0; done < bytes.size();) {
        const qint64 count = m_output.write(bytes.constData() + done, bytes.size() - done);
        if (count <= 0)
            throwOutputFailure();
        done += count;
    }
}

void CryptFiles::syncOutput()
{
    System::syncFile(m_output);
}

QByteArray CryptFiles::chunkBuffer()
{
    QByteArray chunk;
    chunk.reserve(chunkSize_B + 1 + SHA1_SIZE);
    return chunk;
}
