#pragma once

#include "symbolfiles.h"

#include <map>

/// Names the functions in the stacks of a crash report. The report must live as long as the object.
class CrashSymbols
{
public:
    struct Call
    {
        /// That of the instruction that was running, or an address in the call that was running.
        quint64 address = 0;
        const zeltools::CrashReport::Module* module = nullptr;
        QStringList functions; ///< as addressNames() gives them
    };

    /// Looks for symbols in the folder as SymbolFiles does, and asks for all names at once.
    CrashSymbols(const zeltools::CrashReport& report, const QString& folder);

    QVector<Call> calls(const zeltools::CrashReport::Stack& stack) const;
    /// The file with the symbols of the module, or why there is none. Empty for a module that no
    /// stack leads through.
    QString source(const zeltools::CrashReport::Module& module) const;
    /// The first reason why names are missing though there are symbols, or an empty text.
    QString error() const { return m_error; }

private:
    void addNames(const zeltools::CrashReport::Module& module, const QString& file,
                  const QVector<quint64>& addresses);

    const zeltools::CrashReport& m_report;
    std::map<const zeltools::CrashReport::Module*, SymbolFiles::Answer> m_symbols;
    QHash<quint64, QStringList> m_functions; ///< by address
    QString m_error;
};
