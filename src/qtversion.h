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

/// What the two versions of Qt name differently. Code that needs it takes it from here and asks for
/// no version itself.
namespace zeltools
{

#if QT_VERSION_MAJOR == 5

/// A QMutex with Qt 5 and a QRecursiveMutex, which is no QMutex, with Qt 6.
class RecursiveMutex : public QMutex
{
public:
    RecursiveMutex()
        : QMutex(Recursive)
    {
    }
};

/// The locker of a QMutex.
using MutexLocker = QMutexLocker;

/// Calls a function in the child between fork() and exec(). The function must be safe there, as
/// that of a signal handler.
class ChildProcess : public QProcess
{
public:
    explicit ChildProcess(void (*prepare)(), QObject* parent = nullptr)
        : QProcess(parent)
        , m_prepare(prepare)
    {
    }

protected:
    void setupChildProcess() override { m_prepare(); }

private:
    void (*m_prepare)();
};

/// Decodes UTF-8 that comes in pieces, and puts a character together again that two pieces share.
class Utf8Decoder
{
public:
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
