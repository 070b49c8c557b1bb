#pragma once

#include <QString>
#include <QtGlobal>

/// Catches Qt warnings while it lives; the first one says more than an error code of the library.
class LibraryWarning
{
public:
    LibraryWarning() { qInstallMessageHandler(keep); }
    ~LibraryWarning() { qInstallMessageHandler(nullptr); }
    Q_DISABLE_COPY(LibraryWarning)

    /// Without the signature in front of it.
    static QString text()
    {
        return s_text.mid(s_text.indexOf(") ") < 0 ? 0 : s_text.indexOf(") ") + 2);
    }

private:
    static void keep(QtMsgType, const QMessageLogContext&, const QString& text)
    {
        if (s_text.isEmpty())
            s_text = text;
    }
    static inline QString s_text;
};
