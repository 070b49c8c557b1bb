#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <cstdint>
#include <cstdlib>

/// Ends the process if the condition is false, which libFuzzer reports as a finding.
inline void require(bool condition)
{
    if (!condition)
        abort();
}

/// Discards the messages of Qt. A run would spend its time on ten million warnings.
inline void silenceWarnings()
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
}

inline QByteArray toBytes(const uint8_t* data, size_t size)
{
    return QByteArray(reinterpret_cast<const char*>(data), static_cast<int>(size));
}
