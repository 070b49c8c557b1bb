#pragma once

#include <QByteArray>
#include <QMetaType>
#include <QMutex>
#include <QProcess>
#include <QString>

#if QT_VERSION_MAJOR == 5
#include <QTextCodec>
#include <QTextDecoder>
#else
#include <QStringDecoder>
#endif

/// One name for each thing that the two versions of Qt name differently, so that no other file
/// checks the version.
namespace zeltools
{

#if QT_VERSION_MAJOR == 5

/// A recursive mutex: a QMutex with Qt 5, and with Qt 6 a QRecursiveMutex, which is not a QMutex.
class RecursiveMutex : public QMutex
{
public:
    /// An unlocked mutex.
    RecursiveMutex()
        : QMutex(Recursive)
    {
    }
};

/// The QMutexLocker for a QMutex.
using MutexLocker = QMutexLocker;

/// A process that calls a function in the child between fork() and exec(). Like a signal handler,
/// the function may only make async-signal-safe calls.
class ChildProcess : public QProcess
{
public:
    /// The function runs in the child just before the program.
    explicit ChildProcess(void (*prepare)(), QObject* parent = nullptr)
        : QProcess(parent)
        , m_prepare(prepare)
    {
    }

protected:
    /// Calls the function of the constructor.
    void setupChildProcess() override { m_prepare(); }

private:
    void (*m_prepare)();
};

/// Decodes UTF-8 that arrives in pieces, including characters that are split between two pieces.
class Utf8Decoder
{
public:
    /// The characters that are complete with these bytes.
    QString decode(const char* bytes, int size_B) { return m_decoder.toUnicode(bytes, size_B); }

private:
    QTextDecoder m_decoder{QTextCodec::codecForName("UTF-8")};
};

/// The CRC-16 of ISO 3309.
inline quint16 checksum(const char* bytes, qint64 size_B)
{
    return qChecksum(bytes, static_cast<uint>(size_B));
}

/// Whether a type is registered under this name.
inline bool isMetaType(const char* name)
{
    return QMetaType::type(name) != QMetaType::UnknownType;
}

#else

using RecursiveMutex = QRecursiveMutex;

using MutexLocker = QMutexLocker<QMutex>;

class ChildProcess : public QProcess
{
public:
    explicit ChildProcess(void (*prepare)(), QObject* parent = nullptr)
        : QProcess(parent)
    {
        setChildProcessModifier(prepare);
    }
};

class Utf8Decoder
{
public:
    QString decode(const char* bytes, int size_B)
    {
        return m_decoder.decode(QByteArrayView(bytes, size_B));
    }

private:
    QStringDecoder m_decoder{QStringDecoder::Utf8};
};

inline quint16 checksum(const char* bytes, qint64 size_B)
{
    return qChecksum(QByteArrayView(bytes, size_B));
}

inline bool isMetaType(const char* name)
{
    return QMetaType::fromName(name).isValid();
}

#endif

} // namespace zeltools
