#pragma once

#include "symbolfiles.h"

#include <chrono>
#include <map>
#include <set>

/// Names the functions in the stacks of a crash report. The report must live as long as the object.
class CrashSymbols
{
public:
    struct Call
    {
        /// The address of the instruction that was running, or one in the call that was running.
        quint64 address = 0;
        const zeltools::CrashReport::Module* module = nullptr;
        QStringList functions; ///< as addressNames() gives them
    };

    /// Looks for symbols in the folder as SymbolFiles does, and asks each file once for
    /// all its names, for at most two minutes in total.
    CrashSymbols(const zeltools::CrashReport& report, const QString& folder);

    QVector<Call> calls(const zeltools::CrashReport::Stack& stack) const;
    /// The file with the symbols of the module, or why there is none. Empty for a module that no
    /// stack leads through.
    QString source(const zeltools::CrashReport::Module& module) const;
    /// The first reason why names are missing though there are symbols, or an empty text.
    QString error() const { return m_error; }

private:
    /// The addresses of calls, by the address in the file. A report may have loaded one file at
    /// several places.
    using Addresses = std::map<quint64, std::set<quint64>>;

    void addNames(const QString& file, const Addresses& addresses,
                  std::chrono::milliseconds patience);

    const zeltools::CrashReport& m_report;
    std::map<const zeltools::CrashReport::Module*, SymbolFiles::Answer> m_symbols;
    QHash<quint64, QStringList> m_functions; ///< by address
    QString m_error;
};
