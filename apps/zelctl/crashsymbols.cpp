#include "crashsymbols.h"

#include "addressnames.h"

#include <set>

using zeltools::CrashReport;

namespace
{

/// The first address of a stack is that of the instruction that was running, the others are return
/// addresses: after a call that never returns, another function may begin there.
quint64 callAddress(const CrashReport::Stack& stack, int index)
{
    const quint64 address = stack.calls.at(index);
    return index == 0 || address == 0 ? address : address - 1;
}

} // namespace

CrashSymbols::CrashSymbols(const CrashReport& report, const QString& folder)
    : m_report(report)
{
    std::map<const CrashReport::Module*, std::set<quint64>> addresses;
    for (const CrashReport::Stack& stack : report.stacks) {
        for (int i = 0; i < stack.calls.size(); ++i) {
            const quint64 address = callAddress(stack, i);
            if (const CrashReport::Module* const module = report.moduleAt(address))
                addresses[module].insert(address);
        }
    }
    const SymbolFiles files(folder, report.modules);
    for (const auto& [module, itsAddresses] : addresses) {
        const SymbolFiles::Answer symbols = files.find(*module);
        m_symbols[module] = symbols;
        if (symbols.path.isEmpty())
            continue;
        QVector<quint64> sorted;
        for (const quint64 address : itsAddresses)
            sorted.append(address);
        addNames(*module, symbols.path, sorted);
    }
}

void CrashSymbols::addNames(const CrashReport::Module& module, const QString& file,
                            const QVector<quint64>& addresses)
{
    QVector<quint64> inFile;
    for (const quint64 address : addresses)
        inFile.append(address - module.base);
    QString error;
    const QVector<QStringList> names = addressNames(file, inFile, error);
    if (m_error.isEmpty())
        m_error = error;
    for (int i = 0; i < names.size(); ++i)
        m_functions.insert(addresses[i], names[i]);
}

QVector<CrashSymbols::Call> CrashSymbols::calls(const CrashReport::Stack& stack) const
{
    QVector<Call> calls;
    for (int i = 0; i < stack.calls.size(); ++i) {
        const quint64 address = callAddress(stack, i);
        calls.append({address, m_report.moduleAt(address), m_functions.value(address)});
    }
    return calls;
}

QString CrashSymbols::source(const CrashReport::Module& module) const
{
    const auto found = m_symbols.find(&module);
    if (found == m_symbols.end())
        return QString();
    return found->second.path.isEmpty() ? found->second.obstacle : found->second.path;
}
