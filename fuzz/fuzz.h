#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <cstdint>
#include <cstdlib>

/// What libFuzzer takes for a finding.
inline void require(bool condition)
{
    if (!condition)
        abort();
}

/// Ten million warnings would be all that a run does.
inline void silenceWarnings()
{
    static const QtMessageHandler before =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    Q_UNUSED(before)
}

inline QByteArray toBytes(const uint8_t* data, size_t size)
{
    return QByteArray(reinterpret_cast<const char*>(data), static_cast<int>(size));
}
